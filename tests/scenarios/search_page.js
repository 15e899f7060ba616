// The search page of orders: every condition with its clause, dates and check boxes, ways to a record and back.
clock("2025-03-03 08:30:00");
const Captions = ["採購單號", "廠商名稱", "原料名稱", "單價異常", "採購人員", "交貨日期", "審單異常", "原料規格", "工單單號"];
const from_ = "採購資料 inner join 採購明細資料 on 採購資料.採購單號=採購明細資料.採購單號 where 採購資料.類別='";
const orders = (category, where) => value("select count(*) as n from " + from_ + category + "'" + where);
const Between = " and 採購資料.採購日期 between '20240101' and '20250131'";
const open = " and (採購資料.審單<>'Y' or 採購資料.審單 is null)";

let s, g;
const page = name => {
    s = launch({ function: name, user: "採購甲" });
    s.press("F2");
    g = s.grid("MSHFlexGrid1");
};
const option = i => {
    conditions(s);
    s.choose("sopt查詢條件(" + i + ")");
};
const found = (n, what) => {
    check(n > 0, what + ": there is something to find");
    equal([g.lineCount, s.status(2)], [n, "" + n], what);
};

// ---- what stands there at first ----
page("物料採購作業");
equal([s.mode, s.visible("span查詢條件"), [1, 2, 3, 4].map(i => s.status(i)), g.lineCount], ["查詢", false, ["查詢筆數", "0", "", ""], 0],
    "the list comes first; nothing was ordered since last month");
equal(["save", "del", "first", "next", "審單"].filter(k => s.enabled("toolbar:" + k)), [], "there is nothing to save or move");
shows(() => { s.press("F8"); s.press("F3"); }, [], "by keys neither");
s.click("scmd查詢條件");
check(s.visible("span查詢條件") && !s.enabled("scmd查詢條件") && !s.enabled("scmd看此資料") && !s.enabled("scmd回前畫面_查詢"), "the conditions come before the list");
equal(["txt查詢內容(2)", "txt查詢內容(3)", "Chk查詢廠商", "chk查詢審單"].map(c => s.get(c)), ["20250201", "20250303", "0", "0"], "from the month of 30 days ago until today");
option(5);
for (const [i, text] of [[0, "202501011"], [2, "2024010199"], [3, "2025013x1"]]) s.set("txt查詢內容(" + i + ")", text);
s.click("txt查詢內容(0)");
equal([0, 2, 3].map(i => s.get("txt查詢內容(" + i + ")")), ["20250101", "20240101", "20250131"], "dates are eight digits");

// ---- every condition finds what its clause says ----
const bought = value("select top 1 廠商簡稱 from " + from_ + "物料'" + Between + " order by 採購資料.採購單號");
const some = column => value("select top 1 " + column + " as t from " + from_ + "物料'" + Between + " and " + column + "<>'' order by 採購資料.採購單號 desc");
const like = (text, ...columns) => " and (" + columns.map(c => c + " like '%" + text + "%'").join(" or ") + ")";
const number = some("採購資料.採購單號"), name = some("採購明細資料.原料名稱"), code = some("採購明細資料.原料代號"), size = some("採購明細資料.規格"), day = some("採購明細資料.交貨日期");
db.execute("update 採購明細資料 set 單價='0' where 採購單號='" + number + "' and 序=1");
db.execute("update 採購明細資料 set 印件編號='W99001' where 採購單號='" + number + "'");
for (const [i, text, where] of [
    [0, number.slice(1, 8), Between + like(number.slice(1, 8), "採購資料.採購單號")],
    [1, bought.slice(1, 3), Between + like(bought.slice(1, 3), "採購資料.廠商簡稱")],
    [2, name.slice(0, 2), Between + like(name.slice(0, 2), "採購明細資料.原料代號", "採購明細資料.原料名稱")],
    [2, code.slice(1), Between + like(code.slice(1), "採購明細資料.原料代號", "採購明細資料.原料名稱")],
    [3, undefined, Between + " and cast(採購明細資料.單價 as float)<=0"],
    [4, "S04", Between + like("S04", "採購資料.業務員代號", "採購資料.業務員名稱")],
    [4, "雅筑", Between + like("雅筑", "採購資料.業務員代號", "採購資料.業務員名稱")],
    [5, day.slice(0, 6), Between + like(day.slice(0, 6), "採購明細資料.交貨日期")],
    // What waits for approval longer than so many days, 7 at first; the dates do not count.
    [6, undefined, " and 採購資料.採購日期<'20250224'" + open],
    [6, "60", " and 採購資料.採購日期<'20250102'" + open],
    [7, size.slice(0, 2), Between + like(size.slice(0, 2), "採購明細資料.規格")],
    [8, "W99", Between + like("W99", "採購明細資料.印件編號")]]) {
    option(i);
    const way = "sopt查詢條件(" + i + ")", other = "sopt查詢條件(" + (i + 1) % 9 + ")";
    equal([s.get(way), s.colour(way), s.colour(other)], [Captions[i], "#ff0000", "#808080"], "condition " + i + " in red, the others in grey");
    equal(["txt查詢內容(0)", "txt查詢內容(2)", "txt查詢內容(3)"].map(box => s.visible(box)), [i !== 3, i !== 6, i !== 6], "with its boxes");
    if (i !== 3) equal([s.get("lbl查詢名稱(0)"), s.focused()], [i === 6 ? "天    數:" : Captions[i] + ":", "txt查詢內容(0)"], "its label, and the focus in its box");
    search(s, text);
    found(orders("物料", where), Captions[i] + " '" + text + "'");
    equal([s.visible("span查詢條件"), s.focused()], [false, "MSHFlexGrid1"], "the list comes to the front, with the focus");
}
equal([g.titles, g.visible("H採購單號"), g.cell(1, "H採購單號")], [["採購單號", "採購日期", "供應商", "原料代號", "原料名稱", "規格", "數量", "單位", "單價", "小計", "客戶料號",
    "審單", "送清", "H採購單號"], false, number], "the columns, the last of them hidden");
option(8);
search(s, "99");
equal(g.lineCount, 0, "a work order is found by its beginning only");
option(0);
search(s, "x'; --%");
g.doubleClick(1, "採購單號");
s.press("Enter");
equal([g.lineCount, s.status(2), s.enabled("scmd看此資料"), s.mode], [0, "0", false, "查詢"], "nothing found, nothing to look at; the empty row leads nowhere");
search(s, "");
found(orders("物料", Between), "an empty text finds all of these days");
const order = column(g, "採購日期").map((date, i) => date + g.cell(i + 1, "採購單號"));
equal(order, order.slice().sort().reverse(), "the latest first");

// The two boxes search at once.
option(0);
search(s, "");
const all = orders("物料", Between);
conditions(s);
s.click("chk查詢審單");
found(orders("物料", Between + open), "未審單");
check(s.visible("span查詢條件"), "the conditions stay in front");
db.execute("update 採購資料 set 廠商代號='' where 採購單號='" + number + "'");
db.execute("update 採購資料 set 廠商代號=null,採購日期='20200101' where 採購單號='" + value("select top 1 採購單號 from 採購資料 where 類別='物料' and 審單='Y' order by 採購單號") + "'");
s.click("Chk查詢廠商");
found(orders("物料", " and (採購資料.廠商代號='' or 採購資料.廠商代號 is null)"), "未選廠商 looks at all days, and at approved ones");
s.click("chk查詢審單");
s.click("Chk查詢廠商");
found(all, "both off again");
s.click("scmd取消");
equal([s.visible("span查詢條件"), s.focused(), g.lineCount], [false, "MSHFlexGrid1", all], "cancel goes back to the list as it was");

// There is no record to move to, so that the keys which move there are the list's.
const stands = key => {
    s.press(key);
    return g.currentRow();
};
equal(["End", "Home", "Ctrl+End", "Ctrl+Home"].map(stands), [all, 1, all, 1], "to the ends of the list");
const page2 = stands("PageDown");
check(page2 > 10 && page2 < all && stands("PageDown") > page2 && stands("PageUp") === page2, "by pages");
s.type("25");
equal([s.visible("span查詢條件"), s.focused(), s.get("txt查詢內容(0)")], [true, "txt查詢內容(0)", "25"], "letters go to the condition");
for (const control of ["txt查詢內容(0)", "sopt查詢條件(2)", "Chk查詢廠商", "scmd確定"]) {
    conditions(s);
    s.key(control, "Esc");
    equal([s.open, s.visible("span查詢條件"), s.focused()], [true, false, "MSHFlexGrid1"], "Esc on " + control + " puts the conditions away");
}

// ---- to a record: Enter, the key, double and right click; texts survive the trip ----
option(1);
enter(s, "txt查詢內容(0)", bought);
const ofVendor = orders("物料", Between + like(bought, "採購資料.廠商簡稱"));
found(ofVendor, "Enter in the box searches");
for (const [how, row] of [["Enter", 2], ["button", 3], ["double click", 4], ["right click", 5]]) {
    const wanted = g.cell(row, "H採購單號");
    if (how === "Enter") g.key(row, "供應商", "Enter");
    if (how === "button") { g.enter(row, "供應商"); s.click("scmd看此資料"); }
    if (how === "double click") g.doubleClick(row, "供應商");
    if (how === "right click") g.rightClick(row, "供應商");
    equal([s.mode, s.get("txt採購單號")], ["修改", wanted], how + " shows the order");
    s.press("F2");
    equal([g.lineCount, s.visible("span查詢條件")], [ofVendor, false], "the search is still there");
}
s.click("scmd查詢條件");
equal([s.get("txt查詢內容(0)"), s.get("txt查詢內容(2)"), s.colour("sopt查詢條件(1)")], [bought, "20240101", "#ff0000"], "with its text, dates and choice");
s.click("scmd取消");
const shown = s.get("txt採購單號");
s.click("scmd回前畫面_查詢");
equal([s.mode, s.get("txt採購單號"), s.enabled("toolbar:save") && s.enabled("toolbar:next")], ["修改", shown, true], "back to the record, with its keys");
s.toolbar("edit");
s.press("F2");
s.click("scmd查詢條件");
equal([s.colour("sopt查詢條件(0)"), s.get("txt查詢內容(0)")], ["#ff0000", "25"], "after another start the first condition is chosen");
option(1);
equal(s.get("txt查詢內容(0)"), bought, "the others keep their texts");

// ---- a look at the list in the midst of a new order ----
db.execute("update 使用者明細 set 打印='' where 使用者='採購甲' and 模塊='frm紙板採購作業'");
s = launch({ function: "紙板採購作業", user: "採購甲" });
vendor(s, "V001");
const lines = s.grid("fml明細");
lines.type(1, "內部品名", "自訂紙板");
lines.enter(1, "備註");
s.type("半句");
s.press("F2");
shows(() => s.press("F4"), [Refused], "a command that is refused there");
equal(s.mode, "查詢", "F2 in the midst of a cell, and nothing leaves the page");
s.click("scmd回前畫面_查詢");
equal([s.mode, s.modified, s.get("lbl廠商簡稱"), cells(lines, 1, "內部品名", "備註"), lines.lineCount], ["新增", true, "岱峻紙板", ["自訂紙板", "半句"], 1],
    "back to all that was typed");
equal([s.focused(), lines.currentRow(), lines.currentTitle(), ["save", "del", "next", "審單"].filter(k => s.enabled("toolbar:" + k))], ["fml明細", 1, "備註", ["save"]], "and to the cell; with the keys of a new order");

// ---- board: the part number in the place of the buyer ----
page("紙板採購作業");
option(4);
equal([s.get("sopt查詢條件(4)"), s.get("lbl查詢名稱(0)")], ["料號", "料號:"], "on board the buyer gives way to the part number");
s.set("txt查詢內容(2)", "20240101");
s.set("txt查詢內容(3)", "20250131");
const part = value("select top 1 料號 from " + from_ + "紙板' and 料號<>'' order by 採購資料.採購單號 desc").slice(1, 5);
search(s, part);
found(orders("紙板", Between + like(part, "採購明細資料.料號")), "料號");
