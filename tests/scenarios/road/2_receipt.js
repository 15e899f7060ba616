// The main road goes on: what was ordered for the requisition comes in, and the stock knows it.
clock("2025-03-04 09:00:00");
const order = one("select top 1 採購資料.採購單號, 採購資料.廠商代號 from 採購資料 inner join 採購明細資料 on 採購資料.採購單號=採購明細資料.採購單號 " +
    "where 採購資料.類別='物料' and 審單='Y' and 送清<>'Y' and cast(數量 as float)-cast(coalesce(已入庫數,'') as float)>0 order by 採購資料.採購單號 desc");
const asked = value("select distinct 請購單號 from 採購明細資料 where 採購單號='" + order["採購單號"] + "'");
equal(asked.slice(0, 6), "250303", "the latest order to come is the one of the requisition");
const r = launch({ function: "物料入庫作業", user: "主管甲" });
r.press("F1");
r.set("Cbo倉別", r.items("Cbo倉別")[1]);
receivingVendor(r, order["廠商代號"]);
onWindow("frm採購輔助視窗", w => { screenshot("out/7_order_lines.png"); w.press("Enter"); });
r.set("txt採購單號", order["採購單號"]);
r.key("txt採購單號", "Enter");
const came = r.grid("fml明細");
check(came.lineCount > 0, "what is open of the order comes in");
const held = () => Number(value("select 庫存 from 物料資料 where 物料代號='" + came.cell(1, "原料代號") + "'"));
const had = held(), quantity = Number(came.cell(1, "數量"));
came.enter(1, "數量");
screenshot("out/8_receipt.png");
shows(() => r.press("F8"), [Added], "the receipt is saved");
equal(r.get("txt入庫單號").slice(0, 6), "250304", "the receipt has its number");
check(Math.abs(held() - had - quantity) < 1e-6, "the stock has risen by what came");
