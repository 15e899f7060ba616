// The other user of two_users.js, who saves while the first one is in the midst of a save.
clock("2025-03-03 11:00:00");
const s = launch({ function: "物料採購作業", user: "主管甲" });
s.toolbar("edit");
const number = s.get("txt採購單號");
s.set("txt工單單號", "等候");
shows(() => s.press("F8"), [Sure, ["critical", "更新錯誤", "資料庫正被其他使用者鎖定,請稍候再試!"]], "a locked database is told");
equal([s.get("txt工單單號"), s.modified, value("select 工單單號 from 採購資料 where 採購單號='" + number + "'")], ["等候", true, ""], "the typing stays, nothing was written");
