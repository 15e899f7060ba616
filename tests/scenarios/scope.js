// A buyer who sees the vendors and orders of two salespersons only: in look-ups, windows, counts, navigation, quick find and search.
clock("2025-03-03 08:30:00");
const mine = "業務員代號 in ('S03','S04')";
const count = (family, where) => db.query("select count(*) as n from 採購資料 where 類別='" + family + "' and " + where)[0].n;
db.execute("update 採購資料 set 業務員代號='S01' where 類別='物料' and 採購單號 like '%1'");
check(count("物料", "not " + mine) > 0 && count("物料", mine) > 100, "there are orders of both kinds");
db.execute("update 廠商資料 set 業務員代號='S02' where 廠商代號='V020'");

const s = launch({ function: "物料採購作業", user: "採購丙" });
const g = s.grid("fml明細");
equal(session("salesScope"), " And (業務員代號='S03' Or 業務員代號='S04' ) ", "the scope");
equal([s.mode, s.status(4)], ["新增", String(count("物料", mine))], "only these are counted");

// ---- vendors
const vendors = db.query("select 廠商代號 from 廠商資料 where 廠商類別 like '%物料%' and 報廢與否<>'Y' and " + mine + " order by 廠商代號").map(r => r["廠商代號"]);
check(vendors.length > 5 && vendors.indexOf("V020") < 0, "vendors of both kinds");
const offered = w => { const list = w.grid("MSHFlexGrid1"), all = []; for (let i = 1; i <= list.lineCount; i++) all.push(list.cell(i, "廠商代號")); return all; };
["V020", db.query("select 廠商簡稱 from 廠商資料 where 廠商代號='V020'")[0]["廠商簡稱"]].forEach(text => {
    onWindow("frm廠商輔助畫面", w => { equal(offered(w), vendors, "another's vendor is not found by " + text); w.press("Esc"); });
    s.set("txt廠商代號", text); s.press("Enter");
    equal(s.get("lbl廠商簡稱"), "", "nor taken");
});
onWindow("frm廠商輔助畫面", w => { equal(offered(w), vendors.filter(v => v.slice(0, 3) === "V02"), "by prefix within the scope"); w.press("Enter"); });
s.set("txt廠商代號", "V02"); s.press("Enter");
check(vendors.indexOf(s.get("txt廠商代號")) >= 0, "one of one's own");

// ---- navigation
const order = db.query("select 採購單號 from 採購資料 where 類別='物料' and " + mine + " order by 製單時間,採購日期,採購單號").map(r => r["採購單號"]);
s.toolbar("edit");
equal([s.mode, s.get("txt採購單號"), s.status(2)], ["修改", order[order.length - 1], String(order.length)], "the latest of one's own");
for (let i = 2; i <= 15; i++) { s.press("PageUp"); equal(s.get("txt採購單號"), order[order.length - i], "one back, " + i); }
s.press("Ctrl+Home");
equal([s.get("txt採購單號"), s.status(2)], [order[0], "1"], "the first of one's own");
onMessage("訊息", "目前的資料錄位置在第一筆!");
s.press("PageUp");
s.press("PageDown");
equal([s.get("txt採購單號"), s.status(2)], [order[1], "2"], "one on");

// ---- quick find and search
const foreign = db.query("select top 1 採購單號 from 採購資料 where 類別='物料' and not " + mine + " order by 採購單號 desc")[0]["採購單號"];
onMessage("提示", "查無此採購單,請確認輸入單號是否正確!");
s.set("txt速查單號", foreign); s.press("Enter");
equal(s.get("txt採購單號"), order[1], "another's order is not found");
s.set("txt速查單號", order[5]); s.press("Enter");
equal(s.get("txt採購單號"), order[5], "one's own is");
s.press("F2"); s.click("scmd查詢條件"); s.set("txt查詢內容(2)", "20200101"); s.click("scmd確定");
const lines = where => db.query("select count(*) as n from 採購資料 a inner join 採購明細資料 b on a.採購單號=b.採購單號 where a.類別='物料' and a.採購日期 between '20200101' and '20250303' and a." + where)[0].n;
equal([s.grid("MSHFlexGrid1").lineCount, s.status(2)], [lines(mine), String(lines(mine))], "the search finds one's own only");
s.click("scmd查詢條件"); s.set("txt查詢內容(0)", foreign); s.click("scmd確定");
equal(s.grid("MSHFlexGrid1").lineCount, 0, "not even by number");
s.click("scmd查詢條件"); s.choose("sopt查詢條件(6)"); s.set("txt查詢內容(0)", "0"); s.click("scmd確定");
equal(s.grid("MSHFlexGrid1").lineCount, db.query("select count(*) as n from 採購資料 a inner join 採購明細資料 b on a.採購單號=b.採購單號 where a.類別='物料' and (a.審單<>'Y' or a.審單 is null) and a.採購日期<'20250303' and a." + mine)[0].n, "nor among the late ones");
s.click("scmd回前畫面_查詢");

// ---- a family of which nothing is one's own
const b = launch({ function: "紙板採購作業", user: "採購丙" });
equal([count("紙板", mine), b.status(4)], [0, "0"], "no board orders");
onMessage("訊息", "資料庫無任何資料, 請先新增資料!");
b.toolbar("edit");
equal(["del", "save", "first", "print", "previous", "next", "last", "審單"].filter(k => b.enabled("toolbar:" + k)), [], "nothing to work on");
onWindow("frm廠商輔助畫面", w => { equal(offered(w), [], "nor vendors"); w.press("Esc"); });
b.press("F1"); b.type("V001"); b.press("Enter");

// ---- who has no scope sees all, an administrator too whatever rows there are
db.execute("insert into 使用者業務明細 (使用者,業務員代號) values ('admin','S03')");
["採購甲", "admin"].forEach(user => equal(launch({ function: "物料採購作業", user }).status(4), String(count("物料", "1=1")), user + " sees all"));
