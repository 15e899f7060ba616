// Two users on one order: who saves later is asked, and what is written over is reversed as it is stored by then.
clock("2025-03-03 08:30:00");
const number = db.query("select top 1 採購明細資料.採購單號 from 採購明細資料 inner join 採購資料 on 採購資料.採購單號=採購明細資料.採購單號 " +
    "inner join 原料申購明細 on 原料申購明細.申購單號=採購明細資料.請購單號 and 原料申購明細.原料代號=採購明細資料.原料代號 " +
    "where 採購資料.類別='紙板' and 採購資料.審單='N' and 採購資料.廠商代號<>'' and 採購明細資料.序=1 order by 採購明細資料.採購單號 desc")[0]["採購單號"];
const line = () => db.query("select 請購單號,原料代號,數量,備註,已入庫數,未交數 from 採購明細資料 where 採購單號='" + number + "' and 序=1")[0];
const need = () => Number(db.query("select 已采購數 from 原料申購明細 where 申購單號='" + line()["請購單號"] + "' and 原料代號='" + line()["原料代號"] + "'")[0]["已采購數"]);
const header = () => db.query("select 修改人,修改時間,工單單號 from 採購資料 where 採購單號='" + number + "'")[0];
const open = user => {
    const w = launch({ function: "紙板採購作業", user });
    w.set("txt速查單號", number);
    w.press("Enter");
    equal(w.get("txt採購單號"), number, user + " sees the order");
    return w;
};
const save = w => { onMessage("詢問", "確定更新此筆資料?", "yes"); w.press("F8"); };
const asked = (name, time, answer) => onMessage("詢問", "此單開啟後已由" + name + "於" + time + "修改,確定以畫面資料覆蓋?", answer);
const quantity = (w, n) => w.grid("fml明細").type(1, "大紙數", String(n));

// Both have it open; the manager saves first.
const start = Number(line()["數量"]), bought = need();
const a = open("採購甲"), b = open("主管甲");
clock("2025-03-03 08:31:00");
quantity(b, start + 7);
save(b);
equal([line()["數量"], need(), header()["修改人"]], [String(start + 7), bought + 7, "吳國棟"], "the first save counts on the requisition");

// The buyer's typing meets it.
quantity(a, start + 100);
a.grid("fml明細").type(1, "備註", "採購甲");
messages();
asked("吳國棟", "2025-03-03 08:31:00", "no");
save(a);
equal(messages().map(m => m.icon), ["question", "question"], "who comes later is asked");
equal([line()["數量"], need(), header()["修改人"]], [String(start + 7), bought + 7, "吳國棟"], "no writes nothing");
equal([a.grid("fml明細").cell(1, "大紙數"), a.grid("fml明細").cell(1, "備註"), a.modified], [String(start + 100), "採購甲", true], "and keeps the typing");
db.execute("update 採購明細資料 set 已入庫數='2' where 採購單號='" + number + "' and 序=1");
asked("吳國棟", "2025-03-03 08:31:00", "yes");
clock("2025-03-03 08:32:00");
save(a);
equal([line()["數量"], line()["備註"], need()], [String(start + 100), "採購甲", bought + 100], "yes writes over it and takes off what was stored");
equal([line()["已入庫數"], line()["未交數"]], ["2", String(start + 98)], "what the warehouse received stays received");
equal([header()["修改人"], header()["修改時間"]], ["林佩珊", "2025-03-03 08:32:00"], "under the later name");
quantity(a, start + 50);
save(a);
equal(need(), bought + 50, "the same screen goes on without a question");

// Now the first screen is the one that is behind; even within one second.
quantity(b, start);
asked("林佩珊", "2025-03-03 08:32:00", "no");
save(b);
asked("林佩珊", "2025-03-03 08:32:00", "yes");
save(b);
equal([line()["數量"], need()], [String(start), bought], "all is as it was");
a.set("txt工單單號", "同秒");
asked("吳國棟", "2025-03-03 08:32:00", "yes");
save(a);
equal(header()["工單單號"], "同秒", "two saves of one second are told apart by their person");

// A line that the other took away, and one that the other added.
const other = open("主管甲");
other.grid("fml明細").enter(1, "代號");
other.click("scmd刪除");
save(other);
const left = () => db.query("select 序 from 採購明細資料 where 採購單號='" + number + "' order by 序").map(r => r["序"]);
const remaining = left();
check(!remaining.includes(1), "the other user took line 1 away");
asked("吳國棟", "2025-03-03 08:32:00", "yes");
save(a);
check(left().includes(1), "the screen that still had it brings it back under its number");
equal(need(), bought + 50, "and counts it once");

// In a process of its own, on the same file.
a.set("txt工單單號", "共用");
save(a);
a.set("txt工單單號", "未存");
equal(stage.run("liaowu-robot", ["--db", stage.defaultConnection(), stage.folder() + "/second_process/change_order.js"]), 0,
    "the second process does its part");
asked("吳國棟", "2025-03-03 10:00:00", "no");
save(a);
equal([line()["備註"], a.get("txt工單單號"), a.modified], ["另一程序", "未存", true], "no keeps both the stored and the typed");
asked("吳國棟", "2025-03-03 10:00:00", "yes");
save(a);
equal([line()["備註"], header()["工單單號"]], ["採購甲", "未存"], "yes puts the typed in its place");
// A writer of another process waits, and gives up with a word.
let code = -1;
stage.beforeStatement("COMMIT", () => {
    code = stage.run("liaowu-robot", ["--db", stage.defaultConnection(), stage.folder() + "/second_process/meet_lock.js"]);
});
a.set("txt工單單號", "先存");
save(a);
equal([code, header()["工單單號"]], [0, "先存"], "a save in the midst of another waits, gives up and keeps its typing");

// Deleted meanwhile.
const c = open("主管甲");
db.execute("update 採購明細資料 set 已入庫數='0' where 採購單號='" + number + "'");
onMessage("刪除詢問", "確定要刪除此筆資料?", "yes");
onMessage("資料刪除", "資料刪除完畢!");
c.press("F3");
a.set("txt工單單號", "太遲");
messages();
onMessage("更新錯誤", "採購單 " + number + " 已由其他使用者刪除!");
save(a);
equal(messages().slice(-1).map(m => [m.icon, m.title]), [["warning", "更新錯誤"]], "a save of a deleted order says so");
equal([a.get("txt工單單號"), a.modified, db.query("select 序 from 採購明細資料 where 採購單號='" + number + "'").length], ["太遲", true, 0],
    "its typing stays, and no line comes back alone");
