// A requisition from need to approval: entry, re-save, approval, search, batch, delete, and what an order takes of it.
clock("2025-03-03 08:30:00");
const s = launch({ function: "資材申購作業", user: "主管甲" });
equal([s.title, s.mode, s.get("txt申購日期"), s.get("lbl經辦人名稱")], ["原料申購作業", "新增", "20250303", "吳國棟"], "a new requisition");
equal(s.items("Cbo類別"), ["紙板", "物料"], "families to choose from");
check(s.items("Cbo請購原因").length > 0 && s.items("Cbo庫別").length > 0, "reasons and warehouses");
check(!s.enabled("toolbar:print") && !s.enabled("toolbar:審單"), "keys that a new document has not");
s.choose("Cbo類別", "物料");
const g = s.grid("fml明細");
equal(g.titles, ["原料代號", "原料名稱", "規格", "數量", "單位", "工單單號", "需求日期", "用途說明", "序", "工單單號#2", "已采購數", "楞別"], "columns");

// A known code fills its row at once; an unknown text opens the window, which gives several rows.
const codes = db.query("select top 3 物料代號 from 物料資料 order by 物料代號 desc").map(r => r["物料代號"]);
g.type(1, "原料代號", codes[0].toLowerCase());
equal(g.cell(1, "原料代號"), codes[0], "a known code needs no window");
let shown = 0;
onWindow("frm原料輔助視窗_申購", w => {
    equal(w.title, "原料輔助視窗", "title of the pick");
    const list = w.grid("MSHFlexGrid1");
    shown = list.lineCount;
    list.select(3, 2);
    w.press("Enter");
});
g.type(2, "原料代號", "ST0");
check(shown >= 3, "the window lists what matches");
equal(g.lineCount, 3, "two rows were picked");
g.type(1, "數量", "12.5");
g.type(2, "數量", "3");
g.type(3, "數量", "4");
g.type(2, "需求日期", "20250399");
s.set("txt需求日期", "20250320");
g.type(4, "原料代號", codes[0]);
onMessage("錯誤", "原料代號重復,請重新輸入", "ok");
s.press("F8");
equal(s.mode, "新增", "an item twice is refused");
g.enter(4, "原料代號");
s.click("scmd刪除");
s.set("txt申購日期", "20250230");
onMessage("錯誤", "「申購日期」日期輸入錯誤!", "ok");
s.press("F8");
equal(s.focused(), "txt申購日期", "the focus goes to the date");
s.set("txt申購日期", "20250303");
s.set("txt需求日期", "1");
onMessage("錯誤", "「需求日期」日期輸入錯誤!", "ok");
s.press("F8");
s.set("txt需求日期", "20250320");
onWindow("frm片語輔助視窗", w => w.press("Enter"));
s.click("scmd申購單位");
check(s.get("lbl申購單位") !== "", "a department is picked");
s.press("F8");
const number = s.get("txt申購單號");
equal(number, "2503030001", "first number of the day");
equal(s.notice(), "已儲存 2503030001", "the notice names it");
const stored = () => db.query("select 原料代號,數量,需求日期,序,已采購數 from 原料申購明細 where 申購單號='" + number + "' order by 序");
equal(stored().map(r => [r["數量"], r["需求日期"], r["序"], r["已采購數"]]),
    [["12.5", "20250320", 1, "0"], ["3", "20250320", 2, "0"], ["4", "20250320", 3, "0"]], "lines with the header's date where theirs is none");
equal(db.query("select 製單人,審單,修改人 from 原料申購資料 where 申購單號='" + number + "'")[0],
    { "製單人": "吳國棟", "審單": "N", "修改人": "" }, "who made it");

// An order saved meanwhile is not lost by a re-save of the requisition.
db.execute("update 原料申購明細 set 已采購數='2' where 申購單號='" + number + "' and 原料代號='" + codes[0] + "'");
g.type(1, "數量", "20");
onMessage("詢問", "確定更新此筆資料?", "yes");
s.press("F8");
equal([stored()[0]["數量"], stored()[0]["已采購數"]], ["20", "2"], "the ordered quantity is the stored one");

// Approval needs a person; then an order can take what is left.
s.set("txt經辦人代號", "");
onMessage("提示", "請選擇經辦人代號,名稱!", "ok");
s.toolbar("審單");
s.set("txt經辦人代號", "S05");
s.key("txt經辦人代號", "Enter");
onWindow("frm單據審核", w => w.click("scmd確定"));
onMessage("詢問", "操作成功,是否立即儲存?", "yes");
s.toolbar("審單");
check(s.visible("pic審單"), "the stamp");
onMessage("提示", "該單已審單,不允許修改", "ok");
s.press("F8");
onWindow("frm單據審核", w => w.click("scmd確定"));
onMessage("提示", "該單已審單", "ok");
s.toolbar("審單");

// Items of another vendor are not offered to this one.
db.execute("update 物料資料 set 廠商代號=''");
const o = launch({ function: "物料採購作業", user: "admin" });
o.set("txt廠商代號", "V001");
o.key("txt廠商代號", "Enter");
onWindow("frm原料輔助視窗_請購", w => {
    const list = w.grid("MSHFlexGrid1");
    list.select(1, list.lineCount);
    w.press("Enter");
});
const og = o.grid("fml明細");
og.type(1, "申購單號", number);
check(og.lineCount >= 1, "open lines come into the order");
o.press("F8");
const taken = og.row(1);
const left = db.query("select 數量,已采購數 from 原料申購明細 where 申購單號='" + number + "' and 原料代號='" + taken["代號"] + "'")[0];
equal(left["數量"], left["已采購數"], "the order has taken the rest");

// Search, quick find, delete.
s.press("F2");
s.click("scmd查詢條件");
s.type(number);
s.press("Enter");
equal(s.grid("MSHFlexGrid1").lineCount, 3, "found by its number");
equal(s.grid("MSHFlexGrid1").titles.slice(-3), ["請購原因", "庫別", "H申購單號"], "columns of the list");
s.press("Enter");
equal(s.get("txt申購單號"), number, "and shown");
s.set("txt速查單號", "nothing");
onMessage("提示", "查無此申購單,請確認輸入單號是否正確!", "ok");
s.key("txt速查單號", "Enter");
onMessage("刪除詢問", "確定要刪除此筆資料?", "yes");
onMessage("提示", "該單已審單﹐不允許刪除!", "ok");
s.toolbar("del");
onWindow("frm單據審核", w => { w.choose("Opt審核(1)"); w.click("scmd確定"); });
onMessage("詢問", "操作成功,是否立即儲存?", "yes");
s.toolbar("審單");
equal(db.query("select 審單,審單人,審單日期 from 原料申購資料 where 申購單號='" + number + "'")[0],
    { "審單": "N", "審單人": "", "審單日期": "" }, "taken back");
onMessage("刪除詢問", "確定要刪除此筆資料?", "yes");
onMessage("資料刪除", "資料刪除完畢!", "ok");
s.toolbar("del");
equal(db.query("select * from 原料申購明細 where 申購單號='" + number + "'").length, 0, "gone");

// A requisition that another user deleted meanwhile is not written again.
s.toolbar("last");
const gone = s.get("txt申購單號");
db.execute("update 原料申購資料 set 審單='N' where 申購單號='" + gone + "'");
s.toolbar("edit");
db.execute("delete from 原料申購資料 where 申購單號='" + gone + "'");
g.type(1, "用途說明", "補料");
onMessage("詢問", "確定更新此筆資料?", "yes");
onMessage("更新錯誤", "申購單 " + gone + " 已由其他使用者刪除!", "ok");
s.press("F8");
equal(g.cell(1, "用途說明"), "補料", "what was typed stays");
onMessage("列印", "列印功能尚未提供!", "ok");
s.press("F4");

// No line of a long document is lost.
db.execute("insert into 原料申購資料 (申購單號,類別,申購日期,審單) values ('2503030777','物料','20250303','N')");
for (let i = 1; i <= 400; ++i) db.execute("insert into 原料申購明細 (申購單號,原料代號,數量,序,已采購數) values ('2503030777','L" + i + "','" + i + "'," + i + ",'0')");
s.set("txt速查單號", "2503030777");
s.click("scmd速查");
equal([g.lineCount, g.cell(400, "數量")], [400, "400"], "all lines are shown");
onMessage("詢問", "確定更新此筆資料?", "yes");
s.press("F8");
equal(db.query("select sum(cast(數量 as float)) as 和 from 原料申購明細 where 申購單號='2503030777'")[0]["和"], 80200, "and saved");

// Board by its exact code brings its unit and flute.
const board = db.query("select top 1 浪紙代號,楞別 from 浪紙資料 where 楞別<>'' order by 浪紙代號")[0];
s.press("F1");
s.choose("Cbo類別", "紙板");
g.type(1, "原料代號", board["浪紙代號"]);
equal([g.cell(1, "單位"), g.cell(1, "楞別")], ["PC", board["楞別"]], "unit and flute");

// Batch approval.
db.execute("update 原料申購資料 set 審單=null where 申購單號 in (select top 3 申購單號 from 原料申購資料 order by 申購日期 desc,申購單號 desc)");
clock("2025-01-15 08:30:00");
const b = launch({ function: "資材申購作業", user: "主管甲" });
b.toolbar("edit");
b.toolbar("批審");
equal([b.mode, b.get("txt日期1"), b.get("txt日期2")], ["批審", "20250108", "20250115"], "the batch page");
const list = b.grid("fml整批審單");
check(list.lineCount >= 3, "a mark of null counts as not approved here");
const first = list.cell(1, "請購單號");
list.doubleClick(1, "審單");
list.enter(2, "請購單位");
list.enter(1, "請購單號");
check(b.grid("fmlDetail").lineCount > 0, "its lines");
b.press("F8");
equal(db.query("select 審單,審單人,審單日期 from 原料申購資料 where 申購單號='" + first + "'")[0],
    { "審單": "Y", "審單人": "吳國棟", "審單日期": "20250115" }, "approved");
messages();
