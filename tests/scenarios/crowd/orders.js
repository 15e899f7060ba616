// One of several clients that enter orders for the same items on one database at the same time.
tolerate(true);
const codes = db.query("select top 3 物料代號 from 物料資料 order by 物料代號").map(r => r["物料代號"]);
const s = launch({ function: "物料採購作業", user: "admin" });
for (let n = 0; n < crowd.saves; ++n) {
    s.press("F1");
    s.set("txt廠商代號", "V001");
    s.press("Enter");
    s.set("txt工單單號", "C" + crowd.worker + "-" + n);
    const g = s.grid("fml明細");
    codes.forEach((code, i) => {
        onWindow("frm原料輔助視窗_採購", w => w.press("Enter"));
        g.type(i + 1, "代號", code);
        g.type(i + 1, "大紙數", String(10 + n));
    });
    crowd.save(s, "採購明細中有重復的原物料或採購單號重復!", "order " + n);
}
crowd.report();
