// A buyer who sees the vendors and orders of two salespersons only: in look-ups, windows, counts, navigation, quick find and search.
clock("2025-03-03 08:30:00");
const mine = "業務員代號 in ('S03','S04')";
const orders = where => count("採購資料", "類別='物料' and " + where);
db.execute("update 採購資料 set 業務員代號='S01' where 類別='物料' and 採購單號 like '%1'");
check(orders("not " + mine) > 0 && orders(mine) > 100, "there are orders of both kinds");
db.execute("update 廠商資料 set 業務員代號='S02' where 廠商代號='V020'");

const s = launch({ function: "物料採購作業", user: "採購丙" });
equal([session("salesScope"), s.mode, s.status(4)], [" And (業務員代號='S03' Or 業務員代號='S04' ) ", "新增", String(orders(mine))], "the scope; only these are counted");

// ---- vendors
const vendors = values("select 廠商代號 from 廠商資料 where 廠商類別 like '%物料%' and 報廢與否<>'Y' and " + mine + " order by 廠商代號");
check(vendors.length > 5 && !vendors.includes("V020"), "vendors of both kinds");
const offered = w => column(w.grid("MSHFlexGrid1"), "廠商代號");
["V020", value("select 廠商簡稱 from 廠商資料 where 廠商代號='V020'")].forEach(text => {
    onWindow("frm廠商輔助畫面", w => equal(offered(w), vendors, "another's vendor is not found by " + text));
    vendor(s, text);
    equal(s.get("lbl廠商簡稱"), "", "nor taken");
});
onWindow("frm廠商輔助畫面", w => { equal(offered(w), vendors.filter(v => v.startsWith("V02")), "by prefix within the scope"); w.press("Enter"); });
vendor(s, "V02");
check(vendors.includes(s.get("txt廠商代號")), "one of one's own");

// ---- navigation
const own = values("select 採購單號 from 採購資料 where 類別='物料' and " + mine + " order by 製單時間,採購日期,採購單號");
s.toolbar("edit");
equal([s.mode, s.get("txt採購單號"), s.status(2)], ["修改", own[own.length - 1], String(own.length)], "the latest of one's own");
for (let i = 2; i <= 15; i++) {
    s.press("PageUp");
    equal(s.get("txt採購單號"), own[own.length - i], "one back, " + i);
}
s.press("Ctrl+Home");
equal([s.get("txt採購單號"), s.status(2)], [own[0], "1"], "the first of one's own");

// ---- quick find and search
const foreign = value("select top 1 採購單號 from 採購資料 where 類別='物料' and not " + mine + " order by 採購單號 desc");
stops(() => find(s, foreign), "warning", "提示", "查無此採購單,請確認輸入單號是否正確!", "another's order is not found");
find(s, own[5]);
equal(s.get("txt採購單號"), own[5], "one's own is");
s.press("F2");
s.click("scmd查詢條件");
s.set("txt查詢內容(2)", "20200101");
const lines = where => value("select count(*) as n from 採購資料 a inner join 採購明細資料 b on a.採購單號=b.採購單號 where a.類別='物料' and " + where + " and a." + mine);
search(s);
equal(s.grid("MSHFlexGrid1").lineCount, lines("a.採購日期 between '20200101' and '20250303'"), "the search finds one's own only");
s.click("scmd查詢條件");
s.choose("sopt查詢條件(6)");
search(s, "0");
equal(s.grid("MSHFlexGrid1").lineCount, lines("(a.審單<>'Y' or a.審單 is null) and a.採購日期<'20250303'"), "nor among the late ones");
s.click("scmd回前畫面_查詢");

// ---- a family of which nothing is one's own; who has no scope sees all, an administrator too whatever rows there are
equal([count("採購資料", "類別='紙板' and " + mine), launch({ function: "紙板採購作業", user: "採購丙" }).status(4)], [0, "0"], "no board orders");
insert("使用者業務明細", { 使用者: "admin", 業務員代號: "S03" });
["採購甲", "admin"].forEach(user => equal(launch({ function: "物料採購作業", user }).status(4), String(orders("1=1")), user + " sees all"));
