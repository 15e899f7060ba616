// What a save of an order checks, in which order, and what stays on the screen when it stops; and the messages of the
// lists and boxes around it.
clock("2025-03-03 08:30:00");
let s = launch({ function: "紙板採購作業", user: "admin" });
const fault = (text, what) => stops(() => s.press("F8"), "critical", "錯誤", text, what);
const before = count("採購資料", "1=1");

// ---- header ----
const g = s.grid("fml明細");
s.set("txt採購日期", "20250231");
g.type(1, "規格", "120*90");
fault("「廠商」欄位不可為空白!", "the vendor comes first");
equal(s.focused(), "txt廠商代號", "the focus goes to the vendor");
s.set("txt廠商代號", "V001");
s.set("txt業務員代號", "S01");
fault("「廠商」欄位不可為空白!", "a code nobody looked up is no vendor");
equal(texts(s, "txt廠商代號", "txt業務員代號"), ["", ""], "and is cleared, the buyer's as well");
vendor(s, "岱峻紙板");
equal(texts(s, "txt廠商代號", "lbl廠商簡稱", "cbo幣別", "txt業務員代號"), ["V001", "岱峻紙板", "台幣", "S01"], "the look-up, by name, fills the header");
fault("「採購日期」日期輸入錯誤!", "then the date");
equal([s.focused(), s.get("txt採購日期")], ["txt採購日期", "20250231"], "stays to be mended");
s.set("txt採購日期", "");
fault("第1行明細「原料代號及名稱」不能為空!", "then the lines are looked at");
equal(s.get("txt採購日期"), "20250303", "an empty date is today");

// ---- lines: the first fault of the first faulty row ----
const at = () => [s.focused(), g.currentRow(), g.currentTitle()];
equal(at(), ["fml明細", 1, "代號"], "the cell is chosen");
g.type(2, "備註", "第二行");
g.type(1, "內部品名", "自訂紙板");
for (const [text, title, mended, focus] of [["單位」不能為空!", "單位", { 單位: "㎡", 走紙才: "0" }, "fml明細清單"], ["走紙才」不能為零!", "走紙才", { 走紙才: "2" }, "fml明細"],
    ["採購數量」不能為空!", "大紙數", { 大紙數: "100" }, "fml明細"]]) {
    fault("第1行明細「" + text, "a name without a code will do; then " + title);
    equal(at(), [focus, 1, title], "chosen, a unit with its list open");
    fill(g, 1, mended);
}
fault("第2行明細「原料代號及名稱」不能為空!", "then the next row");
equal([cells(g, 1, "規格", "走紙才", "小紙數"), g.cell(2, "備註"), s.modified, count("採購資料", "1=1")], [["120*90", "2", "200"], "第二行", true, before], "all typing stays; nothing was written");
const skipped = doing => stops(doing, "warning", "警告", "前一列資料尚未輸入!", "a row is not skipped");
skipped(() => { g.enter(4, "規格"); s.type("9"); });
equal([g.cell(4, "規格"), g.lineCount], ["", 2], "nothing was taken");
skipped(() => g.key(4, "代號", "F9"));
skipped(() => { g.enter(4, "送清"); s.press("Down"); s.press("Enter"); });

// ---- limits, in bytes of the plant's encoding ----
g.key(2, "代號", "Ctrl+Delete");
equal([g.lineCount, g.cell(2, "備註")], [1, ""], "a row is taken away");
const long = n => "一二三四五六七八九十".repeat(6).slice(0, n);
for (const [title, limit] of [["規格", 40], ["剖切尺寸", 40], ["壓線尺寸", 40], ["內部品名", 40], ["廠商品名", 40], ["楞別", 10], ["壓線種類", 10], ["備註", 50]]) {
    shows(() => g.type(1, title, long(limit / 2)), [], title + " takes " + limit + " bytes");
    stops(() => g.type(1, title, long(limit / 2 - 1) + "ab1"), "warning", "訊息", "最多只可輸入" + limit + "個字!", title + " takes no more");
    equal(g.cell(1, title), long(limit / 2 - 1) + "ab", title + " keeps what fits");
}
for (const [title, limit] of [["大紙數", 20], ["單價", 20], ["已交數", 10], ["走紙才", 4]])
    stops(() => g.type(1, title, "1".repeat(limit + 1)), "warning", "訊息", "最多只可輸入" + limit + "個字!", title + " has its limit");
stops(() => enter(s, "txt工單單號", "W".repeat(21)), "warning", "訊息", "最多只可輸入20個字!", "fields have limits as well");
equal(s.get("txt工單單號"), "W".repeat(20), "and keep what fits");
fill(g, 1, { 規格: "120*90", 大紙數: "100", 單價: "5", 已交數: "0", 走紙才: "1", 交貨日: "20250320" });
s.press("F8");
equal([count("採購資料", "1=1"), s.mode, s.modified], [before + 1, "修改", false], "what passes is saved");
const number = s.get("txt採購單號");

// ---- the question before a change ----
const remark = () => value("select 備註 from 採購明細資料 where 採購單號='" + number + "'");
const was = remark();
g.type(1, "備註", "改過");
s.set("txt採購日期", "1");
fault("「採購日期」日期輸入錯誤!", "faults come before the question");
s.set("txt採購日期", "20250303");
save(s, "no");
equal([remark(), g.cell(1, "備註"), s.modified, s.open], [was, "改過", true, true], "no leaves everything as typed");
save(s);
equal([remark(), s.open, s.modified], ["改過", true, false], "yes writes it, and F8 goes on with it");
for (const [answer, stays] of [["no", true], ["yes", false]]) {
    g.type(1, "備註", answer);
    onMessage("詢問", "確定更新此筆資料?", answer);
    s.toolbar("save");
    equal([s.open, remark()], stays ? [true, "改過"] : [false, "yes"], "the key 儲存 ends with it, when it saves");
}

// ---- ends of the list ----
s = launch({ function: "紙板採購作業", user: "admin" });
const currency = s.get("cbo幣別");
for (const key of ["PageUp", "PageDown", "Ctrl+Home", "Ctrl+End"]) s.key("cbo幣別", key);
equal([s.mode, s.get("cbo幣別"), s.items("cbo幣別").length > 1], ["新增", currency, true], "a new order has no neighbours, and the currency stays");
s.toolbar("edit");
equal(s.get("txt採購單號"), number, "the last order comes first");
const keys = values("select 採購單號 from 採購資料 where 類別='紙板' order by 製單時間,採購日期,採購單號");
const end = (key, text, what) => stops(() => s.press(key), "information", "訊息", text, what);
s.set("txt工單單號", "未存");
end("PageDown", "目前的資料錄位置在最後一筆!", "there is nothing behind the last order");
equal([s.status(2), s.status(4), s.get("txt工單單號"), s.modified], ["" + keys.length, "" + keys.length, "未存", true], "it stays on show with its typing");
s.press("PageUp");
equal([s.get("txt採購單號"), s.modified], [keys[keys.length - 2], false], "one back");
s.press("Ctrl+Home");
equal([s.get("txt採購單號"), s.status(2)], [keys[0], "1"], "the first");
end("PageUp", "目前的資料錄位置在第一筆!", "there is nothing before it");
s.toolbar("next");
equal(s.get("txt採購單號"), keys[1], "one on");
insert("採購資料", { 採購單號: "250303900", 類別: "紙板", 採購日期: "20250303", 審單: "N", 製單時間: "2025-03-03 09:00:00" });
s.toolbar("last");
equal(s.get("txt採購單號"), "250303900", "another user's order is among them");
db.execute("delete from 採購資料 where 採購單號='250303900'");
s.press("PageUp");
equal(s.get("txt採購單號"), number, "and one that is gone leaves its place");

// ---- quick find ----
const unfound = (text, told_) => stops(() => find(s, text), "warning", "提示", told_, "quick find of '" + text + "'");
const unknown = "查無此採購單,請確認輸入單號是否正確!";
s.set("txt工單單號", "未存");
unfound("  ", "速查單號為空,請輸入單號");
unfound(number.slice(0, 8), unknown);
unfound(value("select top 1 採購單號 from 採購資料 where 類別='物料'"), unknown);
equal([s.get("txt採購單號"), s.get("txt工單單號"), s.modified], [number, "未存", true], "what was typed is still there");
s.press("PageUp");
equal(s.get("txt採購單號"), keys[keys.length - 2], "and its place in the list");
s.set("txt速查單號", keys[5]);
s.click("scmd速查");
equal([s.get("txt採購單號"), s.status(2), s.get("txt速查單號")], [keys[5], "6", ""], "a number is found");

// ---- a family without any order ----
db.execute("delete from 採購資料 where 類別='凸版'");
const off = ["del", "save", "first", "print", "previous", "next", "last", "審單"];
const empty = doing => stops(doing, "information", "訊息", "資料庫無任何資料, 請先新增資料!", "a family without orders says so");
s = launch({ function: "凸版採購作業", user: "admin" });
empty(() => s.toolbar("edit"));
equal([off.filter(key => s.enabled("toolbar:" + key)), s.enabled("txt廠商代號")], [[], false], "there is nothing to be done with it; its fields are locked");
stops(() => s.click("sscmd申購單位"), "critical", "錯誤", "資材類別不能為空,確認后重新輸入!", "no requisition without a family");
s.press("F2");
s.click("scmd回前畫面_查詢");
equal([s.mode, off.filter(key => s.enabled("toolbar:" + key))], ["修改", []], "nor after a look at the search page");
for (const key of ["F8", "F3", "F1"]) s.press(key);
check(s.mode === "新增" && s.enabled("txt廠商代號") && s.enabled("toolbar:save"), "an order can be added");
db.execute("update 使用者明細 set 新增='' where 使用者='採購甲' and 模塊='frm紙板採購作業'");
empty(() => { s = launch({ function: "凸版採購作業", user: "採購甲" }); });
