// Goods come in against an approved order: what they do to stock, order lines and bins, from the first save to the deletion.
clock("2025-03-03 08:30:00");
const clean = what => equal(stage.run("liaowu-db", ["check", stage.defaultConnection()]), 0, what);
const one = text => db.query(text)[0];
const line = (order, n) => Object.values(one("select 已入庫數, 未交數, 送清 from 採購明細資料 where 採購單號='" + order + "' and 序=" + n));
const Masters = { 物料: ["物料資料", "物料代號"], 紙板: ["浪紙資料", "浪紙代號"], 紙品: ["紙品資料", "紙品代號"], 凸版: ["凸版主料資料", "主料代號"] };
const stock = (family, code) => {
    const row = one("select * from " + Masters[family][0] + " where " + Masters[family][1] + "='" + code + "'");
    return [Number(row["庫存"]), row["異動日期"]];
};
// An approved order of a family with two lines of 10 and 20, nothing received.
const order = (number, family, vendor, units = "kg") => {
    const [table, key] = Masters[family];
    const codes = db.query("select top 2 " + key + " as 代號 from " + table + " order by " + key).map(r => r["代號"]);
    db.execute("insert into 採購資料 (採購單號, 類別, 採購日期, 廠商代號, 廠商簡稱, 審單, 幣別, 業務員代號) values ('" + number + "', '" + family +
        "', '20250228', '" + vendor + "', '', 'Y', '美金', 'S01')");
    codes.forEach((code, i) => {
        const quantity = 10 * (i + 1);
        db.execute("insert into 採購明細資料 (採購單號, 序, 原料代號, 原料名稱, 規格, 數量, 單價, 單位, 小計, 寬剖, 已入庫數, 未交數, 送清, 檢驗單號) values ('" +
            number + "', " + (i + 1) + ", '" + code + "', '料" + i + "', '', '" + quantity + "', '3', '" + units + "', '0', '4', '0', '" + quantity +
            "', 'N', '')");
    });
    return codes;
};
const vendor = one("select top 1 廠商代號 from 廠商資料 where 付款方式<>'現金' and 結帳日='25日結帳' order by 廠商代號")["廠商代號"];
const days = Number(one("select 付款天數 from 廠商資料 where 廠商代號='" + vendor + "'")["付款天數"]);
const fromVendor = (s, code = vendor) => {
    onWindow("frm廠商輔助視窗_驗收", w => w.press("Enter"));
    s.set("txt廠商代號", code);
    s.key("txt廠商代號", "Enter");
    equal(s.get("txt廠商代號"), code, "the vendor is taken");
};
const fromOrder = (s, number) => {
    onWindow("frm採購輔助視窗", w => w.press("Enter"));
    s.set("txt採購單號", number);
    s.key("txt採購單號", "Enter");
};
const saved = (s, title) => {
    onMessage(title, "資料儲存完畢!");
    s.press("F8");
};
const update = s => {
    onMessage("詢問", "確定更新此筆資料?", "yes");
    saved(s, "資料更新");
};

// ---- materials: the whole order at once ----
const inks = order("250228901", "物料", vendor);
const before = inks.map(code => stock("物料", code)[0]);
let s = launch({ function: "物料入庫作業", user: "主管甲" });
equal([s.title, s.mode], ["物料入庫作業系統", "修改"], "the screen opens on the last receipt");
equal(s.get("txt入庫單號"), one("select top 1 入庫單號 from 原料入庫資料 where 類別='物料' and 單別 not like '%退%' order by 製單時間 desc, 入庫日期 desc, 入庫單號 desc")["入庫單號"],
    "which is the latest");
s.press("F1");
equal([s.mode, s.status(2), s.focused()], ["新增", "新增中...", "txt入庫單號"], "a new receipt begins");
equal([s.get("txt入庫日期"), s.get("Cbo單別"), s.get("Cbo倉別"), s.get("txt入庫單號")], ["20250303", "采購入庫", "", ""], "with its defaults");
s.set("Cbo倉別", s.items("Cbo倉別")[1]);
const bin = s.get("Cbo倉別");
for (const [date, year, month] of [["20250325", 2025, 3], ["20250326", 2025, 4], ["20251226", 2026, 1], ["20250303", 2025, 3]]) {
    s.set("txt入庫日期", date);
    fromVendor(s);
    const months = day => new Date(Date.UTC(year, month - 1, day)).toISOString().slice(0, 7).replace("-", "");
    equal([s.get("txt對帳日期"), s.get("txt付款年月")], [months(1), months(1 + days)], "the months follow the vendor's terms on " + date);
}
fromOrder(s, "250228901");
equal(s.get("txt採購單號"), "250228901", "the order is taken");
let g = s.grid("fml明細");
equal([g.lineCount, g.cell(1, "數量"), g.cell(2, "數量"), g.cell(1, "單位#2") !== ""], [2, "10", "20", true], "all that is open comes in");
equal(s.get("cbo幣別"), "美金", "an empty grid takes the order's currency");
equal([g.cell(1, "小計"), s.get("txt合計"), g.cell(1, "計價公式")], ["30.00", "90.00", "計價公式: 3*10"], "the lines are priced");
for (const title of ["走紙才", "小紙數", "剖切尺寸"]) check(!g.visible(title), "materials do not show " + title);
g.enter(1, "數量");
equal([s.visible("pic數量"), s.get("lbl應入數"), s.get("lbl未入數")], [true, "10", "10"], "ordered and open quantity stand below");
g.type(1, "備品", "1");
g.type(2, "數量", "5");
equal([g.cell(1, "備品"), g.cell(2, "數量"), s.get("txt合計")], ["1.0000", "5.0000", "45.00"], "what is typed counts");
saved(s, "資料儲存");
const number = s.get("txt入庫單號");
equal([s.mode, number, s.open], ["修改", "2503030001", true], "the screen goes on with the saved receipt");
equal(inks.map((code, i) => stock("物料", code)[0] - before[i]), [11, 5], "stock rises by quantity and spares");
equal(stock("物料", inks[0])[1], "20250303", "with the day");
equal([s.visible("pic庫存"), parseFloat(s.get("lbl庫存").replace(/,/g, ""))], [true, stock("物料", inks[0])[0]], "the figures below the grid know it");
equal([line("250228901", 1), line("250228901", 2)], [["10", "0", "Y"], ["5", "15", "N"]], "the order knows what came");
equal(db.query("select 入庫數, 領料數, 儲位 from 原料板位明細 where 入庫單號='" + number + "' order by 原料代號").map(r => Object.values(r)),
    [["11", "0", bin], ["5", "0", bin]], "and the bins");
clean("the plant is in order after a receipt");

// ---- saved again as it is, down, up, out, too much ----
g = s.grid("fml明細");
for (const [typed, rises, state] of [["", [11, 5], ["10", "0", "Y"]], ["6", [7, 5], ["6", "4", "N"]], ["10", [11, 5], ["10", "0", "Y"]], ["6", [7, 5], ["6", "4", "N"]]]) {
    if (typed) g.type(1, "數量", typed);
    onMessage("資料更新", "資料儲存完畢!");
    onMessage("詢問", "確定更新此筆資料?", "yes");
    s.toolbar("save");
    equal([s.open, inks.map((code, i) => stock("物料", code)[0] - before[i]), line("250228901", 1)], [true, rises, state], "saved again with " + (typed || "nothing changed"));
    equal(s.grid("fml明細").lineCount, 2, "both lines stand");
    clean("the plant is in order after an edit");
}
g.type(2, "數量", "21");
onMessage("詢問", "確定更新此筆資料?", "yes");
onMessage("提示", "第2筆輸入的入庫數已大於採購數量,請重新輸入!");
s.press("F8");
equal([g.cell(2, "數量"), s.modified, line("250228901", 2)], ["21.0000", true, ["5", "15", "N"]], "more than ordered is refused and stays typed");
onMessage("還原詢問", "確定要還原此筆資料?", "no");
s.toolbar("reload");
equal(g.cell(2, "數量"), "21.0000", "who does not want to reload keeps it");
onMessage("還原詢問", "確定要還原此筆資料?", "yes");
s.toolbar("reload");
equal([g.cell(2, "數量"), s.modified], ["5", false], "a reload brings back what is stored");
g.enter(2, "數量");
s.click("scmd刪除");
equal([g.lineCount, s.get("txt合計")], [1, "18.00"], "a line taken out lowers the total");
update(s);
equal([stock("物料", inks[1])[0], line("250228901", 2)], [before[1], ["0", "20", "N"]], "and what it brought");
clean("the plant is in order without the line");

// ---- found again ----
s.press("F2");
s.click("scmd查詢條件");
s.type(number);
s.press("Enter");
equal([s.grid("MSHFlexGrid1").lineCount, s.grid("MSHFlexGrid1").cell(1, "入庫數")], [1, "6"], "the search finds it");
s.press("Enter");
equal([s.mode, s.get("txt入庫單號")], ["修改", number], "and shows it");
onMessage("提示", "速查單號為空,請輸入單號");
s.click("scmd速查");
onMessage("提示", "查無此入庫單,請確認輸入單號是否正確!");
s.set("txt速查單號", "X");
s.click("scmd速查");
equal(s.get("txt入庫單號"), number, "an unknown number leaves the position");

// ---- deleted ----
onMessage("刪除詢問", "確定要刪除此筆資料?", "yes");
onMessage("資料刪除", "資料刪除完畢!");
s.press("F3");
equal([inks.map((code, i) => stock("物料", code)[0] - before[i]), line("250228901", 1)], [[0, 0], ["0", "10", "N"]], "deletion undoes it all");
equal(db.query("select * from 原料板位明細 where 入庫單號='" + number + "'").length, 0, "bins too");
clean("the plant is in order after a deletion");

// ---- board, line by line ----
const boards = order("250228902", "紙板", vendor, "㎡");
const sheets = stock("紙板", boards[0])[0];
db.execute("insert into 採購計價公式 (單位1, 單位2, 基本單位, 計價單位, 公式, 序, 類別) values ('', '', '" +
    one("select 單位 from 浪紙資料 where 浪紙代號='" + boards[0] + "'")["單位"] + "', '壞', '數量/(1-1)', 99, '紙板')");
s = launch({ function: "浪紙入庫作業", user: "主管甲" });
equal(s.title, "原料入庫作業", "board has the designed title");
s.press("F1");
fromVendor(s);
g = s.grid("fml明細");
onWindow("frm採購輔助視窗", w => { screenshot("out/receipt_pick.png"); w.press("Enter"); });
g.type(1, "採購單號", "250228902");
equal([g.lineCount, g.cell(1, "數量"), g.cell(1, "走紙才"), g.cell(1, "小紙數"), g.cell(1, "檢驗"), g.cell(1, "採購序")], [1, "10", "4", "40", "N", "1"],
    "one line comes with its sheets");
equal(s.get("cbo幣別"), "美金", "and its currency");
g.type(1, "數量", "3");
equal(g.cell(1, "小紙數"), "12", "small sheets follow");
const amount = g.cell(1, "小計");
g.type(1, "規格", "90*90");
onMessage("計算", "單價公式預設不正確！請處新設置！");
g.type(1, "單位", "壞");
equal([g.cell(1, "小計"), g.colour(1, "小計"), s.get("txt合計")], [amount, "#ffd6d6", amount], "a formula that cannot be computed is told; the amount stays");
g.type(1, "單位", "㎡");
check(g.colour(1, "小計") !== "#ffd6d6", "another unit, another formula");
screenshot("out/receipt_board.png");
saved(s, "資料儲存");
equal([stock("紙板", boards[0])[0] - sheets, line("250228902", 1)], [12, ["3", "7", "N"]], "board enters in pieces and counts in the order's unit");
clean("the plant is in order after board");
g = s.grid("fml明細");
onWindow("frm採購輔助視窗", w => { w.press("Down"); w.press("Enter"); });
g.type(2, "採購單號", "250228902");
equal(g.cell(2, "採購序"), "2", "a second line of the order");
update(s);
equal(line("250228902", 2), ["20", "0", "Y"], "is closed when all of it came");
clean("the plant is in order after a second line");
g = s.grid("fml明細");
g.type(1, "走紙才", "5");
equal(g.cell(1, "小紙數"), "15", "other sheets");
g.type(1, "小紙數", "11");
g.type(1, "單價", "4");
equal(g.cell(1, "小紙數"), "11", "a price does not count sheets");
update(s);
equal(s.grid("fml明細").cell(1, "小紙數"), "11", "what was counted is what lies there");
onMessage("還原詢問", "確定要還原此筆資料?", "yes");
s.toolbar("reload");
equal(g.cell(1, "小紙數"), "11", "also when it is read again");
onWindow("frm單據審核", w => w.click("scmd確定"));
onMessage("詢問", "操作成功,是否立即儲存?", "yes");
onMessage("資料更新", "資料儲存完畢!");
s.toolbar("審核");
equal([stock("紙板", boards[0])[0] - sheets, line("250228902", 1)], [11, ["3", "7", "N"]], "and when it is approved");
clean("the plant is in order after a count by hand");

// ---- a board without an order, by its name and by its code ----
s.press("F1");
const shared = one("select top 1 浪紙名稱 from 浪紙資料 group by 浪紙名稱 having count(*)>1 order by 浪紙名稱")["浪紙名稱"];
g = s.grid("fml明細");
onWindow("frm原料輔助視窗", w => w.press("Esc"));
g.type(1, "原料名稱", shared);
equal([g.lineCount, g.cell(1, "原料名稱")], [0, ""], "a name that several boards bear is asked for; left, it leaves the row empty");
g.type(1, "原料名稱", boards[1]);
const board = one("select 浪紙名稱, 單位 from 浪紙資料 where 浪紙代號='" + boards[1] + "'");
equal([g.cell(1, "原料代號"), g.cell(1, "原料名稱"), g.cell(1, "單位"), g.cell(1, "單位#2"), g.cell(1, "走紙才")], [boards[1], board["浪紙名稱"], board["單位"], board["單位"], "1"],
    "a code is taken at once");

// ---- papers and plates move the order only, and have no closing ----
for (const [name, family, id] of [["紙品入庫作業", "紙品", "250228903"], ["凸版入庫作業", "凸版", "250228904"]]) {
    const codes = order(id, family, vendor, "張");
    const held = stock(family, codes[0])[0];
    s = launch({ function: name, user: "主管甲" });
    s.press("F1");
    fromVendor(s);
    equal(s.enabled("scmd採購單號"), family !== "凸版", "the order key on " + family);
    fromOrder(s, id);
    const asks = doing => {
        onMessage("錯誤", "無效的參數");
        doing();
    };
    asks(() => saved(s, "資料儲存"));
    equal([line(id, 1), stock(family, codes[0])[0]], [["10", "0", "Y"], held], family + " changes the order, not the stock");
    s.grid("fml明細").enter(2, "數量");
    asks(() => s.click("scmd刪除"));
    asks(() => update(s));
    equal(line(id, 2), ["0", "20", "N"], "a line of it goes out");
    onWindow("frm單據審核", w => w.click("scmd確定"));
    onMessage("詢問", "操作成功,是否立即儲存?", "yes");
    onMessage("資料更新", "資料儲存完畢!");
    asks(() => s.toolbar("審核"));
    equal([s.visible("pic復核"), line(id, 1), stock(family, codes[0])[0]], [true, ["10", "0", "Y"], held], "its approval moves nothing");
    clean("the plant is in order after " + family);
}
