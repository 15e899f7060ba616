// Batch approval: who may, what is listed, marking, the lines of a document, the copy to the second database.
clock("2025-01-15 08:30:00");
const denied = launch({ function: "物料採購作業", user: "採購甲" });
check(!denied.visible("toolbar:整批審單"), "the key is shown to who holds the right only");

const second = stage.workFolder() + "/second.db";
equal(stage.run("liaowu-db", ["create", second]), 0, "a second database");
const target = "Provider=SQLite;Data Source=" + second;

db.execute("update 採購資料 set 審單='N',轉稅='',審單人='',審單日期='' where 採購日期>='20250108'");
const open = values("select 採購單號 from 採購資料 where 審單<>'Y' and 採購日期 between '20250108' and '20250115' order by 採購單號");
check(open.length >= 4, "there are orders to approve");
db.execute("update 採購資料 set 轉稅='1' where 採購單號 in ('" + open[0] + "','" + open[2] + "')");
db.execute("update 採購資料 set 審單=null where 採購單號='" + open[3] + "'");

const s = launch({ function: "物料採購作業", user: "主管甲", other: target });
s.press("F11");
equal([s.mode, texts(s, "txt訂單日期1", "txt訂單日期2", "txt客戶單號2", "txt客戶單號4")], ["批審", ["20250108", "20250115", "", "zzzzzzzz"]], "the batch page with its boxes");
const g = s.grid("fml整批審單");
equal([g.lineCount, s.status(2)], [open.length - 1, String(open.length - 1)], "a document whose mark is null is not listed; the count is told");
equal(g.titles, ["採購單號", "廠商代號", "廠商簡稱", "採購日期", "採購人員代號", "採購員", "幣別", "備注", "審單"], "columns");
check(s.enabled("toolbar:save") && !s.enabled("toolbar:del") && !s.enabled("toolbar:next") && !s.enabled("toolbar:審單"), "keys of the page");

g.enter(2, "廠商代號");
g.enter(1, "採購單號");
equal([s.visible("pic訂單明細"), s.grid("fmlDetail").lineCount], [true, count("採購明細資料", "採購單號='" + open[0] + "'")], "the lines of the document come up");

g.type(1, "審單", "yx");
equal(g.cell(1, "審單"), "N", "only capitals are taken as they are typed");
for (const mark of ["Y", "N"]) {
    s.click("scmd審單");
    equal([g.cell(1, "審單"), g.cell(g.lineCount, "審單")], [mark, mark], "all are marked, and unmarked");
}
g.doubleClick(1, "審單");
g.doubleClick(2, "審單");
equal(column(g, "審單").slice(0, 3), ["Y", "Y", "N"], "a double click flips the mark");
s.press("F8");
const stored = n => Object.values(one("select 審單,審單人,審單日期 from 採購資料 where 採購單號='" + n + "'"));
equal([stored(open[0]), stored(open[1])[0], stored(open[2])[0], g.lineCount], [["Y", "吳國棟", "20250115"], "Y", "N", open.length - 3],
    "approved with a copy and without; a row left at N is not touched; the list is read again");

const there = db.at(target);
equal(there.query("select 採購單號 from 採購資料"), [{ 採購單號: open[0] }], "only the marked one is copied");
const columns = "select * from 採購明細資料 where 採購單號='" + open[0] + "' order by 序";
equal(there.query(columns), db.query(columns), "its lines field by field");

// A copy that fails leaves the approval standing.
there.execute("drop table 採購明細資料");
g.doubleClick(1, "審單");
onMessage("回填批審錯誤", "*");
s.press("F8");
equal([stored(open[2])[0], there.query("select 採購單號 from 採購資料").length], ["Y", 1], "the approval stays, nothing is half copied");
s.toolbar("edit");
equal(s.mode, "修改", "back to the document");
