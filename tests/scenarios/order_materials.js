// An order of materials and what the warehouse does to its lines while somebody has it open; an order of printing plates.
clock("2025-03-03 08:30:00");
let s = launch({ function: "物料採購作業", user: "採購甲" });
let g = s.grid("fml明細");
equal([s.title, s.items("Cbo類別"), s.status(4)], ["物料採購作業", ["物料"], String(count("採購資料", "類別='物料'"))], "the family's own orders");
equal(visibleTitles(g), ["申購單號", "代號", "原料名稱", "規格", "大紙數", "單價", "單位", "小計", "交貨日", "已交數", "未交數", "送清", "備註"], "columns of materials");

// ---- two lines of one vendor; a blank delivery date stays blank ----
vendor(s, "祈禾實業");
equal(texts(s, "txt廠商代號", "txt業務員代號", "lbl業務員名稱"), ["V013", "S03", "黃雅筑"], "a vendor by name, with the vendor's buyer");
// A fault in a hidden column chooses the row.
fill(g, 1, { 原料名稱: "樣品", 單位: "個" });
stops(() => s.press("F8"), "critical", "錯誤", "第1行明細「走紙才」不能為零!", "sheets are needed, though they are not shown");
equal([s.focused(), g.currentRow()], ["fml明細", 1], "the row is chosen");
g.key(1, "代號", "Ctrl+Delete");
const items = db.query("select top 2 物料代號,物料名稱,規格,單位,進料單位 from 物料資料 where 廠商代號='V013' order by 物料代號");
items.forEach((of, i) => {
    item(s, i + 1, of["物料代號"]);
    equal(cells(g, i + 1, "原料名稱", "規格", "單位").concat(g.currentTitle()), [of["物料名稱"], of["規格"], of["進料單位"], "規格"], "item " + (i + 1) + " brings name, size and unit");
    fill(g, i + 1, { 大紙數: String(40 + 20 * i), 單價: "12.5" });
});
g.type(1, "交貨日", "20250401");
s.click("scmd品質要求");
s.type("附 MSDS"); s.press("Enter"); s.type("逐桶標示");
s.click("Label19");
check(!s.visible("SSFrame1"), "the quality panel is closed again");
s.set("txt工單單號", "W-自用");
s.choose("cbo採購類別", "生產");
const n = saveNew(s);
const lines = () => db.query("select * from 採購明細資料 where 採購單號='" + n + "' order by 序");
const stored = (row, ...columns) => columns.map(c => lines()[row - 1][c]);
[["40", "500", "20250401"], ["60", "750", ""]].forEach(([quantity, amount, day], i) =>
    equal(stored(i + 1, "序", "原料代號", "廠商名稱", "原料名稱", "規格", "數量", "單價", "單位", "小計", "交貨日期", "寬剖", "小紙數", "未交數", "計價公式"),
        [i + 1, items[i]["物料代號"], items[i]["物料名稱"], items[i]["物料名稱"], items[i]["規格"], quantity, "12.5", items[i]["進料單位"], amount, day, "1", quantity, quantity,
         "無計價公式以單價*數量計算 " + quantity + "*12.5"], "line " + (i + 1) + " as stored"));
equal(one("select 類別,廠商代號,廠商簡稱,業務員代號,業務員名稱,幣別,採購類別,工單單號,合計,品質要求,製單人 from 採購資料 where 採購單號='" + n + "'"),
    { 類別: "物料", 廠商代號: "V013", 廠商簡稱: "祈禾實業", 業務員代號: "S03", 業務員名稱: "黃雅筑", 幣別: "台幣", 採購類別: "生產", 工單單號: "W-自用", 合計: "1250",
      品質要求: "附 MSDS\n逐桶標示", 製單人: "林佩珊" }, "the header as stored");

// ---- goods arrive while the order is open here ----
const arrives = (row, columns) => db.execute("update 採購明細資料 set " + columns + " where 採購單號='" + n + "' and 序=" + row);
arrives(1, "已入庫數='30',未交數='10',已檢驗數='31',檢驗合格數='30'");
g.type(2, "備註", "分批");
save(s);
equal([stored(1, "已入庫數", "未交數", "已檢驗數", "檢驗合格數", "送清"), cells(g, 1, "已交數", "未交數"), stored(2, "備註")], [["30", "10", "31", "30", "N"], ["30", "10"], ["分批"]],
    "what the warehouse wrote stays, and is shown");
for (const [quantity, open, mark] of [["30", "0", "Y"], ["31", "1", "N"]]) {
    g.type(1, "大紙數", quantity);
    equal(cells(g, 1, "未交數", "送清"), [open, mark], "the quantity closes and opens a received line: " + quantity);
}
// Closed by hand here, and on the other line by a receipt elsewhere.
g.enter(1, "送清");
equal(g.list(), ["N", "Y"], "the line's mark, its own first");
g.pick("Y");
arrives(2, "已入庫數='60',未交數='0',送清='Y'");
save(s);
equal([stored(1, "數量", "未交數", "送清"), stored(2, "未交數", "送清")], [["31", "1", "Y"], ["0", "Y"]], "both marks hold");
g.enter(2, "送清");
for (const key of ["Esc", "n", "Enter"]) s.press(key);
save(s);
equal(stored(2, "送清"), ["N"], "typed, in upper case: opened by hand");

// ---- the received quantity is the warehouse's; an administrator may put it right ----
g.enter(1, "已交數");
s.type("5"); s.press("Enter");
equal(g.cell(1, "已交數"), "30", "a buyer cannot type it");
s = openOrder("admin", n, "物料採購作業");
g = s.grid("fml明細");
arrives(1, "已入庫數='33'");
g.type(1, "已交數", "29");
equal(g.cell(1, "未交數"), "2", "ordered less received");
save(s);
equal(stored(1, "已入庫數", "未交數"), ["29", "2"], "a typed quantity is written, whatever is stored");
arrives(1, "已入庫數='31',未交數='0',送清='Y'");
g.type(1, "備註", "對帳");
save(s);
equal(stored(1, "已入庫數", "未交數", "送清", "備註"), ["31", "0", "Y", "對帳"], "typed once, the next save leaves it to the warehouse again");

// ---- plates: title, rights and grid of board, items and documents of their own ----
s = launch({ function: "凸版採購作業", user: "採購甲" });
g = s.grid("fml明細");
equal([s.title, s.items("Cbo類別"), s.status(4)], ["紙板採購作業", ["凸版"], String(count("採購資料", "類別='凸版'"))], "a new order of plates");
equal(visibleTitles(g), ["申購單號", "工單單號", "客戶", "料號", "代號", "廠商品名", "內部品名", "規格", "大紙數", "單價", "單位", "小計",
    "交貨日", "楞別", "剖切尺寸", "壓線種類", "壓線尺寸", "走紙才", "小紙數", "已交數", "未交數", "送清", "備註"], "columns as for board");
const plate = one("select top 1 * from 凸版主料資料 where 廠商代號='V038' order by 主料代號");
vendor(s, "V038");
item(s, 1, plate["主料代號"]);
equal(cells(g, 1, "代號", "廠商品名", "內部品名", "單位", "規格"), [plate["主料代號"], plate["主料名稱"], plate["主料名稱"], plate["進料單位"], ""], "the plate fills its line");
fill(g, 1, { 規格: "1030*800", 大紙數: "4", 單價: "501.25" });
equal(cells(g, 1, "小計", "計價公式"), ["2005", "無計價公式以單價*數量計算 4*501.25"], "no formula for plates");
equal(one("select 類別,合計 from 採購資料 where 採購單號='" + saveNew(s) + "'"), { 類別: "凸版", 合計: "2005" }, "the document bears its family");
equal(one("select 進價,幣別 from 凸版主料資料 where 主料代號='" + plate["主料代號"] + "'"), { 進價: "501.25", 幣別: "台幣" }, "the price goes back to the plate");
