// One of several clients that receive the same lines of the same order at the same time.
tolerate(true);
const s = launch({ function: "物料入庫作業", user: "admin" });
for (let n = 0; n < crowd.saves; ++n) {
    s.press("F1");
    s.set("txt廠商單號", "C" + crowd.worker + "-" + n);
    onWindow("frm廠商輔助視窗_驗收", w => w.press("Enter"));
    s.set("txt廠商代號", "V001");
    s.key("txt廠商代號", "Enter");
    onWindow("frm採購輔助視窗", w => w.press("Enter"));
    s.set("txt採購單號", "CROWD");
    s.key("txt採購單號", "Enter");
    const g = s.grid("fml明細");
    for (let row = 1; row <= g.lineCount; ++row) g.type(row, "數量", "1");
    crowd.save(s, "入庫單號重複!", "receipt " + n);
}
crowd.report();
