// The pick windows of the order: what they offer, how they are worked, what a picked row becomes, and what that does to requisitions.
clock("2025-03-03 08:30:00");
db.execute("update 原料申購資料 set 審單='N' where 類別='紙板'");
const requisition = (n, approved, rows) => {
    db.execute("insert into 原料申購資料 (申購單號,類別,申購日期,審單) values ('" + n + "','紙板','20250301','" + approved + "')");
    rows.forEach((r, i) => db.execute("insert into 原料申購明細 (申購單號,序,原料代號,原料名稱,規格,數量,單位,印件編號,需求日期,備注,已采購數,楞別) values ('" + n + "'," +
        (i + 1) + ",'" + r.join("','") + "')"));
};
requisition("2503010001", "Y", [["KMKB-01", "KMK550B", "70*150", "300", "PC", "", "20250410", "備料", "0", "B"],
    ["KMKB-02", "KMK550B", "70*75", "500", "PC", "JOB-7", "20250411", "", "120", "B"],
    ["KMKC-01", "KMK350C", "200*115", "90.5", "PC", "", "", "", "0.25", "C"]]);
requisition("2503010002", "Y", [["KMKB-03", "KMK550B", "160*150", "100", "PC", "", "", "", "100", "B"], ["KMKB-04", "KMK550B", "120*115", "100", "PC", "", "", "", "130", "B"]]);
requisition("2503010003", "N", [["KMKB-01", "KMK550B", "70*150", "999", "PC", "", "", "", "0", "B"]]);
const ordered = (n, code) => db.query("select 已采購數 from 原料申購明細 where 申購單號='" + n + "' and 原料代號='" + code + "'")[0]["已采購數"];

let s = launch({ function: "紙板採購作業", user: "採購甲" });
let g = s.grid("fml明細");
const rowsOf = (w, title) => { const list = w.grid("MSHFlexGrid1"), all = []; for (let i = 1; i <= list.lineCount; i++) all.push(list.cell(i, title)); return all; };
const save = () => { onMessage("詢問", "確定更新此筆資料?", "yes"); s.press("F8"); };

// ---- vendor and buyer
onWindow("frm廠商輔助畫面", w => {
    const list = w.grid("MSHFlexGrid1");
    equal(list.titles.filter(t => list.visible(t)), ["廠商代號", "廠商簡稱", "分數"], "code, name and score of vendors");
    equal(rowsOf(w, "廠商代號"), db.query("select 廠商代號 from 廠商資料 where 廠商類別 like '%紙板%' and 報廢與否<>'Y' order by 廠商代號").map(r => r["廠商代號"]), "no such text: all vendors of the kind");
    w.press("Esc");
});
s.type("無此"); s.press("Enter");
equal([s.get("txt廠商代號"), s.get("lbl廠商簡稱"), s.focused()], ["無此", "", "txt廠商代號"], "Esc changes nothing");
onWindow("frm廠商輔助畫面", w => {
    equal([w.get("txt查詢"), rowsOf(w, "廠商代號").length, w.focused()], ["V00", 9, "MSHFlexGrid1"], "code prefix; the focus is on the list");
    w.press("Down"); w.press("Enter");
});
s.set("txt廠商代號", "V00"); s.press("Enter");
equal([s.get("txt廠商代號"), s.get("lbl廠商簡稱"), s.get("txt業務員代號"), s.focused()], ["V002", "沐瀚紙器", "S02", "txt採購日期"], "the second one");
onWindow("frm業務輔助視窗", w => {
    equal(rowsOf(w, "人員代號"), db.query("select 業務員代號 from 業務資料 where 離職日期='' order by 業務員代號").map(r => r["業務員代號"]), "nobody by that name: all who have not left");
    check(rowsOf(w, "人員代號").indexOf("S15") < 0, "who has left is never offered");
    w.type("S0"); w.press("Enter");
    equal(rowsOf(w, "人員代號").length, 9, "letters go to the filter, Enter there asks again");
    w.grid("MSHFlexGrid1").doubleClick(4, "人員名稱");
});
s.set("txt業務員代號", "誰"); s.press("Enter");
equal([s.get("txt業務員代號"), s.get("lbl業務員名稱")], ["S04", "張家豪"], "a double click picks");
s.set("txt業務員代號", "林佩珊"); s.press("Enter");
equal([s.get("txt業務員代號"), s.get("lbl業務員名稱")], ["S01", "林佩珊"], "an exact name needs no window");
onWindow("frm廠商輔助畫面", w => w.press("Enter"));
s.click("scmd廠商代號");
equal([s.get("txt廠商代號"), s.get("txt業務員代號")], ["V002", "S02"], "the button opens on the code at hand");

// ---- requisition lines: several rows at once
onWindow("frm原料輔助視窗_請購", w => {
    const list = w.grid("MSHFlexGrid1");
    equal([w.title, list.titles.slice(0, 15)], ["原料輔助視窗(採購)", ["申購單號", "原料代號", "原料名稱", "規格", "未采購數", "庫存", "進價", "幣別", "單位", "印件編號", "需求日期", "備注", "類別", "廠牌", "進料單位"]], "columns");
    equal(rowsOf(w, "申購單號").map((n, i) => [n, list.cell(i + 1, "原料代號"), list.cell(i + 1, "未采購數")]), [["2503010001", "KMKB-01", "300"], ["2503010001", "KMKB-02", "380"],
        ["2503010001", "KMKC-01", "90.25"], ["2503010002", "KMKB-04", "-30"]], "approved, with something open, more than ordered included");
    check(w.visibleTexts().indexOf("共 4 筆") >= 0, "their number is told");
    w.click("opt排序(1)");
    equal(rowsOf(w, "原料代號"), ["KMKC-01", "KMKB-04", "KMKB-01", "KMKB-02"], "by name and size");
    w.set("txt查詢", "kc-"); w.click("cmd確定");
    equal(rowsOf(w, "原料代號"), ["KMKC-01"], "by a piece of the item code");
    w.set("txt查詢", "3010001"); w.click("cmd確定");
    equal(list.lineCount, 0, "the number counts from its beginning");
    w.press("Enter");
    w.press("Esc");
});
g.enter(1, "申購單號"); s.press("F9");
equal([g.lineCount, g.cell(1, "申購單號")], [0, ""], "nothing picked, nothing changed");
onWindow("frm原料輔助視窗_請購", w => { w.click("opt排序(0)"); w.grid("MSHFlexGrid1").select(2, 1); screenshot("out/picks.png"); w.press("Enter"); });
g.type(1, "申購單號", "2503010001");
equal([g.lineCount, g.currentRow()], [2, 2], "a block selected upwards is taken from its first row");
equal(g.row(2), { 申購單號: "2503010001", 工單單號: "JOB-7", 客戶代號: "", 客戶: "", 紙箱代號: "", 料號: "", 代號: "KMKB-02", 廠商品名: "牛2瓦2牛2乙2", 內部品名: "KMK550B",
    規格: "70*75", 大紙數: "380", 單價: g.cell(2, "單價"), 單位: "㎡", 小計: rule.format(0.7 * 0.75 * 380 * g.cell(2, "單價"), "0.00").replace(/\.?0+$/, ""), 交貨日: "20250411", 楞別: "B", 剖切尺寸: "", 壓線種類: "", 壓線尺寸: "",
    走紙才: "1", 小紙數: "380", 原單價: g.cell(2, "單價"), 原小計: g.cell(2, "小計"), 已交數: "", 未交數: "380", 送清: "N", 計價公式: "計價公式: 70*75*" + g.cell(2, "單價") + "*380/10000",
    備註: "", 採購序: "", 已檢驗數: "", 檢驗合格數: "", 採購單號: "" }, "every element in its column");
onWindow("frm原料輔助視窗_請購", w => { w.press("Down"); w.press("Down"); w.press("Shift+Down"); w.press("Enter"); });
g.type(1, "申購單號", "25030100");
equal([g.lineCount, g.cell(1, "申購單號"), g.cell(3, "代號"), g.cell(4, "代號"), g.cell(4, "大紙數")], [4, "2503010001", "KMKC-01", "KMKB-04", "-30"],
    "into a filled row: behind the last one, and the row keeps its own requisition");
g.enter(4, "代號"); s.click("scmd刪除");
s.press("F8");
const n = s.get("txt採購單號");
equal(["KMKB-01", "KMKB-02", "KMKC-01"].map(c => ordered("2503010001", c)), ["300", "500", "90.5"], "the save counts them as ordered");
equal(ordered("2503010002", "KMKB-04"), "130", "the deleted line was never ordered");

g.type(1, "大紙數", "250"); g.enter(2, "代號"); s.click("scmd刪除"); save();
equal(["KMKB-01", "KMKB-02", "KMKC-01"].map(c => ordered("2503010001", c)), ["250", "120", "90.5"], "less, and a line taken out");
save();
equal(["KMKB-01", "KMKB-02", "KMKC-01"].map(c => ordered("2503010001", c)), ["250", "120", "90.5"], "saved as it stands: no change");
onWindow("frm原料輔助視窗_請購", w => { equal(rowsOf(w, "未采購數"), ["50", "380", "-30"], "what is left is offered again"); w.press("Esc"); });
g.enter(3, "申購單號"); s.press("F9");
onMessage("刪除詢問", "確定要刪除此筆資料?", "yes"); onMessage("資料刪除", "資料刪除完畢!");
s.press("F3");
equal(["KMKB-01", "KMKB-02", "KMKC-01"].map(c => ordered("2503010001", c)), ["0", "120", "0.25"], "the order is gone, and its quantities with it");
equal(db.query("select count(*) as n from 採購明細資料 where 採購單號='" + n + "'")[0].n, 0, "lines too");

// ---- a whole requisition by the header, its full quantity
s.press("F1");
s.type("V002"); s.press("Enter");
onWindow("frm採購輔助視窗_請購單", w => {
    const list = w.grid("MSHFlexGrid1");
    equal([w.title, list.titles], ["採購輔助視窗", ["申購單號", "原料代號", "原料名稱", "規格", "未採購數", "單位", "需求日期", "類別"]], "columns");
    equal(rowsOf(w, "原料代號"), ["KMKB-01", "KMKB-02", "KMKC-01"], "approved, with something left");
    w.press("Esc");
});
s.click("sscmd申購單位");
equal([s.get("txt申購單位"), g.lineCount], ["", 0], "nothing picked");
onWindow("frm採購輔助視窗_請購單", w => w.press("Enter"));
s.set("txt申購單位", "2503"); s.press("Enter");
equal([s.get("txt申購單位"), g.lineCount, g.cell(2, "大紙數"), g.cell(2, "廠商品名"), g.cell(2, "交貨日"), g.cell(3, "走紙才"), g.cell(1, "單位")],
    ["2503010001", 3, "500", "牛2瓦2牛2乙2", "20250411", "1", "PC"], "the lines of the requisition");

// ---- work orders: one row, once
g.enter(1, "代號"); while (g.lineCount > 0) { g.enter(1, "代號"); s.click("scmd刪除"); }
const jobs = db.query("select * from 紙箱生產資料 where (完工<>'Y' or 完工 is null) and 工單單號 not in (select 印件編號 from 採購明細資料) order by 工單單號");
const job = jobs[0];
db.execute("update 紙箱生產資料 set 寬壓線3='35',寬壓線6='12',採購備注='" + "長".repeat(30) + "' where 工單單號='" + jobs[1]["工單單號"] + "'");
onWindow("frm工單輔助視窗_採購", w => {
    const list = w.grid("MSHFlexGrid1");
    equal([w.title, list.titles], ["工單輔助視窗(採購)", ["工單單號", "工單日期", "客戶單號", "客戶代號", "客戶", "紙箱代號", "料號", "材質", "備料寬", "備料長", "楞別", "備紙數", "切寬", "切長", "壓線尺寸", "壓線種類", "採購備注", "紙質代號", "走紙才"]], "columns");
    equal(rowsOf(w, "工單單號"), jobs.map(j => j["工單單號"]), "not finished, not yet on an order line");
    ["紙質名稱", "交貨日期", "客戶代號"].forEach((c, i) => {
        w.click("opt排序(" + (i + 1) + ")");
        const shown = rowsOf(w, "工單單號").map(x => jobs.find(j => j["工單單號"] === x)[c]);
        equal(shown, shown.slice().sort(), "sorted by " + c);
    });
    w.click("opt排序(0)");
    ["客戶料號", "紙箱代號", "客戶單號", "客戶代號"].forEach(c => {
        w.set("txt查詢", job[c].slice(1)); w.click("cmd確定");
        check(rowsOf(w, "工單單號").indexOf(job["工單單號"]) >= 0, "found by a piece of " + c);
    });
    w.set("txt查詢", ""); w.click("cmd確定");
    w.press("Enter");
});
g.enter(1, "工單單號"); s.press("F9");
const customer = db.query("select 客戶簡稱 from 客戶資料 where 客戶代號='" + job["客戶代號"] + "'")[0]["客戶簡稱"];
equal(["工單單號", "客戶代號", "客戶", "紙箱代號", "料號", "代號", "內部品名", "規格", "大紙數", "單價", "單位", "小計", "交貨日", "楞別", "剖切尺寸", "壓線種類", "壓線尺寸", "走紙才", "未交數", "送清", "備註"].map(t => g.cell(1, t)),
    [job["工單單號"], job["客戶代號"], customer, job["紙箱代號"], job["客戶料號"], job["紙質代號"], job["紙質名稱"], job["備料尺寸寬"] + "*" + job["備料尺寸長"], job["備紙數"], "", "PCS", "0", "",
     job["楞別"], job["平版剖切寬"] + "*" + job["平版剖切長"], job["壓線種類"], [0, 1, 2].map(i => job["寬壓線" + i]).join("*"), job["寬剖"], job["備紙數"], "N", job["採購備注"]], "the work order in its columns; the price is left to the user");
onWindow("frm工單輔助視窗_採購", w => w.press("Enter"));
g.type(2, "工單單號", jobs[1]["工單單號"].toLowerCase());
equal([g.cell(2, "工單單號"), g.cell(2, "壓線尺寸"), g.cell(2, "備註")], [jobs[1]["工單單號"], [0, 1, 2].map(i => jobs[1]["寬壓線" + i]).join("*") + "*35*12", "長".repeat(25)], "the seventh crease ends the text; a long remark is cut");
g.type(1, "單價", "10"); g.type(2, "單價", "11");
s.press("F8");
onWindow("frm工單輔助視窗_採購", w => { equal(rowsOf(w, "工單單號"), jobs.slice(2).map(j => j["工單單號"]), "on an order line: not offered again"); w.press("Esc"); });
g.enter(3, "工單單號"); s.press("F9");
equal([g.lineCount, g.cell(3, "工單單號")], [2, ""], "Esc leaves the row empty");
// Another work order picked into a received line: what has come in stays.
db.execute("update 採購明細資料 set 已入庫數='40',未交數='1' where 採購單號='" + s.get("txt採購單號") + "' and 序=1");
s.press("PageUp"); s.press("PageDown");
onWindow("frm工單輔助視窗_採購", w => w.press("Enter"));
g.type(1, "工單單號", jobs[2]["工單單號"]);
equal([g.cell(1, "工單單號"), g.cell(1, "已交數"), g.cell(1, "未交數"), g.cell(1, "採購序")], [jobs[2]["工單單號"], "40", String(jobs[2]["備紙數"] - 40), "1"], "the line stays the same line");

// ---- items: the exact code stands selected, sorts, nothing found
db.execute("insert into 浪紙資料 (浪紙代號,浪紙名稱,規格,進價,進料單位,單位,幣別,楞別) values ('ZXQ1','甲板','9*9','3','㎡','pcs','台幣','E'),('AZXQ1','乙板','8*8','4','㎡','pcs','台幣','B')");
onWindow("frm原料輔助視窗_採購", w => {
    const list = w.grid("MSHFlexGrid1");
    equal([rowsOf(w, "紙板代號"), list.currentRow()], [["AZXQ1", "ZXQ1"], 2], "the exact code is selected");
    w.key("opt排序(0)", "Enter");
    equal([w.open, w.focused() === "opt排序(0)"], [true, false], "Enter elsewhere moves on");
    w.click("opt排序(1)");
    equal(rowsOf(w, "紙板名稱"), ["乙板", "甲板"].sort(), "by name");
    w.set("txt查詢", "沒有"); w.key("cmd確定", "Enter");
    equal([w.open, list.lineCount], [true, 0], "on the button it asks again");
    w.set("txt查詢", "zxq"); w.key("cmd確定", "Enter");
    w.set("txt查詢", "沒有"); w.click("cmd確定"); w.press("Enter");
    equal([w.open, list.lineCount], [true, 0], "an empty list gives nothing");
    w.set("txt查詢", "ZXQ1"); w.click("cmd確定"); w.click("opt排序(0)");
    w.press("Enter");
});
g.type(3, "代號", "zxq1");
equal(["代號", "內部品名", "規格", "單價", "單位", "楞別", "走紙才"].map(t => g.cell(3, t)), ["ZXQ1", "甲板", "", "3", "㎡", "E", "1"], "a board brings no size of its own");
