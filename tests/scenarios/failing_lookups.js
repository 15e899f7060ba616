// Every database call of looking something up fails once: the user reads why under the operation's title, and goes on.
clock("2025-03-03 08:30:00");
let struck = 0;
const fails = (what, titles, doing, after = () => {}) => {
    const calls = strike(doing, (n, faults) => {
        equal(faults.map(m => m.title).filter(t => !titles.includes(t)), [], what + ", call " + n + ": under its title");
        check(faults[0].text === "資料庫呼叫失敗(測試)!", what + ", call " + n + ": with the reason");
        after(n);
    });
    check(calls > 0, what + ": there was something to fail");
    struck += calls;
};

// ---- an order's look-ups ----
const s = launch({ function: "紙板採購作業", user: "主管甲" });
const kept = () => equal([s.open, s.mode, s.get("txt工單單號"), s.modified], [true, "新增", "未存", true], "what was typed is still there");
s.set("txt工單單號", "未存");
fails("vendor", ["依廠商代號取得廠商資料錯誤"], () => vendor(s, "V001"), kept);
const window = (name, button) => {
    pick(name);
    s.click(button);
};
fails("vendor window", ["取得所有廠商資料錯誤", "依廠商代號取得廠商資料錯誤"], () => window("frm廠商輔助畫面", "scmd廠商代號"), kept);
fails("buyer", ["依業務代號取得業務資料錯誤"], () => enter(s, "txt業務員代號", "S02"), kept);
equal(texts(s, "lbl廠商簡稱", "lbl業務員名稱"), ["岱峻紙板", "陳柏宇"], "vendor and buyer are found in the end");
fails("buyer window", ["取得所有業務資料錯誤"], () => window("frm業務輔助視窗", "scmd業務員"), kept);
const g = s.grid("fml明細");
g.type(1, "規格", "120*90");
const Lines = ["取得原料資料錯誤", "取得庫存資料錯誤", "取得輔助資料錯誤"];
fails("item window", Lines, () => { pick("frm原料輔助視窗_採購"); g.key(1, "代號", "F9"); }, kept);
fails("price of a line", Lines, () => { g.type(1, "大紙數", "5"); g.type(1, "大紙數", "6"); }, kept);
fails("stock figures", Lines, () => { g.enter(2, "備註"); g.enter(1, "備註"); }, kept);
equal(cells(g, 1, "規格", "大紙數"), ["120*90", "6"], "the line is whole");
fails("quick find", ["取得所有採購單號錯誤"], () => { onMessage("提示", "*"); find(s, "000000000"); }, () => {
    // Whether there is such a number was not learned, so nothing says that there is none: the next attempt does.
    s.press("Enter");
    kept();
});

// ---- what a document takes from another ----
const need = value("select top 1 原料申購資料.申購單號 from 原料申購資料 inner join 原料申購明細 on 原料申購資料.申購單號=原料申購明細.申購單號 " +
    "where 類別='紙板' and 審單='Y' and cast(數量 as float)>cast(已采購數 as float) order by 原料申購資料.申購單號 desc");
fails("requisition into an order", ["取得申購單資料錯誤", "取得幣別資料錯誤", ...Lines], () => {
    pick("frm採購輔助視窗_請購單");
    enter(s, "txt申購單位", need);
}, kept);
check(g.lineCount > 0 && g.cell(1, "申購單號") === s.get("txt申購單位"), "its lines come in the end");

// ---- the search page ----
const list = ["開始查詢錯誤", "取得印表時間錯誤"];
fails("search", list, () => s.press("F2"), () => equal(s.mode, "查詢", "the page is there"));
fails("search again", list, () => { s.click("scmd查詢條件"); s.set("txt查詢內容(2)", "20240101"); search(s); });
equal([s.grid("MSHFlexGrid1").lineCount > 0, s.get("txt查詢內容(3)")], [true, "20250303"], "the list is shown in the end, the dates are filled");
s.click("scmd回前畫面_查詢");
kept();

// ---- records ----
const Record = ["取得所有採購單號錯誤", "顯示資料錯誤", "錯誤", "取得庫存資料錯誤", "取得幣別資料錯誤"];
s.toolbar("edit");
const last = s.get("txt採購單號");
fails("previous record", Record, () => s.press("PageUp"), () => { check(s.open && s.mode === "修改", "the screen stays"); s.press("Ctrl+End"); });
check(s.get("txt採購單號") !== last && s.enabled("txt廠商代號"), "the record before is shown in the end");
fails("edit", Record, () => s.toolbar("edit"));
equal([s.get("txt採購單號"), s.enabled("txt廠商代號"), s.enabled("toolbar:save")], [last, true, true], "and the last one again");
fails("history", ["顯示資料錯誤"], () => { leave("frm系統修改明細"); s.panel(8); });
fails("approver", ["依業務代號取得業務資料錯誤"], () => {
    onWindow("frm單據審核", w => { enter(w, "lbl業務員名稱", "林佩珊"); check(w.open, "the dialog stays open"); w.click("scmd取消"); });
    s.toolbar("審單");
});

// ---- a receipt and a requisition ----
const r = launch({ function: "物料入庫作業", user: "主管甲" });
r.press("F1");
pick("frm廠商輔助視窗_驗收");
r.click("scmd廠商代號");
fails("order into a receipt", ["取得採購單資料錯誤", ...Lines], () => { pick("frm採購輔助視窗"); r.click("scmd採購單號"); });
check(r.grid("fml明細").lineCount > 0, "its lines come in the end");
const q = launch({ function: "資材申購作業", user: "主管甲" });
q.set("txt備注", "未存");
fails("departments", ["取得所有片語資料錯誤"], () => { pick("frm片語輔助視窗"); q.click("scmd申購單位"); });
fails("number of a requisition", ["取得申購單號流水號錯誤", "儲存錯誤", "取得所有申購單號錯誤", "顯示資料錯誤", "錯誤"], () => q.press("F8"),
    () => equal([q.open, q.get("txt備注")], [true, "未存"], "what was typed is still there"));

// ---- formulas ----
const f = launch({ function: "原料計價公式", user: "admin" });
const formulas = f.grid("fml明細"), rows = formulas.lineCount;
fails("formulas", ["顯示資料錯誤"], () => { f.choose("sopt類別(0)"); f.choose("sopt類別(1)"); });
equal(formulas.lineCount, rows, "they are shown in the end");
const stored = () => JSON.stringify(db.query("select * from 採購計價公式 order by 類別,序"));
const before = stored();
formulas.type(1, "計算公式", "單價*數量*2");
const calls = strike(() => f.press("F8"), (n, faults) =>
    equal([faults[0].title, faults[0].text, stored(), formulas.cell(1, "計算公式"), f.modified],
        ["儲存錯誤", "保存失敗，請檢查公式設置是否有重複項", before, "單價*數量*2", true], "saving formulas, call " + n));
check(calls > 5 && stored() !== before, "they are saved in the end");
note("calls struck: " + (struck + calls));
