// Blocks from a spreadsheet: the same limits, rights and rules as typing, no window and no message, one notice at the end.
clock("2025-03-03 08:30:00");
insert("採購計價公式", { 單位1: "", 單位2: "", 基本單位: "pcs", 計價單位: "令", 公式: "長*寬*單價*數量/(長-寬)", 序: 9, 類別: "紙板" });
[["2503030001", "Y"], ["2503030002", "N"]].forEach(([number, mark]) => requisition(number, "紙板", [{ 原料代號: "KMKB-02", 原料名稱: "KMK550B", 數量: "70" }], mark));
const job = one("select top 1 工單單號,客戶代號,備紙數 from 紙箱生產資料 where (完工<>'Y' or 完工 is null) and 工單單號 not in (select 印件編號 from 採購明細資料) order by 工單單號");
const s = launch({ function: "紙板採購作業", user: "採購甲" });
const g = s.grid("fml明細");
vendor(s, "V001");
const block = rows => rows.map(r => r.join("\t")).join("\r\n");
const red = (row, title) => g.colour(row, title) === "#ffd6d6";

// ---- a block from 代號 on; whatever is at fault is marked, the rest is taken
g.paste(1, "代號", block([
    ["kmkb-01", "牛卡", "自訂名", "120*90", "1,200", "16.5", "㎡", "", "20250401"],
    ["KMKB-02", "", "", "60*50", "１２", "", "㎡", "99", "20250402"],
    ["KMKC", "", "", "60*50", "5個", "-", "㎡", "", ""],
    ["KMKC-01", "", "", "90*90", "10", "2", "令", "", "很長的交期說明文字"]]));
equal(cells(g, 1, "代號", "廠商品名", "內部品名", "規格", "大紙數", "單價", "單位", "小計", "交貨日", "楞別", "走紙才", "未交數", "送清"),
    ["KMKB-01", "牛卡", "自訂名", "120*90", "1200", "16.5", "㎡", "21384", "20250401", "B", "120", "1200", "N"], "a code by exact match, a thousands separator, the amount by formula");
equal([cells(g, 2, "代號", "大紙數", "小計"), red(2, "小計"), red(2, "大紙數"), red(1, "大紙數")], [["KMKB-02", "12", "59.47"], true, false, false], "full-width digits; the amount is not for typing; what cannot go in is red");
equal([cells(g, 3, "代號", "規格", "大紙數", "單價", "單位"), ["代號", "大紙數", "單價", "規格"].map(t => red(3, t))], [["", "60*50", "", "", "㎡"], [true, true, true, false]], "no such code, no such numbers; each marked");
equal([cells(g, 4, "計價公式"), red(4, "小計")], [["計價公式: 90*90*2*10/(90-90)"], true], "a formula that fails marks its amount");
equal([s.notice(), messages(), g.lineCount, s.modified], ["已貼上 32 格,4 格有誤(紅底)", [], 4, true], "one notice; no message, no window");
equal([g.cell(4, "小計"), s.get("txt合計"), s.visible("pic產品視窗")], ["16.2", "21459.67", true], "an amount that could not be computed anew stays in the total; the stock figures follow the line under the cursor");
g.type(3, "大紙數", "5");
check(!red(3, "大紙數"), "typing clears the mark");

// ---- numbers that are none, limits and rights
[["=5"], ["1.2.3"], ["--1"], ["1 000"], ["1e3"], ["五"], ["1,234.5", "1234.5"], ["-3", "-3"], [".5", "0.5"], ["7.", "7"]].forEach(([text, number]) => {
    g.paste(1, "大紙數", text);
    equal([g.cell(1, "大紙數"), red(1, "大紙數")], [number || "1200", !number], "pasted as a number: " + text);
});
g.paste(1, "備註", "字".repeat(30));
equal([g.cell(1, "備註"), red(1, "備註"), messages()], ["字".repeat(25), true, []], "cut, marked, not spoken of");
g.paste(1, "已交數", "5\tx\ty");
equal([cells(g, 1, "已交數", "未交數", "送清"), s.notice()], [["", "7", "Y"], "已貼上 1 格,2 格有誤(紅底)"], "received and open quantities are not the buyer's to write");
for (const text of ["n", "好"]) {
    g.paste(1, "送清", text);
    equal([g.cell(1, "送清"), red(1, "送清")], ["N", text === "好"], "Y or N, in upper case");
}

// ---- quotes, line ends, a row that is missing, more rows than an empty grid has
g.paste(1, "備註", '"第一行\n第二行""引""號"\r\n5" 管\r\n"a\tb"');
equal([1, 2, 3].map(r => g.cell(r, "備註")), ['第一行 第二行"引"號', '5" 管', "a\tb"], "a quoted cell is one cell, and one line");
g.paste(7, "備註", "x\ny");
equal([g.cell(7, "備註"), s.notice(), g.lineCount], ["", "已貼上 0 格,2 列未貼上", 4], "no row is skipped");
g.paste(5, "備註", "a\n\nb");
equal([g.cell(5, "備註"), g.cell(7, "備註"), s.notice()], ["a", "", "已貼上 2 格,1 列未貼上"], "nor by a blank row in the block");
g.paste(5, "備註", Array.from({ length: 360 }, (_, i) => "第" + i).join("\n"));
equal([g.cell(364, "備註"), g.lineCount, s.notice()], ["第359", 364, "已貼上 360 格"], "the grid grows with its rows");

// ---- copied and pasted back
s.press("F1");
vendor(s, "V001");
g.paste(1, "代號", block([["KMKB-01", "牛卡", "自訂名", "120*90", "1200", "16.5", "㎡", "", "20250401", "B", "40*30", "外壓", "1*2", "", "", "", "", "", '"備\t註"']]));
equal([g.cell(1, "備註"), g.cell(1, "走紙才")], ["備\t註", "3"], "as pasted");
const whole = g.copy(1, "申購單號", 1, "備註");
equal(whole.split("\t").length, 24, "visible columns only, a tab inside a cell in quotes");
g.paste(2, "申購單號", whole);
equal([g.row(2), s.notice(), messages()], [g.row(1), "已貼上 23 格", []], "the same line again; no fault");

// ---- requisitions and work orders: what their windows would offer
g.paste(3, "申購單號", "2503030001\t\t\t\tKMKB-02");
equal([cells(g, 3, "申購單號", "代號"), s.notice()], [["2503030001", "KMKB-02"], "已貼上 5 格"], "an approved requisition");
for (const [title, text] of [["申購單號", "2503030002"], ["工單單號", "W000000000"]]) {
    g.paste(4, title, text);
    equal([g.cell(4, title), red(4, title)], ["", true], "one that is not approved, or not offered");
}
g.paste(4, "工單單號", job["工單單號"]);
equal(cells(g, 4, "工單單號", "客戶代號", "大紙數", "單位"), [job["工單單號"], job["客戶代號"], job["備紙數"], "PCS"], "a work order brings its line");
// Into an open cell the text goes as if it were typed.
g.enter(1, "大紙數"); s.type("7"); clipboard("8五9\n"); s.press("Ctrl+V"); s.press("Enter");
equal(g.cell(1, "大紙數"), "789", "through the cell's filter");
