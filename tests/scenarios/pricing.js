// What a line costs on its screen: formulas, sheet counts, where a price comes from, in which currency, and where it goes; stock figures.
clock("2025-03-03 08:30:00");
insert("採購計價公式", { 單位1: "", 單位2: "", 基本單位: "pcs", 計價單位: "令", 公式: "長*寬*單價*數量/(長-寬)", 序: 9, 類別: "紙板" });
db.execute("update 採購計價公式 set 公式='長*寬*單價*數量/20000' where 類別='紙板' and 單位1='CM' and 計價單位='㎡'");
const board = code => one("select * from 浪紙資料 where 浪紙代號='" + code + "'");
const history = code => count("歷史單價記錄", "貨品代號='" + code + "'");
const past = (code, bought, date, price, currency) => insert("歷史單價記錄", { 類別: "紙板", 貨品代號: code, 添加日期: date, 單價: price, 幣別: currency, 廠商代號: bought });

const s = launch({ function: "紙板採購作業", user: "採購甲" });
const g = s.grid("fml明細");
vendor(s, "V001");
const unit = (row, u) => {
    g.enter(row, "單位");
    if (g.cell(row, "單位") !== u) g.pick(u); else s.press("Esc");
};

// ---- one line through the formulas ----
item(s, 1, "KMKB-01");
fill(g, 1, { 大紙數: "100", 單價: "10" });
[[" 12.5 * 9.25 ", "㎡", "11.56", "計價公式: 12.5*9.25*10*100/10000"],
 ["120CM*90cm", "㎡", "540", "計價公式: 120*90*10*100/20000"],
 ["120*90", "kg", "594", "計價公式: 120*90*550*10*100/10000000"],
 ["120*90", "pcs", "1000", "無計價公式以單價*數量計算 100*10"]].forEach(([size, u, amount, text]) => {
    // A new size counts when unit, price or quantity come next.
    g.type(1, "規格", size);
    unit(1, u === "pcs" ? "kg" : "pcs");
    unit(1, u);
    equal(cells(g, 1, "小計", "計價公式"), [amount, text], size + " by " + u);
});
g.enter(1, "小計");
equal(s.status(6), "無計價公式以單價*數量計算 100*10", "the status bar tells how the amount came about");

// ---- a formula that cannot be computed ----
g.type(1, "規格", "90*90");
onMessage("計算", "單價公式預設不正確！請處新設置！");
unit(1, "令");
equal([cells(g, 1, "小計", "計價公式"), g.colour(1, "小計"), s.get("txt合計")], [["1000", "計價公式: 90*90*10*100/(90-90)"], "#ffd6d6", "1000"],
    "told; amount and total stay, the cell is red");
unit(1, "㎡");
equal([g.cell(1, "小計"), g.colour(1, "小計") === "#ffd6d6"], ["810", false], "another unit, another formula, no longer red");
unit(1, "pcs");
fill(g, 1, { 大紙數: "-1", 單價: "1.00505" });
equal([cells(g, 1, "單價", "小計"), s.get("txt合計"), s.get("lbl合計金額")], [["1.0051", "-1.01"], "-1.01", "-1.01"], "a price is rounded, and then its amount");

// ---- sheets: from the first numbers of both sizes; the amount is another matter ----
g.type(1, "大紙數", "20");
const amount = g.cell(1, "小計");
fill(g, 1, { 規格: "120*90", 剖切尺寸: "約40" });
equal([cells(g, 1, "走紙才", "小紙數"), g.colour(1, "走紙才"), s.notice()], [["120", "2400"], "#ffd6d6", "第1行剖切尺寸沒有數字,走紙才以 120 計"],
    "a cut that does not begin with a number is red, and said in the status bar");
g.type(1, "走紙才", "5");
equal(cells(g, 1, "走紙才", "小紙數", "小計"), ["5", "100", amount], "typed by hand: small sheets follow, the amount does not");
g.type(1, "大紙數", "30");
equal(cells(g, 1, "走紙才", "小紙數"), ["5", "150"], "and they follow the quantity");

// ---- where a price comes from: this vendor's latest, else the master's ----
g.enter(1, "代號");
s.click("scmd刪除");
db.execute("delete from 歷史單價記錄 where 貨品代號 in ('KMKB-01','KMKB-03')");
past("KMKB-01", "V001", "20250201", "12", "台幣");
past("KMKB-03", "V002", "20250201", "77", "台幣");
["KMKB-01", "KMKB-03", "KMKC-01"].forEach((code, i) => {
    item(s, i + 1, code);
    fill(g, i + 1, { 規格: "10*10", 大紙數: "10" });
});
equal(column(g, "單價"), ["12", board("KMKB-03")["進價"], board("KMKC-01")["進價"]], "the latest of this vendor; what others ask does not count");

// ---- where a saved price goes: all boards of the name, and the history of each ----
unit(1, "kg");
g.type(1, "單價", "25.5");
g.type(2, "單價", "0");
const was = history("KMKB-04"), other = history("KMKC-01");
const goesBack = (price, unitOf, currency, rows, what) => {
    const b = board("KMKB-04");
    equal([b["進價"], b["進料單位"], b["幣別"], history("KMKB-04") - was], [price, unitOf, currency, rows], what);
};
const number = saveNew(s);
goesBack("25.5", "kg", "台幣", 1, "another board of the name");
equal(history("KMKC-01"), other, "a price that the master has already tells nothing new, nor does a price of nothing");
db.execute("update 浪紙資料 set 進價='26' where 浪紙名稱='KMK550B'");
g.type(1, "備註", "再存");
save(s);
goesBack("26", "kg", "台幣", 1, "saved again as it stands: the newer price of the master stays");
g.type(1, "單價", "27");
save(s);
goesBack("27", "kg", "台幣", 2, "a new price goes back again");
unit(1, "㎡");
save(s);
goesBack("27", "kg", "台幣", 2, "a new unit at the price of the master does not");
s.choose("cbo幣別", "美金");
save(s);
goesBack("27", "㎡", "美金", 3, "a new currency does");

// ---- stock figures of the line under the cursor, and the company's formula ----
db.execute("delete from 採購明細資料 where 原料代號='KMKB-05'");
db.execute("update 浪紙資料 set 庫存='1234.5',安全庫存='100' where 浪紙代號='KMKB-05'");
db.execute("update 浪紙資料 set 庫存='-99999',安全庫存='' where 浪紙代號='KMKC-03'");
for (const table of ["原料申購明細", "原料領料明細"]) db.execute("delete from " + table + " where 原料代號='KMKB-05'");
requisition("2503030001", "紙板", [{ 原料代號: "KMKB-05", 數量: "50", 已采購數: "20" }]);
[["N", "7"], ["Y", "900"]].forEach(([mark, quantity]) => {
    insert("原料領料資料", { 領料單號: "L" + mark, 類別: "紙板", 審單: mark });
    insert("原料領料明細", { 領料單號: "L" + mark, 序: 1, 原料代號: "KMKB-05", 實領數: quantity });
});
db.execute("update 採購明細資料 set 原料代號='KMKB-05',數量='40',已入庫數='30' where 採購單號='" + number + "' and 序=1");
const looks = (text, others = []) => {
    db.execute("update 公司基本資料 set 公式1='" + text + "'");
    const w = launch({ function: "紙板採購作業", user: "主管甲" });
    shows(() => find(w, number), others, "the formula '" + text + "'");
    return w;
};
const usual = looks("實際庫存+在單量-在領量-安全庫存");
equal(["lbl實際庫存", "lbl安全庫存", "lbl在單量", "LBL在產量", "Lbl可用庫存"].map(c => usual.get(c)), ["1,234.5 pcs", "100", "10", "7", "1,138"], "figures of an item");
equal(looks("實際庫存 * 2 + 申購量").get("Lbl可用庫存"), "2,500", "other words, blanks and all");
equal(looks("實際庫存+(", [["warning", "提示", "公式設置有問題，可用庫存已設為0"]]).get("Lbl可用庫存"), "無", "a faulty one is said, and counts nothing");
equal(looks("").get("Lbl可用庫存"), "無", "none");
item(s, 4, "KMKC-03");
equal([s.get("lbl安全庫存"), s.get("Lbl可用庫存")], ["未設置", "無"], "no safety stock set, nothing free");
g.enter(5, "備註");
check(!s.visible("pic產品視窗"), "no figures without an item");

// ---- prices come into the document's currency, at the document's date ----
insert("物料資料", { 物料代號: "QU1", 物料名稱: "QU1", 規格: "1", 進價: "10", 幣別: "美金", 單位: "kg", 進料單位: "kg" },
    { 物料代號: "QT1", 物料名稱: "QT1", 規格: "1", 進價: "10", 幣別: "台幣", 單位: "kg", 進料單位: "kg" });
past("QT1", "V013", "20240901", "2", "港幣");
const rate = (currency, date) => Number(value("select top 1 匯率 from 匯率修改記錄 where 幣別='" + currency + "' and 修改日期<'" + date + "' order by 修改日期 desc"));
check(rate("美金", "20241001") !== rate("美金", "20241002"), "the dollar's rate changed on the first of October");
const shown = x => rule.numberText(Number(rule.format(x, "0.000000")));
const m = launch({ function: "物料採購作業", user: "採購甲" });
const lines = m.grid("fml明細");
vendor(m, "V013");
[["20241001", "台幣", 10 * rate("美金", "20241001")], ["20241002", "台幣", 10 * rate("美金", "20241002")], ["20241002", "港幣", 10 * rate("美金", "20241002") / 4.17]].forEach(([date, currency, price], i) => {
    m.choose("cbo幣別", currency);
    m.set("txt採購日期", date);
    item(m, i + 1, "QU1");
    equal(lines.cell(i + 1, "單價"), shown(price), "a dollar price in " + currency + " on " + date);
});
requisition("2503030009", "物料", [["QU1", "4"], ["QT1", "5"], ["沒有", "5"]].map(([code, n]) => ({ 原料代號: code, 原料名稱: code, 規格: "1", 數量: n, 單位: "kg" })));
m.choose("cbo幣別", "台幣");
pick("frm採購輔助視窗_請購單");
enter(m, "txt申購單位", "2503030009");
const expected = [shown(10 * rate("美金", "20241002")), shown(2 * rate("港幣", "20241002")), "0"];
equal([column(lines, "代號"), column(lines, "單價")], [["QU1", "QT1", "沒有"], expected], "a requisition's prices converted, the vendor's last one from the currency it was paid in");
equal(values("select 單價 from 採購明細資料 where 採購單號='" + saveNew(m) + "' order by 序"), expected, "stored with all their decimals");
