// The road's side ways: board comes in line by line, a supervisor approves what waits, and a buyer without 金額 looks on.
clock("2025-03-05 10:00:00");
const board = value("select top 1 採購單號 from 採購資料 where 類別='紙板' and 採購日期='20250303' order by 採購單號 desc");
const line = () => Object.values(one("select cast(已入庫數 as float) as n,送清 from 採購明細資料 where 採購單號='" + board + "' and 序=1"));
const b = launch({ function: "浪紙入庫作業", user: "主管甲" });
b.press("F1");
b.set("Cbo倉別", b.items("Cbo倉別")[1]);
receivingVendor(b, "V001");
b.press("F6");
pick("frm採購輔助視窗");
const sheets = b.grid("fml明細");
sheets.type(1, "採購單號", board);
const open = Number(sheets.cell(1, "數量"));
check(sheets.lineCount === 1 && open > 1, "one line of the order comes in, with what is open of it");
sheets.type(1, "數量", String(open - 1));
sheets.enter(1, "數量");
screenshot("out/09_board_receipt.png");
shows(() => b.press("F8"), [Added], "the receipt is saved");
equal(line(), [open - 1, "N"], "the order waits for the rest");

b.press("F2");
b.click("scmd查詢條件");
screenshot("out/10_search_conditions.png");
b.click("scmd取消");

const batch = launch({ function: "物料採購作業", user: "主管甲" });
batch.toolbar("整批審單");
batch.set("txt訂單日期1", "20241101");
batch.click("scmd確定1");
const waiting = batch.grid("fml整批審單");
check(waiting.lineCount >= 2, "orders wait for approval");
const first = waiting.cell(1, "採購單號");
waiting.enter(2, "廠商代號");
waiting.enter(1, "採購單號");
waiting.doubleClick(1, "審單");
screenshot("out/11_batch.png");
batch.press("F8");
equal(value("select 審單 from 採購資料 where 採購單號='" + first + "'"), "Y", "what was marked is approved");

// What a spreadsheet holds is pasted in one go; a faulty cell waits in red.
const pasted = launch({ function: "紙板採購作業", user: "主管甲" });
vendor(pasted, "V001");
const codes = values("select top 3 浪紙代號 from 浪紙資料 where 進料單位='㎡' order by 浪紙代號");
pasted.grid("fml明細").paste(1, "代號", codes.map((code, i) => [code, "", "", "120*90", i === 1 ? "5包" : "200", "", "", "", "20250401", "", "60*45"].join("\t")).join("\r\n"));
equal(pasted.notice(), "已貼上 32 格,1 格有誤(紅底)", "one cell is at fault");
screenshot("out/13_paste.png");

// Part of the board goes back to its vendor.
const back = launch({ function: "浪紙入庫作業", user: "主管甲" });
back.press("F1");
back.set("Cbo單別", "退貨");
receivingVendor(back, "V001");
back.press("F6");
pick("frm採購輔助視窗_退貨");
const returned = back.grid("fml明細");
returned.type(1, "採購單號", board);
returned.type(1, "數量", "5");
equal(returned.cell(1, "數量"), "-5.0000", "the sign comes by itself");
returned.enter(1, "數量");
screenshot("out/14_return.png");
shows(() => back.press("F8"), [Added], "the return is saved");
equal(line(), [open - 6, "N"], "the order has it open again");

const masked = openOrder("採購乙", board);
masked.grid("fml明細").enter(1, "小計");
equal([masked.get("txt合計"), masked.grid("fml明細").cell(1, "單價")], ["******", "******"], "no money without the right");
screenshot("out/12_no_amount.png");

clean("at the end of the road");
