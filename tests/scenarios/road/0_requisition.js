// The main road begins with a need: a requisition, approved, and taken into an order by its number.
clock("2025-03-03 08:00:00");
const need = launch({ function: "資材申購作業", user: "主管甲" });
for (const [box, text] of [["Cbo類別", "物料"], ["Cbo請購原因", "安全庫存補充"], ["Cbo庫別", "物料倉"]]) need.choose(box, text);
need.set("txt需求日期", "20250320");
const wanted = values("select top 2 物料代號 from 物料資料 where 廠商代號='V013' order by 物料代號");
need.press("F6");
const lines = need.grid("fml明細");
wanted.forEach((code, i) => fill(lines, i + 1, { 原料代號: code, 數量: String(10 * (i + 1)) }));
lines.type(1, "用途說明", "安全庫存補料");
pick("frm片語輔助視窗");
need.click("scmd申購單位");
lines.enter(2, "數量");
need.press("F8");
const number = need.get("txt申購單號");
equal([need.mode, lines.lineCount, number.slice(0, 6)], ["修改", 2, "250303"], "the requisition has its number");
lines.enter(1, "數量");
screenshot("out/01_requisition.png");
approve(need);
check(need.visible("pic審單"), "and is approved");

// The buyer orders what is open of it, in the cell 申購單號.
const buy = launch({ function: "物料採購作業", user: "主管甲" });
vendor(buy, "V013");
buy.press("F6");
inWindow("frm原料輔助視窗_請購", w => {
    w.grid("MSHFlexGrid1").select(1, w.grid("MSHFlexGrid1").lineCount);
    screenshot("out/02_requisition_lines.png");
}, "Enter");
const ordered = buy.grid("fml明細");
ordered.type(1, "申購單號", number);
equal([ordered.lineCount, ordered.cell(1, "代號")], [2, wanted[0]], "both lines come into the order");
ordered.enter(1, "大紙數");
screenshot("out/03_order_from_requisition.png");
buy.press("F8");
equal(count("原料申購明細", "申購單號='" + number + "' and cast(數量 as float)=cast(已采購數 as float)"), 2, "nothing of the need is left open");
approve(buy);
check(buy.visible("pic審單"), "the order may be received");
