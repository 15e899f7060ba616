// Deleting orders: the question, the two guards, what goes and what is given back to the requisitions.
clock("2025-03-03 08:30:00");
const there = n => ["採購資料", "採購明細資料", "採購資料報表2"].map(table => count(table, "採購單號='" + n + "'"));

let s = launch({ function: "紙板採購作業", user: "採購甲" });
check(!s.enabled("toolbar:del"), "a new order has nothing to delete");
shows(() => s.press("F3"), [], "and F3 does nothing there");

// An order that came from a requisition, not yet approved and not received.
const victim = value("select top 1 採購明細資料.採購單號 from 採購明細資料 inner join 採購資料 on 採購資料.採購單號=採購明細資料.採購單號 " +
    "inner join 原料申購明細 on 原料申購明細.申購單號=採購明細資料.請購單號 and 原料申購明細.原料代號=採購明細資料.原料代號 " +
    "where 採購資料.類別='紙板' and 採購資料.審單='N' and cast(原料申購明細.已采購數 as float)>3 and 採購明細資料.序=1 and 採購明細資料.採購單號 not in " +
    "(select 採購單號 from 採購明細資料 where cast(已入庫數 as float)>0) order by 採購明細資料.採購單號 desc");
insert("採購資料報表2", { 採購單號: victim, 序: 1 });
find(s, victim);
const whole = there(victim);
check(whole[1] > 0, "the order has lines");
const No = ["question", "刪除詢問", "確定要刪除此筆資料?", "no"];
shows(() => s.press("F3"), [No], "who says no is asked");
shows(() => s.toolbar("del"), [No], "by the key as well");

// The guards look at the database, not at the screen.
db.execute("update 採購資料 set 審單='Y' where 採購單號='" + victim + "'");
shows(() => s.press("F3"), [DeleteSure, ["warning", "提示", "該單已審單﹐不允許刪除!"]], "an approved order stays");
db.execute("update 採購資料 set 審單='N' where 採購單號='" + victim + "'");
db.execute("update 採購明細資料 set 已入庫數='1' where 採購單號='" + victim + "' and 序=1");
shows(() => s.press("F3"), [DeleteSure, ["warning", "刪除警告", "本單據有相關入庫資料﹐不能刪除!"]], "a received order stays");
equal([there(victim), s.get("txt採購單號")], [whole, victim], "whole, and on show");
db.execute("update 採購明細資料 set 已入庫數='0' where 採購單號='" + victim + "' and 序=1");

// What is stored counts, not what was on show; the requisition gets it back.
db.execute("update 採購明細資料 set 數量='3' where 採購單號='" + victim + "' and 序=1");
const line = one("select 請購單號,原料代號 from 採購明細資料 where 採購單號='" + victim + "' and 序=1");
const got = () => Number(value("select 已采購數 from 原料申購明細 where 申購單號='" + line["請購單號"] + "' and 原料代號='" + line["原料代號"] + "'"));
const before = got();
shows(() => s.press("F3"), [DeleteSure, Deleted], "yes deletes, and says so");
equal([there(victim), got()], [[0, 0, 0], before - 3], "header, lines and print rows are gone, the quantity is off its requisition");
const latest = value("select top 1 採購單號 from 採購資料 where 類別='紙板' order by 製單時間 desc,採購日期 desc,採購單號 desc");
equal([s.mode, s.get("txt採購單號"), s.modified, s.status(4)], ["修改", latest, false, "" + count("採購資料", "類別='紙板'")], "the latest order is on show; one less in all");

// The last order of a family.
db.execute("delete from 採購資料 where 類別='凸版'");
insert("採購資料", { 採購單號: "250301001", 類別: "凸版", 採購日期: "20250301", 審單: "N", 製單時間: "2025-03-01 09:00:00" });
s = launch({ function: "凸版採購作業", user: "採購甲" });
s.toolbar("edit");
shows(() => s.press("F3"), [DeleteSure, Deleted, ["information", "訊息", "資料庫無任何資料, 請先新增資料!"]], "the last order goes");
check(!s.enabled("toolbar:del") && !s.enabled("toolbar:save"), "there is nothing left to save or delete");
equal([s.get("txt採購單號"), s.get("lbl廠商簡稱"), s.grid("fml明細").lineCount], ["", "", 0], "and nothing of it is left on the screen");
