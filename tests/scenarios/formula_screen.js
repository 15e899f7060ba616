// The formulas' screen: both of its launches, the pad, limits, refusals of a save, and when a change takes effect.
const stored = kind => db.query("select 單位1,單位2,基本單位,計價單位,公式,序 from 採購計價公式 where 類別='" + kind + "' order by 序").map(r => Object.values(r));
const Saved = ["information", "儲存", "儲存完畢,新的設定必須重新調入採購作業系統或入庫作業系統才能生效"];
const Units = values("select 內容 from 片語資料 where 類別='AB-單位' and 分類='耗材類' order by 代號");
check(Units.length > 5 && Units.includes("pcs"), "there are units");
const board = stored("紙板"), paper = stored("紙品"), conversion = stored("單位換算");

// ---- two launches ----
let s = launch({ function: "單位換算公式", user: "admin" });
let g = s.grid("fml明細");
equal([s.name, s.title, g.titles, s.visible("SSPanel1")],
    ["frm原料計價公式", "單位換算公式", ["單位(長)", "單位(寬)", "庫存單位", "換算單位", "計算公式"], false], "conversions have no choice of family");
equal([g.lineCount, g.cell(1, "換算單位"), g.cell(1, "計算公式")], [conversion.length, "令", "數量*2000000/(長*寬*基重)"], "they are shown in their order");
const missing = (title, text) => {
    stops(() => s.press("F8"), "warning", "提示", text, "what is missing stops a save");
    equal(g.currentTitle(), title, "its cell is chosen");
};
g.type(6, "換算單位", "M");
missing("計算公式", "第6筆明細公式為必輸入項!");
fill(g, 6, { 換算單位: " ", 計算公式: "1" });
missing("換算單位", "第6筆明細計價單位為必輸入項目!");
equal(stored("單位換算"), conversion, "nothing was written");
s.close();

s = launch({ function: "原料計價公式", user: "採購甲" });
g = s.grid("fml明細");
equal([s.title, g.titles, s.visible("SSPanel1"), s.get("sopt類別(0)"), s.get("sopt類別(1)")],
    ["原料計價公式", ["單位(長)", "單位(寬)", "庫存單位", "計價單位", "計算公式"], true, "紙品", "紙板"], "prices start with board");
equal([g.lineCount, cells(g, 4, "單位(長)", "計算公式")], [board.length, ["CM", "長*寬*基重*單價*數量/10000000"]], "its formulas are shown");

// ---- cells ----
g.enter(1, "庫存單位");
equal([g.list(), s.visible("picCal")], [["pcs"].concat(Units.filter(u => u !== "pcs")), false], "a unit is chosen from those of materials");
s.press("Esc");
g.enter(5, "計價單位");
equal(g.list(), [""].concat(Units), "an empty one as well");
g.pick("令");
equal([g.cell(5, "計價單位"), g.lineCount], ["令", 5], "a pick starts a row");
for (const title of ["單位(長)", "單位(寬)", "庫存單位", "計價單位"]) {
    stops(() => g.type(5, title, "一二三四"), "warning", "訊息", "最多只可輸入6個字!", title + " holds six bytes");
    equal(g.cell(5, title), "一二三", "and keeps what fits, though no list has it");
}
const skipped = (title, doing) => stops(() => { g.enter(7, title); doing(); }, "warning", "警告", "前一列資料尚未輸入!", "rows are not skipped");
skipped("計價單位", () => { s.press("Esc"); s.type("M"); });
skipped("計算公式", () => s.click("scmdNum(1)"));
equal(g.lineCount, 5, "no row came of it");

// ---- the pad ----
g.enter(5, "計算公式");
check(s.visible("picCal"), "the pad comes with the formula");
const keys = ["0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "+", "-", "*", "/", ".", "寬", "長", "數量", "基重", "單價", "C", "高", ")", "("];
const press = i => s.click("scmdNum(" + i + ")");
let text = "";
keys.forEach((caption, i) => {
    equal(s.get("scmdNum(" + i + ")"), caption, "key " + i);
    if (caption === "C") return;
    press(i);
    text += caption;
    equal(g.cell(5, "計算公式"), text, caption + " is put behind");
});
press(20);
equal(g.cell(5, "計算公式"), text.slice(0, -1), "C takes one character off");
for (let i = 0; i < text.length + 3; ++i) press(20);
g.enter(5, "單位(長)");
equal([g.cell(5, "計算公式"), s.visible("picCal")], ["", false], "and nothing off nothing; the pad goes with the cell");
g.enter(5, "計算公式");
s.type("k*");
press(19);
equal(g.cell(5, "計算公式"), "K*單價", "typing is in capitals, and the pad goes on behind it");
for (const more of [() => g.type(5, "計算公式", "1".repeat(256)), () => { g.enter(5, "計算公式"); press(2); }])
    stops(more, "warning", "訊息", "最多只可輸入255個字!", "a formula has its limit");
equal(g.cell(5, "計算公式").length, 255, "it is full");

// ---- saving ----
fill(g, 5, { "計算公式": "數量^單價", "單位(長)": " ", "單位(寬)": " ", 庫存單位: " ", 計價單位: "件" });
shows(() => s.press("F8"), [Saved], "a formula is stored as typed, faults and all");
equal([stored("紙板"), stored("紙品"), stored("單位換算")], [board.concat([["", "", "", "件", "數量^單價", 5]]), paper, conversion], "behind the others, its empty units empty; other families stay");
g.enter(2, "單位(長)");
s.click("scmd刪除");
equal([g.lineCount, g.cell(2, "單位(長)"), s.focused()], [4, "CM", "fml明細"], "a row is taken away");
shows(() => s.toolbar("save"), [Saved], "the key 儲存");
equal([s.open && !s.modified, stored("紙板").map(r => [r[3], r[5]])], [true, [["㎡", 1], ["㎡", 2], ["kg", 3], ["件", 4]]], "does not end the screen; the numbers close up");

// Two rows that would be chosen alike.
const good = stored("紙板");
fill(g, 5, { "單位(長)": "CM", "單位(寬)": "cm", 庫存單位: "pcs", 計價單位: "KG", 計算公式: "數量" });
stops(() => s.press("F8"), "critical", "儲存錯誤", "保存失敗，請檢查公式設置是否有重複項", "duplicates are refused");
equal([stored("紙板"), g.lineCount, s.modified], [good, 5, true], "nothing is lost, the grid keeps its content");

// ---- the other family; what is not saved goes without a word ----
s.choose("sopt類別(0)");
equal([g.lineCount, g.cell(1, "計價單位"), s.modified], [paper.length, "令", false], "paper");
s.choose("sopt類別(1)");
equal(g.lineCount, 4, "and back to what is stored");
s.choose("sopt類別(0)");
paper.forEach(() => { g.enter(1, "計算公式"); s.click("scmd刪除"); });
check(g.lineCount === 0 && !s.enabled("scmd刪除"), "with nothing left there is nothing to take away");
shows(() => s.press("F8"), [Saved], "an empty grid is saved");
equal([stored("紙品"), stored("紙板"), stored("單位換算")], [[], good, conversion], "as no formula for paper");
g.type(1, "計算公式", "單價");
s.toolbar("exit");
check(!s.open, "the way out asks nothing");

// ---- a change reaches an order when its screen is started again ----
const boardScreen = () => launch({ function: "紙板採購作業", user: "採購甲" });
const running = boardScreen();
s = launch({ function: "原料計價公式", user: "採購甲" });
s.grid("fml明細").type(1, "計算公式", "長*寬*單價*數量/1000");
shows(() => s.press("F8"), [Saved], "the change is saved");
for (const [w, amount, what] of [[running, "20", "a screen that runs keeps its formulas"], [boardScreen(), "200", "the next one has the new ones"]]) {
    item(w, 1, value("select top 1 浪紙代號 from 浪紙資料 where 單位='pcs' and 進料單位='㎡'"));
    fill(w.grid("fml明細"), 1, { 規格: "100*100", 單位: "㎡", 單價: "2", 大紙數: "10" });
    equal(w.grid("fml明細").cell(1, "小計"), amount, what);
}
