// The other user of two_users.js, in a process of its own: changes the order that was touched last, while it is open there.
clock("2025-03-03 10:00:00");
const number = value("select 採購單號 from 採購資料 where 工單單號='共用'");
const s = openOrder("主管甲", number);
s.grid("fml明細").type(1, "備註", "另一程序");
save(s);
equal([s.modified, value("select 備註 from 採購明細資料 where 採購單號='" + number + "' and 序=1")], [false, "另一程序"], "and saved");
