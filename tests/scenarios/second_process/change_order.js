// The other user of two_users.js, in a process of its own: changes the order that was touched last, while it is open there.
clock("2025-03-03 10:00:00");
const s = launch({ function: "紙板採購作業", user: "主管甲" });
const number = db.query("select 採購單號 from 採購資料 where 工單單號='共用'")[0]["採購單號"];
s.set("txt速查單號", number);
s.press("Enter");
equal(s.get("txt採購單號"), number, "the order is on show here as well");
s.grid("fml明細").type(1, "備註", "另一程序");
onMessage("詢問", "確定更新此筆資料?", "yes");
s.press("F8");
equal([s.modified, db.query("select 備註 from 採購明細資料 where 採購單號='" + number + "' and 序=1")[0]["備註"]], [false, "另一程序"],
    "and saved");
