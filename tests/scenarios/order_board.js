// A board order, with the keyboard alone: entered, saved, saved again. What stands in the tables is compared row by row.
clock("2025-03-03 08:30:00");
const s = launch({ function: "紙板採購作業", user: "採購甲" });
const g = s.grid("fml明細");
const header = () => one("select * from 採購資料 where 採購單號='250303001'");
const lines = () => db.query("select * from 採購明細資料 where 採購單號='250303001' order by 序");
const total = count("採購資料", "類別='紙板'");

// ---- a new order as it opens
equal([s.title, s.mode, s.focused(), [1, 2, 3, 4].map(i => s.status(i))], ["紙板採購作業", "新增", "txt廠商代號", ["目前筆數", "新增中....", "總筆數", String(total)]], "opens for adding, on the vendor; status panels");
equal([s.items("Cbo類別"), s.items("cbo採購類別"), s.get("cbo採購類別"), s.items("cbo幣別")], [["紙板"], ["庫存", "生產"], "庫存", [""].concat(values("select 幣別 from 匯率檔 order by 幣別"))], "one family, two purposes; currencies");
equal([s.get("txt採購日期"), s.get("txt業務員代號"), s.get("lbl業務員名稱")], ["20250303", "S01", "林佩珊"], "date and buyer");
equal([s.get("txt採購單號"), s.enabled("txt採購單號"), s.locked("txt合計"), s.locked("cbo幣別")], ["", false, true, false], "locks");
const on = ["add", "edit", "del", "search", "save", "first", "previous", "next", "last", "審單", "print", "exit"].filter(k => s.enabled("toolbar:" + k));
equal([on, s.visible("toolbar:審單"), s.visible("toolbar:整批審單"), s.visible("pic審單")], [["add", "edit", "search", "save", "print", "exit"], true, false, false], "toolbar of a new order; approval");
equal(g.titles, ["申購單號", "工單單號", "客戶代號", "客戶", "紙箱代號", "料號", "代號", "廠商品名", "內部品名", "規格", "大紙數", "單價", "單位", "小計",
    "交貨日", "楞別", "剖切尺寸", "壓線種類", "壓線尺寸", "走紙才", "小紙數", "原單價", "原小計", "已交數", "未交數", "送清", "計價公式", "備註", "採購序",
    "已檢驗數", "檢驗合格數", "採購單號"], "titles in order");
equal(g.titles.filter(t => !g.visible(t)), ["客戶代號", "紙箱代號", "原單價", "原小計", "計價公式", "採購序", "已檢驗數", "檢驗合格數", "採購單號"], "hidden columns");

// ---- Enter leads from the vendor through the header to the lines
s.type("v001");
s.press("Enter");
equal([s.focused(), s.get("txt廠商代號"), s.get("lbl廠商簡稱"), s.get("cbo幣別"), s.get("Lbl分數"), s.get("chk稅")],
    ["txt採購日期", "V001", "岱峻紙板", "台幣", "100", "1"], "the vendor comes with all that the order takes from him");
check(s.visible("pic經驗") && s.get("txt經驗傳承") !== "", "what is known of the vendor comes up, without the focus");
const way = [];
for (let i = 0; i < 8; i++) { s.press("Enter"); way.push(s.focused()); }
equal(way, ["Cbo類別", "cbo採購類別", "txt廠商代號", "cbo幣別", "txt業務員代號", "txt申購單位", "txt工單單號", "fml明細"], "Enter goes on as Tab");
check(!s.visible("pic經驗"), "the vendor's panel goes when the grid is entered");
for (const inGrid of [false, true]) {
    s.press("F6");
    equal(s.focused() === "fml明細", inGrid, "F6 to the header and back");
}

// ---- the first line: arrows and Tab go cell by cell, Enter from entry to entry
while (g.currentTitle() !== "代號") s.press("Right");
equal([g.currentRow(), g.currentTitle(), s.enabled("scmd輔助")], [1, "代號", true], "arrows reach the code");
pick("frm原料輔助視窗_採購");
s.type("kmkb-05");
s.press("Enter");
equal(cells(g, 1, "代號", "內部品名", "廠商品名", "楞別", "單位", "走紙才", "送清"), ["KMKB-05", "KMK550B", "牛1瓦1牛1乙1", "B", "㎡", "1", "N"], "the item fills its line");
equal([g.currentTitle(), g.lineCount, s.modified], ["規格", 1, true], "and the cursor goes on");
s.type("110cm*90cm"); s.press("Enter");
s.type("200"); s.press("Enter");
equal([g.currentTitle(), s.visible("pic提示")], ["單價", true], "hint beside the price");
s.type("16.5"); s.press("Enter");
equal([g.currentTitle(), s.focused(), g.list()], ["單位", "fml明細清單", ["㎡", "pcs", "kg", "令", "片", "個", "卷", "桶"]], "units in the cell's list, its own first");
s.press("Esc");
equal([s.open, g.list(), s.focused()], [true, [], "fml明細"], "Esc closes the list only");
s.press("Left"); s.press("Right");
s.press("Enter");
equal(g.currentTitle(), "交貨日", "Enter takes the list's item and goes on");
s.type("20250320"); s.press("Enter");
equal([g.currentRow(), g.currentTitle()], [2, "代號"], "from the last entry column to the first of the next row");
equal([cells(g, 1, "計價公式", "小計", "走紙才", "小紙數", "未交數"), s.get("txt合計"), s.get("lbl合計金額")],
    [["計價公式: 110*90*16.5*200/10000", "3267", "110", "22000", "200"], "3267", "3,267.00"], "priced by area, the size carries its units");

// ---- the second by F9, the third with F7 from above
onWindow("frm原料輔助視窗_採購", w => { w.type("KMKC-01"); w.press("Enter"); w.press("Enter"); });
s.press("F9");
equal([g.cell(2, "代號"), g.currentTitle()], ["KMKC-01", "規格"], "F9 opens the pick of the column");
s.press("F7");
equal(g.cell(2, "規格"), "110cm*90cm", "F7 takes the cell from above");
s.press("Tab"); s.type("50"); s.press("Tab"); s.press("Tab"); s.press("Tab"); s.press("Tab");
equal([g.cell(2, "大紙數"), g.currentTitle()], ["50", "交貨日"], "Tab goes cell by cell");
while (g.currentTitle() !== "剖切尺寸") s.press("Tab");
s.type("30*20"); s.press("Tab");
equal([g.cell(2, "走紙才"), g.cell(2, "小紙數")], ["3", "150"], "sheets across from the sizes");
while (g.currentTitle() !== "備註") s.press("Tab");
s.type("急件"); s.press("Enter");
equal([g.currentRow(), g.currentTitle()], [3, "代號"], "Enter behind the last entry column");
pick("frm原料輔助視窗_採購");
s.type("KMKB-01"); s.press("Enter");
s.type("70*150"); s.press("Enter");
s.type("100"); s.press("Enter");

// ---- F8 saves and stays
s.press("F8");
equal([s.mode, s.get("txt採購單號"), s.locked("txt採購單號"), s.modified, s.open], ["修改", "250303001", true, false, true], "F8 goes on with the saved order");
equal([s.notice(), s.status(2), s.status(4)], ["已儲存 250303001", String(total + 1), String(total + 1)], "the notice names the number; it is the last");
equal(header(), { 採購單號: "250303001", 類別: "紙板", 採購日期: "20250303", 廠商代號: "V001", 廠商簡稱: "岱峻紙板", 業務員代號: "S01",
    業務員名稱: "林佩珊", 幣別: "台幣", 採購類別: "庫存", 工單單號: "", 合計: header()["合計"], 申購單位: "", 審單: "N", 審單人: "", 審單日期: "",
    品質要求: "", 製單人: "林佩珊", 製單時間: "2025-03-03 08:30:00", 修改人: "", 修改時間: "", 轉稅: "", 審核: 0, 審核人: "", 核准: 0, 核准人: "", 發票號碼: "" },
    "the header as stored");
const first = lines();
equal(first[0], { 序: 1, 請購單號: "", 印件編號: "", 客戶代號: "", 客戶簡稱: "", 紙箱代號: "", 料號: "", 原料代號: "KMKB-05", 廠商名稱: "牛1瓦1牛1乙1",
    原料名稱: "KMK550B", 規格: "110cm*90cm", 數量: "200", 單價: "16.5", 單位: "㎡", 小計: "3267", 交貨日期: "20250320", 楞別: "B", 剖切尺寸: "", 壓線種類: "",
    壓線尺寸: "", 寬剖: "110", 小紙數: "22000", 已入庫數: "0", 未交數: "200", 送清: "N", 計價公式: "計價公式: 110*90*16.5*200/10000", 備註: "", 已檢驗數: "0",
    檢驗合格數: "0", 檢驗單號: "", 採購單號: "250303001", 驗收數: 0 }, "a line as stored");
equal(first.slice(1).map(l => ["序", "原料代號", "數量", "未交數", "交貨日期", "剖切尺寸", "寬剖", "小紙數", "備註"].map(c => l[c])), [
    [2, "KMKC-01", "50", "50", "20250320", "30*20", "3", "150", "急件"], [3, "KMKB-01", "100", "100", "20250320", "", "70", "7000", ""]],
    "blank delivery dates take the first line's");
equal(header()["合計"], String(Math.round(first.reduce((sum, l) => sum + Number(l["小計"]) * 100, 0)) / 100), "the total is the sum of its lines");

// ---- saved again: lines keep their number whatever happened to their neighbours, new ones stand above all
clock("2025-03-03 09:15:00");
g.enter(2, "代號");
s.click("scmd刪除");
equal([g.lineCount, g.cell(2, "代號"), s.modified], [2, "KMKB-01", true], "a line deleted in between");
item(s, 3, "KMKE-01");
s.type("100*60"); s.press("Enter");
s.type("10"); s.press("Enter");
save(s);
const second = lines();
equal(second.map(l => [l["序"], l["原料代號"]]), [[1, "KMKB-05"], [3, "KMKB-01"], [4, "KMKE-01"]], "numbers kept, the new one above the highest");
equal([second[0], second[1]], [first[0], first[2]], "kept lines are what they were");
equal(["製單人", "製單時間", "修改人", "修改時間"].map(c => header()[c]), ["林佩珊", "2025-03-03 08:30:00", "林佩珊", "2025-03-03 09:15:00"], "made once, changed now");
