// One of several clients that enter orders for the same items on one database at the same time.
tolerate(true);
const codes = values("select top 3 物料代號 from 物料資料 order by 物料代號");
const s = launch({ function: "物料採購作業", user: "admin" });
for (let n = 0; n < crowd.saves; ++n) {
    s.press("F1");
    vendor(s, "V001");
    s.set("txt工單單號", "C" + crowd.worker + "-" + n);
    codes.forEach((code, i) => {
        item(s, i + 1, code);
        s.grid("fml明細").type(i + 1, "大紙數", String(10 + n));
    });
    crowd.save(s, "採購明細中有重復的原物料或採購單號重復!", "order " + n);
}
crowd.report();
