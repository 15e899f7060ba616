// Deleting orders: the question, the two guards, what goes and what is given back to the requisitions.
clock("2025-03-03 08:30:00");
const told = () => messages().map(m => [m.icon, m.title, m.text]);
const count = (table, n, key = "採購單號") => db.query("select count(*) as n from " + table + " where " + key + "='" + n + "'")[0].n;
const there = n => [count("採購資料", n), count("採購明細資料", n)];
const question = answer => onMessage("刪除詢問", "確定要刪除此筆資料?", answer);
const Asked = ["question", "刪除詢問", "確定要刪除此筆資料?"];
const got = () => db.query("select 申購單號,序,已采購數 from 原料申購明細 order by 申購單號,序");

let s = launch({ function: "紙板採購作業", user: "採購甲" });
const find = n => { s.set("txt速查單號", n); s.press("Enter"); equal(s.get("txt採購單號"), n, n + " is on show"); };
check(!s.enabled("toolbar:del"), "a new order has nothing to delete");
s.press("F3");
equal(told(), [], "and F3 does nothing there");

// An order that came from a requisition, not yet approved and not received.
const victim = db.query("select top 1 採購明細資料.採購單號 from 採購明細資料 inner join 採購資料 on 採購資料.採購單號=採購明細資料.採購單號 " +
    "inner join 原料申購明細 on 原料申購明細.申購單號=採購明細資料.請購單號 and 原料申購明細.原料代號=採購明細資料.原料代號 " +
    "where 採購資料.類別='紙板' and 採購資料.審單='N' and cast(原料申購明細.已采購數 as float)>0 and 採購明細資料.採購單號 not in " +
    "(select 採購單號 from 採購明細資料 where cast(已入庫數 as float)>0) order by 採購明細資料.採購單號 desc")[0]["採購單號"];
find(victim);
const whole = there(victim);
check(whole[1] > 0, "the order has lines");
question("no");
s.press("F3");
equal([told(), there(victim), s.get("txt採購單號")], [[Asked], whole, victim], "no leaves it");
question("no");
s.toolbar("del");
equal(there(victim), whole, "by the key as well");

// The guards look at the database, not at the screen.
db.execute("update 採購資料 set 審單='Y' where 採購單號='" + victim + "'");
messages();
question("yes");
onMessage("提示", "該單已審單﹐不允許刪除!");
s.press("F3");
equal([told(), there(victim)], [[Asked, ["warning", "提示", "該單已審單﹐不允許刪除!"]], whole], "an approved order stays");
db.execute("update 採購資料 set 審單='N' where 採購單號='" + victim + "'");
db.execute("update 採購明細資料 set 已入庫數='1' where 採購單號='" + victim + "' and 序=1");
question("yes");
onMessage("刪除警告", "本單據有相關入庫資料﹐不能刪除!");
s.press("F3");
const guard = told();
equal([guard[1].slice(1), there(victim), s.get("txt採購單號")], [["刪除警告", "本單據有相關入庫資料﹐不能刪除!"], whole, victim], "a received order stays");
db.execute("update 採購明細資料 set 已入庫數='0' where 採購單號='" + victim + "' and 序=1");

// What is stored counts, not what was on show; the requisition gets it back.
db.execute("update 採購明細資料 set 數量='3' where 採購單號='" + victim + "' and 序=1");
db.execute("insert into 採購資料報表2 (採購單號,序) values ('" + victim + "',1)");
const lines = db.query("select 請購單號,原料代號,數量 from 採購明細資料 where 採購單號='" + victim + "' order by 序");
const expected = got();
for (const line of lines) {
    const row = db.query("select 序,已采購數 from 原料申購明細 where 申購單號='" + line["請購單號"] + "' and 原料代號='" + line["原料代號"] + "'")[0];
    if (!row || Number(row["已采購數"]) <= 0) continue;
    const mine = expected.find(r => r["申購單號"] === line["請購單號"] && r["序"] === row["序"]);
    mine["已采購數"] = String(Number(mine["已采購數"]) - Number(line["數量"]));
}
question("yes");
onMessage("資料刪除", "資料刪除完畢!");
s.press("F3");
equal(told(), [Asked, ["information", "資料刪除", "資料刪除完畢!"]], "yes deletes, and says so");
equal([there(victim), count("採購資料報表2", victim)], [[0, 0], 0], "header, lines and print rows are gone");
equal(got(), expected, "each quantity is off its requisition, and nothing else");
const latest = db.query("select top 1 採購單號 from 採購資料 where 類別='紙板' order by 製單時間 desc,採購日期 desc,採購單號 desc")[0]["採購單號"];
equal([s.mode, s.get("txt採購單號"), s.modified], ["修改", latest, false], "the latest order is on show");
equal(s.status(4), "" + db.query("select count(*) as n from 採購資料 where 類別='紙板'")[0].n, "one less in all");

// A requisition line that counts nothing as bought keeps it.
const poor = db.query("select top 1 採購單號 from 採購資料 where 類別='紙板' and 審單='N' order by 採購單號 desc")[0]["採購單號"];
db.execute("update 採購明細資料 set 已入庫數='0' where 採購單號='" + poor + "'");
const need = db.query("select top 1 申購單號,原料代號 from 原料申購明細 order by 申購單號 desc")[0];
db.execute("update 採購明細資料 set 請購單號='" + need["申購單號"] + "',原料代號='" + need["原料代號"] + "' where 採購單號='" + poor + "'");
db.execute("update 原料申購明細 set 已采購數='0' where 申購單號='" + need["申購單號"] + "'");
const rest = got();
find(poor);
question("yes");
onMessage("資料刪除", "資料刪除完畢!");
s.toolbar("del");
equal([there(poor), got()], [[0, 0], rest], "nothing falls below nothing");

// The last order of a family.
db.execute("delete from 採購資料 where 類別='凸版'");
db.execute("insert into 採購資料 (採購單號,類別,採購日期,審單,製單時間) values ('250301001','凸版','20250301','N','2025-03-01 09:00:00')");
s = launch({ function: "凸版採購作業", user: "採購甲" });
s.toolbar("edit");
question("yes");
onMessage("資料刪除", "資料刪除完畢!");
onMessage("訊息", "資料庫無任何資料, 請先新增資料!");
s.press("F3");
check(!s.enabled("toolbar:del") && !s.enabled("toolbar:save"), "with the last order gone there is nothing to save or delete");
equal([s.get("txt採購單號"), s.get("lbl廠商簡稱"), s.grid("fml明細").lineCount], ["", "", 0], "and nothing of it is left on the screen");
