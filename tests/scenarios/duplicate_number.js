// Two clients draw the same number: the later save says so and keeps its typing, the next one draws anew.
clock("2025-03-03 08:30:00");
const told = () => messages().map(m => [m.icon, m.title, m.text]);
const take = n => db.execute("insert into 採購資料 (採購單號,類別,採購日期,審單,製單時間) values ('" + n + "','物料','20250303','N','2025-03-03 08:00:00')");
const lines = n => db.query("select 序,原料名稱,數量 from 採購明細資料 where 採購單號='" + n + "' order by 序");
const Duplicate = ["critical", "儲存錯誤", "採購明細中有重復的原物料或採購單號重復!"];
const enter = w => {
    w.set("txt廠商代號", "V001");
    w.press("Enter");
    for (const [title, text] of [["內部品名", "自訂紙板"], ["單位", "pcs"], ["走紙才", "1"], ["大紙數", "5"], ["單價", "3"]])
        w.grid("fml明細").type(1, title, text);
};
const line = [{ "序": 1, "原料名稱": "自訂紙板", "數量": "5" }];

// The number field of a new order is shut: the screen draws every number itself.
let s = launch({ function: "紙板採購作業", user: "採購甲" });
equal([s.get("txt採購單號"), s.enabled("txt採購單號")], ["", false], "a new order has no number, and none can be typed");
enter(s);
const typed = () => [s.mode, s.modified, s.get("lbl廠商簡稱"), s.grid("fml明細").cell(1, "內部品名"), s.grid("fml明細").cell(1, "小計"), s.get("txt合計")];
const before = typed();

// Another client writes between the drawing and the writing.
for (const number of ["250303001", "250303002"]) {
    stage.beforeStatement("BEGIN", () => take(number));
    onMessage("儲存錯誤", Duplicate[2]);
    s.press("F8");
    equal(told(), [Duplicate], number + " was taken meanwhile");
    equal([s.get("txt採購單號"), lines(number)], [number, []], "the number stays on show, nothing was written");
    equal(typed(), before, "and everything typed stays");
}
s.press("F8");
equal([s.get("txt採購單號"), lines("250303003")], ["250303003", line], "the next save draws anew");
equal(db.query("select 類別 from 採購資料 where 採購單號<='250303002' and 採購單號>='250303'").map(r => r["類別"]), ["物料", "物料"],
    "the other client's orders are untouched");
onMessage("詢問", "確定更新此筆資料?", "yes");
s.press("F8");
equal([s.get("txt採購單號"), lines("250303003")], ["250303003", line], "a saved order keeps its number");

// By the toolbar the screen stays open while it is refused, and ends when it is saved.
s = launch({ function: "紙板採購作業", user: "採購甲" });
enter(s);
stage.beforeStatement("BEGIN", () => take("250303004"));
onMessage("儲存錯誤", Duplicate[2]);
s.toolbar("save");
check(s.open && s.modified, "a refused save does not end the screen");
s.toolbar("save");
equal([s.open, lines("250303005")], [false, line], "a good one does");

// A refused number does not follow into the next order.
s = launch({ function: "紙板採購作業", user: "採購甲" });
enter(s);
stage.beforeStatement("BEGIN", () => take("250303006"));
onMessage("儲存錯誤", Duplicate[2]);
s.press("F8");
s.press("F1");
equal(s.get("txt採購單號"), "", "another new order starts without a number");
enter(s);
s.press("F8");
equal(s.get("txt採購單號"), "250303007", "and draws its own");

// The day's hundreds run over into the next day's series.
take("250303999");
s.press("F1");
enter(s);
s.press("F8");
equal(s.get("txt採購單號"), "250304000", "the thousandth order of a day");
take("250303FFF");
db.execute("update 採購資料 set 採購單號='250303ZZZ' where 採購單號='250303FFF'");
s.press("F1");
enter(s);
s.press("F8");
equal(s.get("txt採購單號"), "250304AAA", "letters are counted on as well");
clock("2025-03-05 00:00:01");
s.press("F1");
enter(s);
clock("2025-03-06 00:00:01");
s.press("F8");
equal([s.get("txt採購單號"), s.get("txt採購日期")], ["250306001", "20250305"], "the number has the day of the save");

// A requisition's number may be typed; one that exists is refused, and stays to be mended.
const q = launch({ function: "資材申購作業", user: "採購甲" });
q.set("txt申購單號", db.query("select top 1 申購單號 from 原料申購資料 order by 申購單號")[0]["申購單號"]);
q.grid("fml明細").type(1, "原料代號", "KMKB-01");
onMessage("儲存錯誤", "申購單號重複!");
q.press("F8");
equal([q.mode, q.modified, q.grid("fml明細").lineCount], ["新增", true, 1], "the typing stays");
q.set("txt申購單號", "自編一號");
q.press("F8");
equal([q.mode, db.query("select 原料代號 from 原料申購明細 where 申購單號='自編一號'").length], ["修改", 1], "another number is taken as it was typed");
