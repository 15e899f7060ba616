// The pick windows of the order: how they are worked, what a picked row becomes, and what that does to requisitions.
clock("2025-03-03 08:30:00");
db.execute("update 原料申購資料 set 審單='N' where 類別='紙板'");
const need = (code, size, quantity, job, day, ordered) =>
    ({ 原料代號: code, 原料名稱: code.replace(/-.*/, ""), 規格: size, 數量: quantity, 單位: "PC", 印件編號: job, 需求日期: day, 已采購數: ordered, 楞別: "B" });
requisition("2503010001", "紙板", [need("KMKB-01", "70*150", "300", "", "20250410", "0"), need("KMKB-02", "70*75", "500", "JOB-7", "20250411", "120"),
    need("KMKC-01", "200*115", "90.5", "", "", "0.25")]);
requisition("2503010002", "紙板", [need("KMKB-04", "120*115", "100", "", "", "130")]);
const ordered = () => values("select 已采購數 from 原料申購明細 where 申購單號='2503010001' order by 序");

const s = launch({ function: "紙板採購作業", user: "採購甲" });
const g = s.grid("fml明細");
const offered = (w, title) => column(w.grid("MSHFlexGrid1"), title);
const filter = (w, text) => {
    w.set("txt查詢", text);
    w.click("cmd確定");
};

// ---- vendor and buyer ----
onWindow("frm廠商輔助畫面", w => equal(visibleTitles(w.grid("MSHFlexGrid1")), ["廠商代號", "廠商簡稱", "分數"], "code, name and score of vendors"));
vendor(s, "無此");
equal([texts(s, "txt廠商代號", "lbl廠商簡稱"), s.focused()], [["無此", ""], "txt廠商代號"], "Esc changes nothing");
inWindow("frm廠商輔助畫面", w => equal([w.get("txt查詢"), offered(w, "廠商代號").length, w.focused()], ["V00", 9, "MSHFlexGrid1"], "code prefix; the focus is on the list"),
    "Down", "Enter");
vendor(s, "V00");
equal([texts(s, "txt廠商代號", "lbl廠商簡稱", "txt業務員代號"), s.focused()], [["V002", "沐瀚紙器", "S02"], "txt採購日期"], "the second one");
onWindow("frm業務輔助視窗", w => {
    w.type("S0");
    w.press("Enter");
    equal(offered(w, "人員代號").length, 9, "letters go to the filter, Enter there asks again");
    w.grid("MSHFlexGrid1").doubleClick(4, "人員名稱");
});
enter(s, "txt業務員代號", "誰");
equal(texts(s, "txt業務員代號", "lbl業務員名稱"), ["S04", "張家豪"], "a double click picks");
pick("frm廠商輔助畫面");
s.click("scmd廠商代號");
equal([s.get("txt廠商代號"), s.get("txt業務員代號")], ["V002", "S02"], "the button opens on the code at hand");

// ---- requisition lines: several rows at once ----
onWindow("frm原料輔助視窗_請購", w => {
    const list = w.grid("MSHFlexGrid1");
    equal(list.titles.slice(0, 15), ["申購單號", "原料代號", "原料名稱", "規格", "未采購數", "庫存", "進價", "幣別", "單位", "印件編號", "需求日期", "備注", "類別", "廠牌", "進料單位"], "columns");
    equal([offered(w, "未采購數"), w.visibleTexts().includes("共 4 筆")], [["300", "380", "90.25", "-30"], true], "what is open, more than ordered included, and their number");
    w.click("opt排序(1)");
    equal(offered(w, "原料代號"), ["KMKC-01", "KMKB-04", "KMKB-01", "KMKB-02"], "by the master's name, then by size");
    filter(w, "kc-");
    equal(offered(w, "原料代號"), ["KMKC-01"], "by a piece of the item code");
});
g.key(1, "申購單號", "F9");
equal([g.lineCount, g.cell(1, "申購單號")], [0, ""], "nothing picked, nothing changed");
inWindow("frm原料輔助視窗_請購", w => w.grid("MSHFlexGrid1").select(2, 1), "Enter");
g.type(1, "申購單號", "2503010001");
equal([g.lineCount, g.currentRow()], [2, 2], "a block selected upwards is taken from its first row");
const price = g.cell(2, "單價"), amount = rule.numberText(Number(rule.format(0.7 * 0.75 * 380 * price, "0.00")));
equal(g.row(2), { 申購單號: "2503010001", 工單單號: "JOB-7", 客戶代號: "", 客戶: "", 紙箱代號: "", 料號: "", 代號: "KMKB-02", 廠商品名: "牛2瓦2牛2乙2", 內部品名: "KMKB",
    規格: "70*75", 大紙數: "380", 單價: price, 單位: "㎡", 小計: amount, 交貨日: "20250411", 楞別: "B", 剖切尺寸: "", 壓線種類: "", 壓線尺寸: "",
    走紙才: "1", 小紙數: "380", 原單價: price, 原小計: amount, 已交數: "", 未交數: "380", 送清: "N", 計價公式: "計價公式: 70*75*" + price + "*380/10000",
    備註: "", 採購序: "", 已檢驗數: "", 檢驗合格數: "", 採購單號: "" }, "every element in its column");
pick("frm原料輔助視窗_請購", "Down", "Down", "Shift+Down");
g.type(1, "申購單號", "25030100");
equal([g.cell(1, "申購單號"), column(g, "代號").slice(2), g.cell(4, "大紙數")], ["2503010001", ["KMKC-01", "KMKB-04"], "-30"],
    "into a filled row: behind the last one, and the row keeps its own requisition");
g.key(4, "代號", "Ctrl+Delete");
s.press("F8");
equal(ordered(), ["300", "500", "90.5"], "the save counts them as ordered");
g.type(1, "大紙數", "250");
g.key(2, "代號", "Ctrl+Delete");
save(s);
equal(ordered(), ["250", "120", "90.5"], "less, and a line taken out");
onWindow("frm原料輔助視窗_請購", w => equal(offered(w, "未采購數"), ["50", "380", "-30"], "what is left is offered again"));
g.key(3, "申購單號", "F9");
remove(s);
equal(ordered(), ["0", "120", "0.25"], "the order is gone, and its quantities with it");

// ---- a whole requisition by the header, its full quantity ----
s.press("F1");
vendor(s, "V002");
onWindow("frm採購輔助視窗_請購單", w =>
    equal(w.grid("MSHFlexGrid1").titles, ["申購單號", "原料代號", "原料名稱", "規格", "未採購數", "單位", "需求日期", "類別"], "columns"));
s.click("sscmd申購單位");
equal([s.get("txt申購單位"), g.lineCount], ["", 0], "nothing picked");
pick("frm採購輔助視窗_請購單");
enter(s, "txt申購單位", "2503");
equal([s.get("txt申購單位"), column(g, "大紙數"), cells(g, 2, "廠商品名", "交貨日", "走紙才", "單位")],
    ["2503010001", ["300", "500", "90.5"], ["牛2瓦2牛2乙2", "20250411", "1", "PC"]], "the lines of the requisition");

// ---- work orders: one row, once ----
s.press("F1");
vendor(s, "V002");
const jobs = db.query("select * from 紙箱生產資料 where (完工<>'Y' or 完工 is null) and 工單單號 not in (select 印件編號 from 採購明細資料) order by 工單單號");
const numbers = jobs.map(job => job["工單單號"]), job = jobs[0];
const creases = of => [0, 1, 2].map(i => of["寬壓線" + i]).join("*");
db.execute("update 紙箱生產資料 set 寬壓線3='35',寬壓線6='12',採購備注='" + "長".repeat(30) + "' where 工單單號='" + numbers[1] + "'");
inWindow("frm工單輔助視窗_採購", w => {
    equal(w.grid("MSHFlexGrid1").titles, ["工單單號", "工單日期", "客戶單號", "客戶代號", "客戶", "紙箱代號", "料號", "材質", "備料寬", "備料長", "楞別", "備紙數", "切寬", "切長",
        "壓線尺寸", "壓線種類", "採購備注", "紙質代號", "走紙才"], "columns");
    equal(offered(w, "工單單號"), numbers, "not finished, not yet on an order line");
    ["紙質名稱", "交貨日期", "客戶代號"].forEach((by, i) => {
        w.click("opt排序(" + (i + 1) + ")");
        const shown = offered(w, "工單單號").map(x => jobs[numbers.indexOf(x)][by]);
        equal(shown, shown.slice().sort(), "sorted by " + by);
    });
    w.click("opt排序(0)");
    for (const by of ["客戶料號", "紙箱代號", "客戶單號", "客戶代號"]) {
        filter(w, job[by].slice(1));
        check(offered(w, "工單單號").includes(numbers[0]), "found by a piece of " + by);
    }
    filter(w, "");
}, "Enter");
g.key(1, "工單單號", "F9");
const customer = value("select 客戶簡稱 from 客戶資料 where 客戶代號='" + job["客戶代號"] + "'");
equal(cells(g, 1, "工單單號", "客戶代號", "客戶", "紙箱代號", "料號", "代號", "內部品名", "規格", "大紙數", "單價", "單位", "小計", "交貨日", "楞別", "剖切尺寸", "壓線種類", "壓線尺寸", "走紙才", "未交數", "送清", "備註"),
    [numbers[0], job["客戶代號"], customer, job["紙箱代號"], job["客戶料號"], job["紙質代號"], job["紙質名稱"], job["備料尺寸寬"] + "*" + job["備料尺寸長"], job["備紙數"], "", "PCS", "0", "",
     job["楞別"], job["平版剖切寬"] + "*" + job["平版剖切長"], job["壓線種類"], creases(job), job["寬剖"], job["備紙數"], "N", job["採購備注"]], "the work order in its columns; the price is left to the user");
pick("frm工單輔助視窗_採購");
g.type(2, "工單單號", numbers[1].toLowerCase());
equal(cells(g, 2, "工單單號", "壓線尺寸", "備註"), [numbers[1], creases(jobs[1]) + "*35*12", "長".repeat(25)], "the seventh crease ends the text; a long remark is cut");
s.press("F8");
onWindow("frm工單輔助視窗_採購", w => equal(offered(w, "工單單號"), numbers.slice(2), "on an order line: not offered again"));
g.key(3, "工單單號", "F9");
// Another work order picked into a received line: what has come in stays.
db.execute("update 採購明細資料 set 已入庫數='40',未交數='1' where 採購單號='" + s.get("txt採購單號") + "' and 序=1");
find(s, s.get("txt採購單號"));
pick("frm工單輔助視窗_採購");
g.type(1, "工單單號", numbers[2]);
equal(cells(g, 1, "工單單號", "已交數", "未交數", "採購序"), [numbers[2], "40", String(jobs[2]["備紙數"] - 40), "1"], "the line stays the same line");

// ---- items: the exact code stands selected, sorts, nothing found ----
insert("浪紙資料", { 浪紙代號: "ZXQ1", 浪紙名稱: "甲板", 規格: "9*9", 進價: "3", 進料單位: "㎡", 單位: "pcs", 幣別: "台幣", 楞別: "E" }, { 浪紙代號: "AZXQ1", 浪紙名稱: "乙板" });
inWindow("frm原料輔助視窗_採購", w => {
    const list = w.grid("MSHFlexGrid1");
    equal([column(list, "紙板代號"), list.currentRow()], [["AZXQ1", "ZXQ1"], 2], "the exact code is selected");
    w.key("opt排序(0)", "Enter");
    equal([w.open, w.focused() === "opt排序(0)"], [true, false], "Enter elsewhere moves on");
    w.set("txt查詢", "沒有");
    w.key("cmd確定", "Enter");
    equal([w.open, list.lineCount], [true, 0], "on the button it asks again");
    w.key("MSHFlexGrid1", "Enter");
    equal(w.open, true, "an empty list gives nothing");
    filter(w, "ZXQ1");
}, "Enter");
g.type(3, "代號", "zxq1");
equal(cells(g, 3, "代號", "內部品名", "規格", "單價", "單位", "楞別", "走紙才"), ["ZXQ1", "甲板", "", "3", "㎡", "E", "1"], "a board brings no size of its own");
