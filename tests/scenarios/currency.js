// Prices come into the document's currency at the document's date, by the rate that held before that day.
clock("2025-03-03 08:30:00");
const item = (code, price, currency) => db.execute("insert into 物料資料 (物料代號,物料名稱,規格,進價,幣別,單位,進料單位) values ('" + [code, code, "1", price, currency, "kg", "kg"].join("','") + "')");
item("QU1", "10", "美金"); item("QU2", "0.1234567", "美金"); item("QE1", "8", "歐元"); item("QT1", "10", "台幣"); item("QN1", "7", ""); item("QX1", "3", "盾"); item("QZ1", "5", "零幣");
db.execute("insert into 匯率檔 (幣別,匯率,默認幣別) values ('歐元','35','N'),('零幣','0','N')");
db.execute("insert into 匯率修改記錄 (幣別,匯率,修改日期) values ('零幣','0','20240101')");
db.execute("insert into 匯率修改記錄 (材質名稱,匯率,修改日期) values ('K','0.5','20240101')");
const rate = (currency, date) => Number(db.query("select top 1 匯率 from 匯率修改記錄 where 幣別='" + currency + "' and 修改日期<'" + date + "' order by 修改日期 desc")[0]["匯率"]);
check(rate("美金", "20241001") !== rate("美金", "20241002"), "the dollar's rate changed on the first of October");

const s = launch({ function: "物料採購作業", user: "採購甲" });
const g = s.grid("fml明細");
s.type("V013"); s.press("Enter");
let row = 0;
const price = (code, currency, date) => {
    s.choose("cbo幣別", currency); s.set("txt採購日期", date);
    onWindow("frm原料輔助視窗_採購", w => w.press("Enter"));
    g.type(++row, "代號", code);
    return g.cell(row, "單價");
};
const shown = x => rule.numberText(Number(rule.format(x, "0.000000")));
equal(price("QU1", "台幣", "20241001"), shown(10 * rate("美金", "20241001")), "a change on the day itself does not count yet");
equal(price("QU1", "台幣", "20241002"), shown(10 * rate("美金", "20241002")), "the day after it does");
equal(price("QU1", "港幣", "20241002"), shown(10 * rate("美金", "20241002") / 4.17), "into another currency at its rate of today");
equal(price("QU2", "美金", "20241002"), "0.1234567", "the same currency: untouched");
equal(price("QU2", "台幣", "20230801"), "0.123457", "before all history the rate is one; six decimals");
equal(price("QE1", "台幣", "20241002"), "8", "no history: one, whatever today's rate is");
equal(price("QT1", "", "20241002"), "10", "no currency on the document: the base currency");
equal(price("QU1", "", "20241002"), shown(10 * rate("美金", "20241002")), "into the base currency");
equal(price("QT1", "歐元", "20241002"), shown(10 / 35), "from the base currency");
equal(price("QN1", "台幣", "20241002"), "7", "an item without a currency: one, and not the net weight of some material");
equal(price("QX1", "台幣", "20241002"), "3", "an unknown currency: one");
equal(price("QZ1", "台幣", "20241002"), "5", "a rate of nothing counts as one");
equal(price("QT1", "零幣", "20241002"), "10", "on the other side too");

// ---- the vendor's last price in a currency of its own
db.execute("insert into 歷史單價記錄 (類別,貨品代號,添加日期,單價,幣別,廠商代號) values ('物料','QT1','20250301','2','港幣','V013')");
equal(price("QT1", "台幣", "20250303"), shown(2 * rate("港幣", "20250303")), "converted from the currency it was paid in");

// ---- lines of a requisition, by button and by Enter
db.execute("insert into 原料申購資料 (申購單號,類別,申購日期,審單) values ('2503030009','物料','20250303','Y')");
db.execute("insert into 原料申購明細 (申購單號,序,原料代號,原料名稱,規格,數量,單位,已采購數) values ('2503030009',1,'QU1','QU1','1','4','kg','0'),('2503030009',2,'QT1','QT1','1','5','kg','0'),('2503030009',3,'沒有','名稱','1','5','kg','0')");
const expected = [["QU1", shown(10 * rate("美金", "20241001"))], ["QT1", shown(2 * rate("港幣", "20241001"))], ["沒有", "0"]];
s.choose("cbo幣別", "台幣"); s.set("txt採購日期", "20241001");
["Enter", "button"].forEach(way => {
    onWindow("frm採購輔助視窗_請購單", w => w.press("Enter"));
    s.set("txt申購單位", "2503030009");
    if (way === "Enter") s.press("Enter"); else s.click("sscmd申購單位");
    equal([1, 2, 3].map(i => [g.cell(i, "代號"), g.cell(i, "單價")]), expected, "all prices converted, loaded by " + way);
});
const total = Number(rule.format(4 * expected[0][1], "0.00")) + Number(rule.format(5 * expected[1][1], "0.00"));
equal(s.get("txt合計"), rule.numberText(Number(rule.format(total, "0.00"))), "and the total with them");
// The price is stored in the document's currency, with all its decimals.
s.press("F8");
equal(db.query("select 單價 from 採購明細資料 where 採購單號='" + s.get("txt採購單號") + "' order by 序").map(r => r["單價"]), expected.map(e => e[1]), "as stored");
