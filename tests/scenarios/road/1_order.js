// The main road: an order entered with the keyboard alone, priced by the plant's formulas, saved, approved, found again.
clock("2025-03-03 08:30:00");
const s = launch({ function: "紙板採購作業", user: "主管甲" });

// A vendor by its code, then the lines: code, size, quantity, price, unit, date; Enter moves from one to the next.
const boards = values("select top 3 浪紙代號 from 浪紙資料 where 進料單位='㎡' order by 浪紙代號");
s.type("V001");
s.press("Enter");
s.press("F6");
const g = s.grid("fml明細");
boards.forEach((code, i) => {
    inWindow("frm原料輔助視窗_採購", () => { if (i === 0) screenshot("out/2_pick.png"); }, "Enter");
    g.type(i + 1, "代號", code);
    g.type(i + 1, "剖切尺寸", "60*45");
    g.enter(i + 1, "規格");
    for (const text of ["120*90", String(100 * (i + 1))]) {
        s.type(text);
        s.press("Enter");
    }
    g.type(i + 1, "交貨日", "20250320");
});
equal([g.lineCount, g.cell(1, "走紙才")], [3, "2"], "three lines, two small sheets from each large one");
check(Number(s.get("txt合計")) > 0 && g.cell(1, "計價公式").startsWith("計價公式"), "priced by a formula; the total follows");
g.enter(1, "小計");
screenshot("out/1_order.png");
s.press("F8");
const number = s.get("txt採購單號");
equal([s.mode, number.slice(0, 6)], ["修改", "250303"], "the screen goes on with the saved order");

approve(s, { dialog: () => screenshot("out/3_approval.png") });
equal(value("select 審單 from 採購資料 where 採購單號='" + number + "'"), "Y", "the order is approved");

const again = launch({ function: "紙板採購作業", user: "主管甲" });
again.press("F2");
search(again, number);
equal(again.grid("MSHFlexGrid1").lineCount, 3, "the order is found by its number");
screenshot("out/4_search.png");
again.press("Enter");
equal([again.get("txt採購單號"), again.visible("pic審單")], [number, true], "and shown again, with its stamp");
screenshot("out/5_approved.png");

const f = launch({ function: "原料計價公式", user: "admin" });
f.grid("fml明細").enter(1, "計算公式");
screenshot("out/6_formulas.png");
