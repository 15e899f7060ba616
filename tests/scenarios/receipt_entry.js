// Goods come in against an approved order: what they do to stock, order lines and bins, from the first save to the deletion.
clock("2025-03-03 08:30:00");
const line = (order, n) => Object.values(one("select 已入庫數, 未交數, 送清 from 採購明細資料 where 採購單號='" + order + "' and 序=" + n));
const Masters = { 物料: ["物料資料", "物料代號"], 紙板: ["浪紙資料", "浪紙代號"], 紙品: ["紙品資料", "紙品代號"], 凸版: ["凸版主料資料", "主料代號"] };
const stock = (family, code) => {
    const row = one("select * from " + Masters[family][0] + " where " + Masters[family][1] + "='" + code + "'");
    return [Number(row["庫存"]), row["異動日期"]];
};
const seller = value("select top 1 廠商代號 from 廠商資料 where 付款方式<>'現金' and 結帳日='25日結帳' order by 廠商代號");
const days = Number(value("select 付款天數 from 廠商資料 where 廠商代號='" + seller + "'"));
// An approved order of a family with two lines of 10 and 20, nothing received.
const order = (number, family, units) => {
    const [table, key] = Masters[family];
    const codes = values("select top 2 " + key + " from " + table + " order by " + key);
    insert("採購資料", { 採購單號: number, 類別: family, 採購日期: "20250228", 廠商代號: seller, 廠商簡稱: "", 審單: "Y", 幣別: "美金", 業務員代號: "S01" });
    codes.forEach((code, i) => insert("採購明細資料", { 採購單號: number, 序: i + 1, 原料代號: code, 原料名稱: "料" + i, 規格: "", 數量: 10 * (i + 1), 單價: "3", 單位: units,
        小計: "0", 寬剖: "4", 已入庫數: "0", 未交數: 10 * (i + 1), 送清: "N", 檢驗單號: "" }));
    return codes;
};
const fromVendor = s => {
    receivingVendor(s, seller);
    equal(s.get("txt廠商代號"), seller, "the vendor is taken");
};
const added = s => shows(() => s.press("F8"), [Added], "the receipt is saved");
const updated = s => shows(() => s.press("F8"), [Sure, Updated], "and saved again");
const reload = (s, answer) => shows(() => s.toolbar("reload"), [["question", "還原詢問", "確定要還原此筆資料?", answer]], "a reload asks");

// ---- materials: the whole order at once ----
const inks = order("250228901", "物料", "kg");
const before = inks.map(code => stock("物料", code)[0]);
const risen = () => inks.map((code, i) => stock("物料", code)[0] - before[i]);
let s = launch({ function: "物料入庫作業", user: "主管甲" });
const latest = value("select top 1 入庫單號 from 原料入庫資料 where 類別='物料' and 單別 not like '%退%' order by 製單時間 desc, 入庫日期 desc, 入庫單號 desc");
equal([s.title, s.mode, s.get("txt入庫單號")], ["物料入庫作業系統", "修改", latest], "the screen opens on the last receipt");
s.press("F1");
equal([s.mode, s.status(2), s.focused(), texts(s, "txt入庫日期", "Cbo單別", "Cbo倉別", "txt入庫單號")], ["新增", "新增中...", "txt入庫單號", ["20250303", "采購入庫", "", ""]],
    "a new receipt begins, with its defaults");
s.set("Cbo倉別", s.items("Cbo倉別")[1]);
const bin = s.get("Cbo倉別");
for (const [date, year, month] of [["20250326", 2025, 4], ["20251226", 2026, 1], ["20250303", 2025, 3]]) {
    s.set("txt入庫日期", date);
    fromVendor(s);
    const months = day => new Date(Date.UTC(year, month - 1, day)).toISOString().slice(0, 7).replace("-", "");
    equal(texts(s, "txt對帳日期", "txt付款年月"), [months(1), months(1 + days)], "the months follow the vendor's terms on " + date);
}
receivedOrder(s, "250228901");
let g = s.grid("fml明細");
equal([s.get("txt採購單號"), column(g, "數量"), g.cell(1, "單位#2") !== ""], ["250228901", ["10", "20"], true], "all that is open of the order comes in");
equal([s.get("cbo幣別"), cells(g, 1, "小計", "計價公式"), s.get("txt合計")], ["美金", ["30.00", "計價公式: 3*10"], "90.00"], "in its currency, and priced");
equal(["走紙才", "小紙數", "剖切尺寸"].filter(title => g.visible(title)), [], "materials show no sheets");
g.enter(1, "數量");
equal([s.visible("pic數量"), texts(s, "lbl應入數", "lbl未入數")], [true, ["10", "10"]], "ordered and open quantity stand below");
g.type(1, "備品", "1");
g.type(2, "數量", "5");
equal([g.cell(1, "備品"), g.cell(2, "數量"), s.get("txt合計")], ["1.0000", "5.0000", "45.00"], "what is typed counts");
added(s);
const number = s.get("txt入庫單號");
equal([s.mode, number, s.open, risen(), stock("物料", inks[0])[1]], ["修改", "2503030001", true, [11, 5], "20250303"], "the screen goes on with the saved receipt; stock rises by quantity and spares, with the day");
equal([s.visible("pic庫存"), parseFloat(s.get("lbl庫存").replace(/,/g, ""))], [true, stock("物料", inks[0])[0]], "the figures below the grid know it");
equal([line("250228901", 1), line("250228901", 2)], [["10", "0", "Y"], ["5", "15", "N"]], "the order knows what came");
equal(db.query("select 入庫數, 領料數, 儲位 from 原料板位明細 where 入庫單號='" + number + "' order by 原料代號").map(r => Object.values(r)),
    [["11", "0", bin], ["5", "0", bin]], "and the bins");
clean("after a receipt");

// ---- saved again as it is, down, up, out, too much ----
for (const [typed, rises, state] of [["", [11, 5], ["10", "0", "Y"]], ["6", [7, 5], ["6", "4", "N"]], ["10", [11, 5], ["10", "0", "Y"]], ["6", [7, 5], ["6", "4", "N"]]]) {
    if (typed) g.type(1, "數量", typed);
    shows(() => s.toolbar("save"), [Sure, Updated], "saved again with " + (typed || "nothing changed"));
    equal([s.open, risen(), line("250228901", 1), g.lineCount], [true, rises, state, 2], "both lines stand");
    clean("after an edit");
}
g.type(2, "數量", "21");
shows(() => s.press("F8"), [Sure, ["warning", "提示", "第2筆輸入的入庫數已大於採購數量,請重新輸入!"]], "more than ordered is refused");
equal([g.cell(2, "數量"), s.modified, line("250228901", 2)], ["21.0000", true, ["5", "15", "N"]], "and stays typed");
for (const [answer, shown, typed] of [["no", "21.0000", true], ["yes", "5", false]]) {
    reload(s, answer);
    equal([g.cell(2, "數量"), s.modified], [shown, typed], "a reload brings back what is stored: " + answer);
}
g.enter(2, "數量");
s.click("scmd刪除");
equal([g.lineCount, s.get("txt合計")], [1, "18.00"], "a line taken out lowers the total");
updated(s);
equal([risen(), line("250228901", 2)], [[7, 0], ["0", "20", "N"]], "and what it brought");
clean("without the line");

// ---- found again, and deleted ----
s.press("F2");
search(s, number);
equal(column(s.grid("MSHFlexGrid1"), "入庫數"), ["6"], "the search finds it");
s.press("Enter");
equal([s.mode, s.get("txt入庫單號")], ["修改", number], "and shows it");
stops(() => s.click("scmd速查"), "warning", "提示", "速查單號為空,請輸入單號", "an empty number is told");
s.set("txt速查單號", "X");
stops(() => s.click("scmd速查"), "warning", "提示", "查無此入庫單,請確認輸入單號是否正確!", "an unknown one too");
equal(s.get("txt入庫單號"), number, "and leaves the position");
shows(() => s.press("F3"), [DeleteSure, Deleted], "the receipt goes");
equal([risen(), line("250228901", 1), count("原料板位明細", "入庫單號='" + number + "'")], [[0, 0], ["0", "10", "N"], 0], "deletion undoes it all, bins too");
clean("after a deletion");

// ---- board, line by line ----
const boards = order("250228902", "紙板", "㎡");
const sheets = stock("紙板", boards[0])[0];
const unit = value("select 單位 from 浪紙資料 where 浪紙代號='" + boards[0] + "'");
insert("採購計價公式", { 單位1: "", 單位2: "", 基本單位: unit, 計價單位: "壞", 公式: "數量/(1-1)", 序: 99, 類別: "紙板" });
s = launch({ function: "浪紙入庫作業", user: "主管甲" });
equal(s.title, "原料入庫作業", "board has the designed title");
s.press("F1");
fromVendor(s);
g = s.grid("fml明細");
pick("frm採購輔助視窗");
g.type(1, "採購單號", "250228902");
equal([g.lineCount, s.get("cbo幣別"), cells(g, 1, "數量", "走紙才", "小紙數", "檢驗", "採購序")], [1, "美金", ["10", "4", "40", "N", "1"]], "one line comes with its sheets");
g.type(1, "數量", "3");
equal(g.cell(1, "小紙數"), "12", "small sheets follow");
const amount = g.cell(1, "小計");
g.type(1, "規格", "90*90");
onMessage("計算", "單價公式預設不正確！請處新設置！");
g.type(1, "單位", "壞");
equal([g.cell(1, "小計"), g.colour(1, "小計"), s.get("txt合計")], [amount, "#ffd6d6", amount], "a formula that cannot be computed is told; the amount stays");
g.type(1, "單位", "㎡");
check(g.colour(1, "小計") !== "#ffd6d6", "another unit, another formula");
added(s);
equal([stock("紙板", boards[0])[0] - sheets, line("250228902", 1)], [12, ["3", "7", "N"]], "board enters in pieces and counts in the order's unit");
clean("after board");
pick("frm採購輔助視窗", "Down");
g.type(2, "採購單號", "250228902");
updated(s);
equal([g.cell(2, "採購序"), line("250228902", 2)], ["2", ["20", "0", "Y"]], "a second line of the order is closed when all of it came");
clean("after a second line");
g.type(1, "走紙才", "5");
equal(g.cell(1, "小紙數"), "15", "other sheets");
fill(g, 1, { 小紙數: "11", 單價: "4" });
for (const act of [() => {}, updated, () => reload(s, "yes")]) {
    act(s);
    equal(g.cell(1, "小紙數"), "11", "what was counted is what lies there, whatever the price, and stored and read again");
}
approve(s, { key: "審核", others: [Updated] });
equal([stock("紙板", boards[0])[0] - sheets, line("250228902", 1)], [11, ["3", "7", "N"]], "and when it is approved");
clean("after a count by hand");

// ---- a board without an order, by its name and by its code ----
s.press("F1");
leave("frm原料輔助視窗");
g.type(1, "原料名稱", value("select top 1 浪紙名稱 from 浪紙資料 group by 浪紙名稱 having count(*)>1 order by 浪紙名稱"));
equal([g.lineCount, g.cell(1, "原料名稱")], [0, ""], "a name that several boards bear is asked for; left, it leaves the row empty");
g.type(1, "原料名稱", boards[1]);
const board = one("select 浪紙名稱, 單位 from 浪紙資料 where 浪紙代號='" + boards[1] + "'");
equal(cells(g, 1, "原料代號", "原料名稱", "單位", "單位#2", "走紙才"), [boards[1], board["浪紙名稱"], board["單位"], board["單位"], "1"], "a code is taken at once");

// ---- papers and plates move the order only, and have no closing ----
for (const [name, family, id] of [["紙品入庫作業", "紙品", "250228903"], ["凸版入庫作業", "凸版", "250228904"]]) {
    const codes = order(id, family, "張");
    const held = stock(family, codes[0])[0];
    s = launch({ function: name, user: "主管甲" });
    s.press("F1");
    fromVendor(s);
    equal(s.enabled("scmd採購單號"), family !== "凸版", "the order key on " + family);
    receivedOrder(s, id);
    const asks = ["critical", "錯誤", "無效的參數"];
    shows(() => s.press("F8"), [asks, Added], "a receipt of " + family);
    equal([line(id, 1), stock(family, codes[0])[0]], [["10", "0", "Y"], held], family + " changes the order, not the stock");
    s.grid("fml明細").enter(2, "數量");
    shows(() => s.click("scmd刪除"), [asks], "a line of it goes out");
    shows(() => s.press("F8"), [asks, Sure, Updated], "and is saved");
    equal(line(id, 2), ["0", "20", "N"], "which opens the order");
    approve(s, { key: "審核", others: [asks, Updated] });
    equal([s.visible("pic復核"), line(id, 1), stock(family, codes[0])[0]], [true, ["10", "0", "Y"], held], "its approval moves nothing");
    clean("after " + family);
}
