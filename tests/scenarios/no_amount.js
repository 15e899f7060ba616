// Users without 金額: no price is ever in sight, and every price survives what they do. Marker prices stand wherever prices stand;
// the same walk with a user who may see them shows that the walk would find them.
clock("2025-03-03 08:30:00");
const P = "7531.9", Q = "8642.7";
db.execute("update 浪紙資料 set 進價='" + P + "',單價='" + Q + "'");
db.execute("update 物料資料 set 進價='" + Q + "',單價='" + P + "'");
db.execute("update 凸版主料資料 set 進價='" + P + "'");
db.execute("update 歷史單價記錄 set 單價='" + Q + "' where 廠商代號 in ('V001','V013','V038')");
insert("採購計價公式", { 單位1: "", 單位2: "", 基本單位: "pcs", 計價單位: "令", 公式: "單價*數量*1+7531.9", 序: 9, 類別: "紙板" });
const orders = {};
["物料", "紙板", "凸版"].forEach(family => {
    const n = value("select top 1 採購單號 from 採購資料 where 類別='" + family + "' and 審單='N' order by 製單時間 desc");
    orders[family] = n;
    db.execute("update 採購明細資料 set 單價='" + P + "',小計='" + Q + "',計價公式='計價公式: 3*" + P + "' where 採購單號='" + n + "'");
    db.execute("update 採購資料 set 合計='" + Q + "' where 採購單號='" + n + "'");
});
db.execute("update 原料入庫明細 set 單價='" + P + "',小計='" + Q + "'");
db.execute("update 原料入庫資料 set 合計='" + Q + "'");
db.execute("update 使用者明細 set 批審='√' where 使用者='採購乙'");
const material = value("select top 1 物料代號 from 物料資料 where 廠商代號='V013' order by 物料代號");
[["2503039001", "紙板", "KMKB-01"], ["2503039002", "物料", material], ["2503039003", "凸版", "P001"]].forEach(([number, family, code]) =>
    requisition(number, family, [{ 原料代號: code, 原料名稱: "名", 規格: "10*10", 數量: "3", 單位: "kg" }]));

// Any way of writing a marker, and every amount that could come of it: three of them, and what the formulas make of those.
const markers = [P, Q].concat([P, Q].map(x => String(Math.round(x * 30) / 10))).concat([P, Q].map(x => String(Math.round(x * 300) / 10000)));
const leaks = texts => texts.filter(t => { const plain = String(t).replace(/,/g, ""); return markers.some(m => plain.indexOf(m) >= 0); });
let looked = 0;
const walk = user => {
    const found = {};
    const look = (place, texts) => { looked += texts.length; found[place] = (found[place] || []).concat(leaks(texts)); };
    const spoken = () => look("messages", messages().map(m => m.title + m.text));
    [["物料採購作業", "物料", "V013", "2503039002", material], ["紙板採購作業", "紙板", "V001", "2503039001", "KMKB-0"], ["凸版採購作業", "凸版", "V038", "2503039003", "P0"]].forEach(([f, family, from, needed, code]) => {
        const s = launch({ function: f, user });
        const g = s.grid("fml明細");
        const see = place => { look(place, s.visibleTexts()); look("status bar", [1, 2, 3, 4, 5, 6, 7, 8].map(i => s.status(i)).concat(s.notice())); spoken(); };
        // a new order, by each window
        onWindow("frm廠商輔助畫面", w => { look("vendor window", w.visibleTexts()); w.press("Enter"); });
        vendor(s, from.slice(0, 3));
        vendor(s, from);
        onWindow("frm業務輔助視窗", w => look("buyer window", w.visibleTexts()));
        enter(s, "txt業務員代號", "誰");
        enter(s, "txt業務員代號", "S01");
        onWindow("frm採購輔助視窗_請購單", w => { look("requisition window", w.visibleTexts()); w.press("Enter"); });
        enter(s, "txt申購單位", needed);
        see("requisition loaded");
        onWindow("frm原料輔助視窗_請購", w => { look("line window", w.visibleTexts()); w.press("Enter"); });
        g.type(2, "申購單號", needed);
        onWindow("frm原料輔助視窗_採購", w => { look("item window", w.visibleTexts()); w.click("opt排序(1)"); look("item window", w.visibleTexts()); w.press("Enter"); });
        g.type(3, "代號", code);
        g.type(3, "大紙數", "3");
        if (family !== "物料") {
            onWindow("frm工單輔助視窗_採購", w => { look("work order window", w.visibleTexts()); w.press("Enter"); });
            g.key(4, "工單單號", "F9");
            g.enter(3, "單位"); if (family === "紙板") { g.pick("令"); } else s.press("Esc");
        }
        see("new order");
        [1, 2, 3].forEach(r => ["單價", "小計", "備註"].forEach(t => { g.enter(r, t); see("cell " + t); }));
        // The history of prices opens for who may see them only.
        if (family !== "物料") {
            if (user === "admin") onWindow("frm歷史單價明細_採購", w => look("price history", w.visibleTexts()));
            g.doubleClick(4, "單價"); see("price history");
        }
        look("clipboard", [g.copy(1, "申購單號", g.lineCount, "備註"), g.copy(3, "單價", 3, "小計"), clipboard()]);
        g.enter(3, "單價"); s.press("F7"); spoken();
        // a stored one
        find(s, orders[family]);
        see("stored order");
        g.enter(1, "小計"); see("cell 小計");
        look("clipboard", [g.copy(1, "代號", g.lineCount, "未交數")]);
        onWindow("*", w => look("change history", w.visibleTexts()));
        s.panel(8);
        s.press("PageUp"); see("stored order"); s.press("PageDown");
        // the search page, by all its conditions
        s.press("F2"); s.click("scmd查詢條件"); s.set("txt查詢內容(2)", "20240101");
        for (let i = 0; i < 9; i++) {
            s.choose("sopt查詢條件(" + i + ")"); s.click("scmd確定");
            look("search", s.visibleTexts()); see("search");
            s.click("scmd查詢條件");
        }
        s.click("scmd取消");
        // the batch page, with the lines of a document
        s.toolbar("整批審單"); s.set("txt訂單日期1", "20240101"); s.click("scmd確定1");
        const batch = s.grid("fml整批審單");
        for (let i = 1; i <= batch.lineCount; i++) if (batch.cell(i, "採購單號") === orders[family]) { batch.enter(i, "廠商代號"); batch.enter(i, "採購單號"); }
        see("batch page");
        s.close();
    });
    // What stands beside the orders: requisitions with their item window, receipts as they open and as they are searched.
    const r = launch({ function: "資材申購作業", user });
    ["紙板", "物料"].forEach(family => {
        r.choose("Cbo類別", family);
        onWindow("frm原料輔助視窗_申購", w => look("requisition's item window", w.visibleTexts()));
        r.grid("fml明細").key(1, "原料代號", "F9");
    });
    look("requisition", r.visibleTexts());
    r.close();
    ["物料入庫作業", "浪紙入庫作業"].forEach(f => {
        const w = launch({ function: f, user });
        look("receipt", w.visibleTexts()); w.press("PageUp"); look("receipt", w.visibleTexts());
        const lines = w.grid("fml明細");
        const shown = lines.titles.filter(t => lines.visible(t));
        shown.forEach(t => { lines.enter(1, t); look("receipt's cells", w.visibleTexts()); });
        look("receipt copied", [lines.copy(1, shown[0], lines.lineCount, shown[shown.length - 1])]);
        w.press("F2"); w.click("scmd查詢條件"); w.set("txt查詢內容(2)", "20240101"); w.click("scmd確定"); look("receipts found", w.visibleTexts());
        spoken(); w.close();
    });
    return found;
};
tolerate(true);
const seen = walk("admin"), hidden = walk("採購乙");
tolerate(false);
note(looked + " texts looked at");
check(looked > 50000, "the walk looks at many texts");
equal(Object.keys(hidden).filter(p => hidden[p].length > 0).map(p => [p, hidden[p].slice(0, 3)]), [], "not one marker without the right");
["requisition loaded", "line window", "item window", "new order", "cell 小計", "clipboard", "stored order", "status bar", "search", "price history", "batch page",
 "requisition's item window", "receipt", "receipt copied", "receipts found"].forEach(p => check(seen[p].length > 0, "with the right there are markers in: " + p));
equal(Object.keys(hidden), Object.keys(seen), "both went the same way");

// ---- masked, entered, edited, saved: the real prices go through
const s = launch({ function: "紙板採購作業", user: "採購乙" });
const g = s.grid("fml明細");
equal([s.locked("cbo幣別"), s.locked("txt合計"), s.get("txt合計"), s.get("lbl合計金額")], [true, true, "******", "******"], "currency and total are locked, the total is masked");
vendor(s, "V001");
equal(s.get("cbo幣別"), "台幣", "the vendor's currency all the same");
inWindow("frm原料輔助視窗_採購", w => equal(["進價", "幣別", "庫存"].map(t => w.grid("MSHFlexGrid1").visible(t)), [false, false, true], "no price in the window"), "Enter");
g.type(1, "代號", "KMKC-01");
fill(g, 1, { 規格: "100*50", 大紙數: "40", 剖切尺寸: "50*50" });
equal(cells(g, 1, "單價", "小計", "原單價", "原小計"), ["******", "******", P, String(0.5 * 40 * P)], "masked in sight, real behind");
g.enter(1, "小計");
equal(s.status(6), "計價公式: ******", "the formula's text too");
const denied = [["warning", "提示", "您還沒有權限進行這項操作,請咨詢管理員!"]];
shows(() => g.type(1, "單價", "1"), denied, "a price cannot be typed");
shows(() => { g.enter(1, "單價"); s.press("Backspace"); s.press("Del"); s.press("Enter"); }, denied, "nor wiped out");
for (const [text, red] of [["******", false], ["5", true]]) {
    g.paste(1, "單價", text);
    equal([cells(g, 1, "單價", "原單價"), g.colour(1, "單價") === "#ffd6d6"], [["******", P], red], "pasted over: " + text);
}
const kept = () => [value("select 進價 from 浪紙資料 where 浪紙代號='KMKC-01'"), count("歷史單價記錄", "1=1")];
const before = kept();
const n = saveNew(s);
const saved = (quantity, what) => {
    const amount = String(0.5 * quantity * P);
    equal(db.query("select 數量,單價,小計,計價公式 from 採購明細資料 where 採購單號='" + n + "'").map(l => Object.values(l)),
        [[String(quantity), P, amount, "計價公式: 100*50*" + P + "*" + quantity + "/10000"]], what);
    equal([value("select 合計 from 採購資料 where 採購單號='" + n + "'"), ...texts(s, "txt合計", "txt合計備用")], [amount, "******", amount], "with the total");
};
saved(40, "real figures in the tables");
equal(kept(), before, "no price goes back to the item");
for (const [title, text, what] of [["大紙數", "10", "a changed quantity at the real price"], ["備註", "只改備註", "nothing lost by a change of the remark"]]) {
    g.type(1, title, text);
    save(s);
    saved(10, what);
}
