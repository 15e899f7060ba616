// What a user without a right is told, screen by screen, and what counts as a right.
clock("2025-03-03 08:30:00");
const Refused = "您還沒有權限進行這項操作,請與管理員聯繫";
const grant = (right, mark, module = "frm紙板採購作業", user = "採購甲") =>
    db.execute("update 使用者明細 set [" + right + "]='" + mark + "' where 使用者='" + user + "' and 模塊='" + module + "'");
const refuses = (doing, what, text = Refused) => {
    messages();
    onMessage("提示", text);
    doing();
    equal(messages().map(m => [m.icon, m.title, m.text]), [["warning", "提示", text]], what);
};
const order = (user, name = "紙板採購作業") => launch({ function: name, user });

// To see a screen at all.
const screens = ["物料採購作業", "紙板採購作業", "凸版採購作業", "原料計價公式", "單位換算公式"];
for (const name of screens) {
    refuses(() => equal(order("訪客", name), null, name + " does not open"), name + " refuses a user whose rights are blank");
    refuses(() => equal(order("無此人", name), null, name + " stays shut"), name + " refuses a user that nobody knows");
    check(order("採購甲", name), name + " opens for a buyer");
}
for (const [mark, opens] of [[" √ ", true], ["Y", false], ["1", false], ["√√", false], ["", false], ["√", true]]) {
    grant("查看", mark);
    if (opens) check(order("採購甲"), "the mark '" + mark + "' is a right");
    else refuses(() => equal(order("採購甲"), null, "'" + mark + "' opens nothing"), "the mark '" + mark + "' is no right");
}
db.execute("update 使用者明細 set 查看=null where 使用者='採購甲' and 模塊='frm紙板採購作業'");
refuses(() => equal(order("採購甲"), null, "no value opens nothing"), "no value is no right");
check(order("採購甲", "物料採購作業"), "each module has rights of its own");
db.execute("delete from 使用者明細 where 使用者='採購甲' and 模塊='frm紙板採購作業'");
refuses(() => equal(order("採購甲", "凸版採購作業"), null, "no row, no screen"), "plates stand under the rights of board");
db.execute("insert into 使用者明細 (使用者,模塊,查看,新增,修改,刪除,打印,金額) values ('採購甲','frm紙板採購作業','√','√','√','√','√','√')");

// An administrator needs no rows, in whichever way the mark is written.
db.execute("delete from 使用者明細 where 使用者='admin'");
for (const mark of ["1", "y", " True ", "√"]) {
    db.execute("update 使用者資料 set 管理者='" + mark + "' where 使用者='admin'");
    const a = order("admin");
    check(a && a.mode === "新增" && a.visible("toolbar:整批審單"), "an administrator marked '" + mark + "' may do everything");
}
db.execute("update 使用者資料 set 管理者='0' where 使用者='admin'");
refuses(() => equal(order("admin"), null, "no administrator any more"), "without the mark and without rows nothing opens");

// To add: the screen opens on the last document instead.
grant("新增", "");
let s = order("採購甲");
equal(s.mode, "修改", "without the right to add the screen opens for editing");
const last = s.get("txt採購單號");
refuses(() => s.press("F1"), "F1 is refused");
refuses(() => s.toolbar("add"), "the key 新增 is refused");
equal([s.mode, s.get("txt採購單號")], ["修改", last], "the document stays on show");
check(!s.locked("txt工單單號") && s.enabled("txt工單單號"), "its fields stay open");
// Rights are read when a screen opens.
grant("新增", "√");
refuses(() => s.press("F1"), "a right given meanwhile counts at the next launch only");
s = order("採購甲");
equal(s.mode, "新增", "and there it counts");

// To change. Adding is another matter.
grant("修改", "");
s = order("採購甲");
s.set("txt廠商代號", "V001");
s.press("Enter");
s.press("F8");
const added = s.get("txt採購單號");
check(added.startsWith("250303"), "a new order is saved without the right to change");
s.set("txt工單單號", "改");
refuses(() => s.press("F8"), "F8 on a stored order is refused");
refuses(() => s.toolbar("save"), "and so is the key 儲存");
check(s.open, "the screen stays open");
equal(s.get("txt工單單號"), "改", "what was typed stays");
equal(db.query("select 工單單號 from 採購資料 where 採購單號='" + added + "'")[0]["工單單號"], "", "nothing was written");
grant("修改", "√");

// To delete.
grant("刪除", "");
s = order("採購甲");
s.toolbar("edit");
refuses(() => s.press("F3"), "F3 is refused");
refuses(() => s.toolbar("del"), "the key 刪除 is refused");
equal([s.mode, s.get("txt採購單號")], ["修改", added], "mode and document stay");
equal(db.query("select count(*) as n from 採購資料 where 採購單號='" + added + "'")[0].n, 1, "nothing was deleted");
grant("刪除", "√");

// To print.
grant("打印", "");
s = order("採購甲");
refuses(() => s.press("F4"), "F4 is refused");
equal(s.mode, "新增", "the mode stays");

onMessage("列印", "列印功能尚未提供!");
order("主管甲").press("F4");

// To approve or take back; the word of this refusal is another.
s.toolbar("edit");
refuses(() => s.toolbar("審單"), "approval without either right", "您還沒有權限進行這項操作,請與管理員聯係");
check(!s.visible("toolbar:整批審單"), "without 批審 there is no key for batches");
check(order("主管甲").visible("toolbar:整批審單"), "with 批審 there is");

// To take back the approval of what was received already.
const received = db.query("select top 1 採購資料.採購單號 from 採購資料 inner join 原料入庫明細 on 採購資料.採購單號=原料入庫明細.採購單號 " +
    "where 採購資料.類別='紙板' and 採購資料.審單='Y' order by 採購資料.採購單號 desc")[0]["採購單號"];
grant("驗收", "", "frm紙板採購作業", "主管甲");
s = order("主管甲");
s.set("txt速查單號", received);
s.press("Enter");
equal(s.get("txt採購單號"), received, "a received order is on show");
refuses(() => s.toolbar("審單"), "its approval cannot be taken back", "此採購單已有入庫產生,反審單被取消!");
check(s.visible("pic審單"), "the stamp stays");

// To see and type money.
s = order("採購乙");
check(s.locked("cbo幣別") && s.locked("txt合計"), "currency and total are locked");
s.set("txt速查單號", db.query("select top 1 採購單號 from 採購資料 where 類別='紙板' and 審單='N' and 採購單號<'2503' order by 採購單號 desc")[0]["採購單號"]);
s.press("Enter");
const g = s.grid("fml明細");
equal([g.cell(1, "單價"), g.cell(1, "小計"), s.get("txt合計"), s.get("lbl合計金額")],
    ["******", "******", "******", "******"], "money is masked");
const real = g.cell(1, "原單價");
refuses(() => g.type(1, "單價", "99"), "a price cannot be typed", "您還沒有權限進行這項操作,請咨詢管理員!");
equal([g.cell(1, "單價"), g.cell(1, "原單價")], ["******", real], "and nothing of it stays");
refuses(() => { g.enter(1, "單價"); s.press("Backspace"); s.press("Del"); s.press("Enter"); }, "nor wiped out",
    "您還沒有權限進行這項操作,請咨詢管理員!");

// Formulas: looking is one right, saving another.
grant("修改", "", "frm資材計價公式");
const f = order("採購甲", "原料計價公式");
f.grid("fml明細").type(1, "計算公式", "單價*數量");
refuses(() => f.press("F8"), "formulas are not saved without the right to change");
refuses(() => f.toolbar("save"), "nor by the key");
check(f.open && f.modified, "what was typed stays");
equal(db.query("select count(*) as n from 採購計價公式 where 類別='紙板' and 公式='單價*數量'")[0].n, 0, "nothing was written");
