// Two clients draw the same number: the later save says so and keeps its typing, the next one draws anew.
clock("2025-03-03 08:30:00");
const take = n => insert("採購資料", { 採購單號: n, 類別: "物料", 採購日期: "20250303", 審單: "N", 製單時間: "2025-03-03 08:00:00" });
const lines = n => db.query("select 序,原料名稱,數量 from 採購明細資料 where 採購單號='" + n + "'");
const line = [{ "序": 1, "原料名稱": "自訂紙板", "數量": "5" }];
// Another client writes between the drawing and the writing.
const taken = (number, doing) => {
    stage.beforeStatement("BEGIN", () => take(number));
    stops(doing, "critical", "儲存錯誤", "採購明細中有重復的原物料或採購單號重復!", number + " was taken meanwhile");
};

// The number field of a new order is shut: the screen draws every number itself.
let s = launch({ function: "紙板採購作業", user: "採購甲" });
equal([s.get("txt採購單號"), s.enabled("txt採購單號")], ["", false], "a new order has no number, and none can be typed");
ownOrder(s);
const typed = () => [s.mode, s.modified, s.get("lbl廠商簡稱"), cells(s.grid("fml明細"), 1, "內部品名", "小計"), s.get("txt合計")];
const before = typed();
for (const number of ["250303001", "250303002"]) {
    taken(number, () => s.press("F8"));
    equal([s.get("txt採購單號"), lines(number), typed()], [number, [], before], "the number stays on show, nothing was written, and everything typed stays");
}
s.press("F8");
equal([s.get("txt採購單號"), lines("250303003"), count("採購資料", "採購單號 in ('250303001','250303002') and 類別='物料'")], ["250303003", line, 2], "the next save draws anew; the other client's orders are untouched");
save(s);
equal([s.get("txt採購單號"), lines("250303003")], ["250303003", line], "a saved order keeps its number");

// By the toolbar the screen stays open while it is refused, and ends when it is saved.
s = launch({ function: "紙板採購作業", user: "採購甲" });
ownOrder(s);
taken("250303004", () => s.toolbar("save"));
check(s.open && s.modified, "a refused save does not end the screen");
s.toolbar("save");
equal([s.open, lines("250303005")], [false, line], "a good one does");

// A refused number does not follow into the next order.
s = launch({ function: "紙板採購作業", user: "採購甲" });
ownOrder(s);
taken("250303006", () => s.press("F8"));
s.press("F1");
equal(s.get("txt採購單號"), "", "another new order starts without a number");
ownOrder(s);
clock("2025-03-06 00:00:01");
s.press("F8");
equal([s.get("txt採購單號"), s.get("txt採購日期")], ["250306001", "20250303"], "and draws its own, with the day of the save");

// A requisition's number may be typed; one that exists is refused, and stays to be mended.
const q = launch({ function: "資材申購作業", user: "採購甲" });
q.set("txt申購單號", value("select top 1 申購單號 from 原料申購資料 order by 申購單號"));
q.grid("fml明細").type(1, "原料代號", "KMKB-01");
stops(() => q.press("F8"), "critical", "儲存錯誤", "申購單號重複!", "a number that exists is refused");
equal([q.mode, q.modified, q.grid("fml明細").lineCount], ["新增", true, 1], "the typing stays");
q.set("txt申購單號", "自編一號");
q.press("F8");
equal([q.mode, count("原料申購明細", "申購單號='自編一號'")], ["修改", 1], "another number is taken as it was typed");
