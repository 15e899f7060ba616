// An order of printing plates: title, rights and grid of board, items and documents of its own family.
clock("2025-03-03 08:30:00");
const s = launch({ function: "凸版採購作業", user: "採購甲" });
const g = s.grid("fml明細");
const count = family => db.query("select count(*) as n from 採購資料 where 類別='" + family + "'")[0].n;
const plates = count("凸版");
equal([s.title, s.mode, s.items("Cbo類別"), s.status(4)], ["紙板採購作業", "新增", ["凸版"], String(plates)], "a new order of plates");
equal(g.titles.filter(t => g.visible(t)), ["申購單號", "工單單號", "客戶", "料號", "代號", "廠商品名", "內部品名", "規格", "大紙數", "單價", "單位", "小計",
    "交貨日", "楞別", "剖切尺寸", "壓線種類", "壓線尺寸", "走紙才", "小紙數", "已交數", "未交數", "送清", "備註"], "columns as for board");

const plate = db.query("select top 1 * from 凸版主料資料 where 廠商代號='V038' order by 主料代號")[0];
const history = () => db.query("select count(*) as n from 歷史單價記錄 where 貨品代號='" + plate["主料代號"] + "'")[0].n;
const before = history();
s.type("V038"); s.press("Enter");
check(s.get("lbl廠商簡稱") !== "", "the vendor is found");
// By the window: one item family, whatever it is called elsewhere.
onWindow("frm原料輔助視窗_採購", w => {
    const rows = w.grid("MSHFlexGrid1");
    equal(rows.titles, ["主料代號", "主料名稱", "規格", "庫存", "進料單位", "進價", "幣別", "類別", "楞別"], "plates in the window");
    equal(rows.lineCount, db.query("select count(*) as n from 凸版主料資料")[0].n, "all of them");
    w.press("Down"); w.press("Enter");
});
g.enter(1, "代號"); s.press("F9");
onWindow("frm原料輔助視窗_採購", w => w.press("Enter"));
g.type(1, "代號", plate["主料代號"]);
equal([g.cell(1, "代號"), g.cell(1, "廠商品名"), g.cell(1, "內部品名"), g.cell(1, "單位"), g.cell(1, "規格")],
    [plate["主料代號"], plate["主料名稱"], plate["主料名稱"], plate["進料單位"], ""], "the plate fills its line");
s.type("1030*800"); s.press("Enter");
s.type("4"); s.press("Enter");
s.type("501.25"); s.press("Enter");
equal([g.cell(1, "小計"), g.cell(1, "計價公式")], ["2005", "無計價公式以單價*數量計算 4*501.25"], "no formula for plates");
s.press("F8");
const n = s.get("txt採購單號");
equal(db.query("select 類別,合計 from 採購資料 where 採購單號='" + n + "'")[0], { 類別: "凸版", 合計: "2005" }, "the document bears its family");
equal(db.query("select 進價,進料單位,幣別 from 凸版主料資料 where 主料代號='" + plate["主料代號"] + "'")[0], { 進價: "501.25", 進料單位: plate["進料單位"], 幣別: "台幣" },
    "the price goes back to the plate");
equal(history(), before + 1, "and into its history");

// ---- latest, navigation, quick find and search know plates only
equal([s.status(2), s.status(4)], [String(plates + 1), String(plates + 1)], "the latest of its family");
s.press("PageUp");
equal(db.query("select 類別 from 採購資料 where 採購單號='" + s.get("txt採購單號") + "'")[0]["類別"], "凸版", "the one before it");
s.press("Ctrl+End");
equal(s.get("txt採購單號"), n, "the last");
const board = db.query("select top 1 採購單號 from 採購資料 where 類別='紙板'")[0]["採購單號"];
onMessage("提示", "查無此採購單,請確認輸入單號是否正確!");
s.set("txt速查單號", board); s.press("Enter");
onMessage("提示", "速查單號為空,請輸入單號");
s.set("txt速查單號", ""); s.click("scmd速查");
s.set("txt速查單號", n); s.press("Enter");
equal([s.get("txt採購單號"), s.get("txt速查單號")], [n, ""], "found");
s.press("F2");
s.click("scmd查詢條件"); s.set("txt查詢內容(0)", ""); s.set("txt查詢內容(2)", "20240101"); s.press("Enter");
equal(s.grid("MSHFlexGrid1").lineCount, db.query("select count(*) as n from 採購資料 a inner join 採購明細資料 b on a.採購單號=b.採購單號 where a.類別='凸版' and a.採購日期 between '20240101' and '20250303'")[0].n,
    "the search lists lines of plates");
s.click("scmd回前畫面_查詢");

// ---- a requisition of plates is loaded whole
db.execute("insert into 原料申購資料 (申購單號,類別,申購日期,審單) values ('2503030001','凸版','20250303','Y')");
db.execute("insert into 原料申購明細 (申購單號,序,原料代號,原料名稱,規格,數量,單位,已采購數,需求日期) values ('2503030001',1,'" + plate["主料代號"] + "','" + plate["主料名稱"] + "','1030*800','6','片','2','20250401')");
s.press("F1");
s.type("V038"); s.press("Enter");
onWindow("frm採購輔助視窗_請購單", w => { equal(w.grid("MSHFlexGrid1").cell(1, "未採購數"), "4", "what is still to be ordered"); w.press("Enter"); });
s.set("txt申購單位", "250303"); s.press("Enter");
equal([s.get("txt申購單位"), g.lineCount, g.cell(1, "大紙數"), g.cell(1, "單價"), g.cell(1, "小計")], ["2503030001", 1, "6", "501.25", "3007.5"], "its full quantity, at the price just paid");
