// One of several clients that receive the same lines of the same order at the same time.
tolerate(true);
const s = launch({ function: "物料入庫作業", user: "admin" });
for (let n = 0; n < crowd.saves; ++n) {
    s.press("F1");
    s.set("txt廠商單號", "C" + crowd.worker + "-" + n);
    receivingVendor(s, "V001");
    receivedOrder(s, "CROWD");
    const g = s.grid("fml明細");
    for (let row = 1; row <= g.lineCount; ++row) g.type(row, "數量", "1");
    crowd.save(s, "入庫單號重複!", "receipt " + n);
}
crowd.report();
