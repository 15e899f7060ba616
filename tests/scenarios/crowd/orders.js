// One of several clients that enter orders for the same items on one database at the same time. A number that another client
// took first gives its message, and F8 saves again under the next one. `worker` and `saves` come from the script before.
tolerate(true);
const { worker, saves } = crowd;
const codes = db.query("select top 3 物料代號 from 物料資料 order by 物料代號").map(r => r["物料代號"]);
const s = launch({ function: "物料採購作業", user: "admin" });
let again = 0, slowest = 0;
for (let n = 0; n < saves; ++n) {
    s.press("F1");
    s.set("txt廠商代號", "V001");
    s.press("Enter");
    s.set("txt工單單號", "C" + worker + "-" + n);
    const g = s.grid("fml明細");
    codes.forEach((code, i) => {
        onWindow("frm原料輔助視窗_採購", w => w.press("Enter"));
        g.type(i + 1, "代號", code);
        g.type(i + 1, "大紙數", String(10 + n));
    });
    for (let tries = 0; s.mode === "新增" && tries < 40; ++tries) {
        const started = Date.now();
        s.press("F8");
        slowest = Math.max(slowest, Date.now() - started);
        const told = messages();
        if (s.mode !== "新增") break;
        ++again;
        check(told.length === 1 && told[0].text === "採購明細中有重復的原物料或採購單號重復!", "a refused save says that the number was taken: " + JSON.stringify(told));
    }
    equal(s.mode, "修改", "order " + n + " is saved");
}
check(slowest < 5000, "nobody waits longer than the busy timeout: " + slowest + " ms");
note("client " + worker + ": " + saves + " saves, " + again + " again, slowest " + slowest + " ms");
