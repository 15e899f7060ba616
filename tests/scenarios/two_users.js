// Two users on one order: who saves later is asked, what is written over is reversed as it is stored by then, and who changed it is told.
clock("2025-03-03 08:30:00");
const number = value("select top 1 採購明細資料.採購單號 from 採購明細資料 inner join 採購資料 on 採購資料.採購單號=採購明細資料.採購單號 " +
    "inner join 原料申購明細 on 原料申購明細.申購單號=採購明細資料.請購單號 and 原料申購明細.原料代號=採購明細資料.原料代號 " +
    "where 採購資料.類別='紙板' and 採購資料.審單='N' and 採購資料.廠商代號<>'' and 採購明細資料.序=1 order by 採購明細資料.採購單號 desc");
const line = () => one("select 請購單號,原料代號,數量,備註,已入庫數,未交數 from 採購明細資料 where 採購單號='" + number + "' and 序=1");
const need = () => Number(value("select 已采購數 from 原料申購明細 where 申購單號='" + line()["請購單號"] + "' and 原料代號='" + line()["原料代號"] + "'"));
const header = () => one("select 修改人,修改時間,工單單號 from 採購資料 where 採購單號='" + number + "'");
// A save meets what another has saved since.
const meets = (w, name, time, answer, what) =>
    shows(() => w.press("F8"), [Sure, ["question", "詢問", "此單開啟後已由" + name + "於" + time + "修改,確定以畫面資料覆蓋?", answer]], what);
const quantity = (w, n) => w.grid("fml明細").type(1, "大紙數", String(n));

const fresh = launch({ function: "紙板採購作業", user: "採購甲" });
shows(() => fresh.panel(8), [], "a new order has no history to show");

// Both have it open; the manager saves first.
const start = Number(line()["數量"]), bought = need();
const a = openOrder("採購甲", number), b = openOrder("主管甲", number);
clock("2025-03-03 08:31:00");
quantity(b, start + 7);
save(b);
equal([line()["數量"], need(), header()["修改人"]], [String(start + 7), bought + 7, "吳國棟"], "the first save counts on the requisition");

// The buyer's typing meets it.
quantity(a, start + 100);
a.grid("fml明細").type(1, "備註", "採購甲");
meets(a, "吳國棟", "2025-03-03 08:31:00", "no", "who comes later is asked");
equal([line()["數量"], need(), header()["修改人"]], [String(start + 7), bought + 7, "吳國棟"], "no writes nothing");
equal([cells(a.grid("fml明細"), 1, "大紙數", "備註"), a.modified], [[String(start + 100), "採購甲"], true], "and keeps the typing");
db.execute("update 採購明細資料 set 已入庫數='2' where 採購單號='" + number + "' and 序=1");
clock("2025-03-03 08:32:00");
meets(a, "吳國棟", "2025-03-03 08:31:00", "yes", "and asked again");
equal([line()["數量"], line()["備註"], need()], [String(start + 100), "採購甲", bought + 100], "yes writes over it and takes off what was stored");
equal([line()["已入庫數"], line()["未交數"], header()["修改人"], header()["修改時間"]], ["2", String(start + 98), "林佩珊", "2025-03-03 08:32:00"], "what the warehouse received stays received; under the later name");
// The panel that the status bar opens; whatever closes it, what is typed stays.
quantity(a, start + 50);
for (const close of [w => w.press("Esc"), w => w.grid("MSHFlexGrid1").doubleClick(2, "項目值"), w => w.grid("MSHFlexGrid1").rightClick(1, "項目")]) {
    onWindow("frm系統修改明細", w => {
        const g = w.grid("MSHFlexGrid1");
        equal([g.titles, column(g, "項目"), column(g, "項目值").slice(2)], [["項目", "項目值"], ["製單人", "製單時間", "修改人", "修改時間"], ["林佩珊", "2025-03-03 08:32:00"]],
            "who made and who changed it, as it is stored now");
        check(w.visibleTexts().includes("雙擊關閉窗口"), "and how to close it");
        close(w);
        check(!w.open && a.modified, "the panel is gone");
    });
    a.panel(8);
}
shows(() => a.press("F8"), [Sure], "the same screen goes on without a question");

// Now the first screen is the one that is behind; even within one second.
quantity(b, start);
meets(b, "林佩珊", "2025-03-03 08:32:00", "yes", "the other way round");
equal([line()["數量"], need()], [String(start), bought], "all is as it was");
a.set("txt工單單號", "同秒");
meets(a, "吳國棟", "2025-03-03 08:32:00", "yes", "two saves of one second are told apart by their person");

// A line that the other took away.
const other = openOrder("主管甲", number);
other.grid("fml明細").key(1, "代號", "Ctrl+Delete");
save(other);
const first = () => count("採購明細資料", "採購單號='" + number + "' and 序=1");
equal(first(), 0, "the other user took line 1 away");
meets(a, "吳國棟", "2025-03-03 08:32:00", "yes", "and a save meets that");
equal([first(), need()], [1, bought + 50], "the screen that still had it brings it back under its number, and counts it once");

// In a process of its own, on the same file.
const process = script => stage.run("liaowu-robot",
    ["--db", stage.defaultConnection(), stage.folder() + "/common/prelude.js", stage.folder() + "/second_process/" + script]);
a.set("txt工單單號", "共用");
save(a);
a.set("txt工單單號", "未存");
equal(process("change_order.js"), 0, "the second process does its part");
meets(a, "吳國棟", "2025-03-03 10:00:00", "no", "which is told here");
equal([line()["備註"], a.get("txt工單單號"), a.modified], ["另一程序", "未存", true], "no keeps both the stored and the typed");
meets(a, "吳國棟", "2025-03-03 10:00:00", "yes", "and told again");
equal([line()["備註"], header()["工單單號"]], ["採購甲", "未存"], "yes puts the typed in its place");
// A writer of another process waits, and gives up with a word.
let code = -1;
stage.beforeStatement("COMMIT", () => { code = process("meet_lock.js"); });
a.set("txt工單單號", "先存");
save(a);
equal([code, header()["工單單號"]], [0, "先存"], "a save in the midst of another waits, gives up and keeps its typing");

// Deleted meanwhile.
const c = openOrder("主管甲", number);
db.execute("update 採購明細資料 set 已入庫數='0' where 採購單號='" + number + "'");
remove(c);
a.set("txt工單單號", "太遲");
shows(() => a.press("F8"), [Sure, ["warning", "更新錯誤", "採購單 " + number + " 已由其他使用者刪除!"]], "a save of a deleted order says so");
equal([a.get("txt工單單號"), a.modified, first()], ["太遲", true, 0], "its typing stays, and no line comes back alone");
