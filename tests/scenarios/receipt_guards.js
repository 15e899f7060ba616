// What a receipt refuses and asks: closed months, approval, rights, hidden prices, goods sent back, two users, a failing database.
clock("2025-03-03 08:30:00");
const clean = what => equal(stage.run("liaowu-db", ["check", stage.defaultConnection()]), 0, what);
const one = text => db.query(text)[0];
const Refused = "您還沒有權限進行這項操作,請與管理員聯繫";
const says = (doing, expected, what) => {
    messages();
    for (const [title, text, answer] of expected) onMessage(title, text, answer);
    doing();
    equal(messages().map(m => [m.title, m.text]), expected.map(m => [m[0], m[1]]), what);
};
const vendor = one("select top 1 廠商代號 from 廠商資料 where 廠商類別 like '%物料%' order by 廠商代號")["廠商代號"];
const codes = db.query("select top 2 物料代號 from 物料資料 order by 物料代號").map(r => r["物料代號"]);
const stock = i => Number(one("select 庫存 from 物料資料 where 物料代號='" + codes[i] + "'")["庫存"]);
const line = (order, n) => Object.values(one("select 已入庫數, 未交數, 送清 from 採購明細資料 where 採購單號='" + order + "' and 序=" + n));
const header = number => one("select * from 原料入庫資料 where 入庫單號='" + number + "'");
db.execute("insert into 採購資料 (採購單號, 類別, 採購日期, 廠商代號, 審單, 幣別) values ('250228901', '物料', '20250228', '" + vendor + "', 'Y', '台幣')");
codes.forEach((code, i) => db.execute("insert into 採購明細資料 (採購單號, 序, 原料代號, 原料名稱, 數量, 單價, 單位, 寬剖, 已入庫數, 未交數, 送清) values ('250228901', " +
    (i + 1) + ", '" + code + "', '料', '10', '77.13', 'kg', '1', '0', '10', 'N')"));
const open = (user = "主管甲", name = "物料入庫作業") => launch({ function: name, user });
const enter = (s, quantity, row = 1, move = 0) => {
    onWindow("frm採購輔助視窗", w => { for (let i = 0; i < move; ++i) w.press("Down"); w.press("Enter"); });
    const g = s.grid("fml明細");
    g.type(row, "採購單號", "250228901");
    g.type(row, "數量", quantity);
};
const begin = (s, date = "20250303") => {
    s.press("F1");
    s.set("txt入庫日期", date);
    onWindow("frm廠商輔助視窗_驗收", w => w.press("Enter"));
    s.set("txt廠商代號", vendor);
    s.key("txt廠商代號", "Enter");
};
const added = ["資料儲存", "資料儲存完畢!"], sure = ["詢問", "確定更新此筆資料?", "yes"], updated = ["資料更新", "資料儲存完畢!"];

// ---- fields ----
let s = open();
begin(s, "");
says(() => s.press("F8"), [["錯誤", "「入庫日期」欄位不允許空白!"]], "a date is needed");
equal(s.focused(), "txt入庫日期", "the focus goes there");
s.set("txt入庫日期", "20250230");
says(() => s.press("F8"), [["錯誤", "「入庫日期」日期輸入錯誤!"]], "and a real one");
s.set("txt入庫日期", "20250303");
s.set("txt付款年月", "");
says(() => s.press("F8"), [["錯誤", "「付款日期」日期輸入錯誤!"]], "a month of payment");
s.set("txt付款年月", "202505");
s.set("txt對帳日期", "202513");
says(() => s.press("F8"), [["錯誤", "「對帳月份」日期輸入錯誤!"]], "a month of reconciliation");
s.set("txt對帳日期", "202503");
says(() => s.grid("fml明細").type(2, "數量", "5"), [["警告", "前一列資料尚未輸入!"]], "rows are filled one after the other");

// ---- currencies ----
s.set("cbo幣別", "美金");
s.grid("fml明細").type(1, "採購單號", "");
enter(s, "1");
equal([s.get("cbo幣別"), s.notice()], ["台幣", ""], "an empty grid takes the order's currency without a word");
s.set("cbo幣別", "美金");
enter(s, "1", 2, 1);
equal([s.get("cbo幣別"), s.notice()], ["美金", "採購單 250228901 的幣別是台幣,與本單不同"], "a filled one keeps its own and says so");
s.click("scmd刪除");
s.grid("fml明細").enter(1, "數量");
s.click("scmd刪除");
equal([s.grid("fml明細").lineCount, s.get("txt合計")], [0, "0.00"], "all lines can go");

// ---- an unknown vendor is told ----
s.set("txt廠商代號", "ZZZ");
says(() => s.press("F8"), [added], "a receipt without lines is saved");
equal(s.notice(), "已儲存 " + s.get("txt入庫單號") + ",但查無廠商 ZZZ", "but nobody knows its vendor");
says(() => s.press("F3"), [["刪除詢問", "確定要刪除此筆資料?", "yes"], ["資料刪除", "資料刪除完畢!"]], "it is deleted");
begin(s);

// ---- a window that is left changes nothing ----
onWindow("frm採購輔助視窗", w => w.press("Esc"));
s.grid("fml明細").type(1, "採購單號", "25");
equal([s.grid("fml明細").lineCount, s.grid("fml明細").cell(1, "採購單號")], [0, ""], "the row stays empty");
enter(s, "4");
s.grid("fml明細").enter(1, "採購單號");
s.type("99");
onWindow("frm採購輔助視窗", w => w.press("Esc"));
s.press("F9");
equal([s.grid("fml明細").cell(1, "採購單號"), s.grid("fml明細").cell(1, "數量")], ["250228901", "4.0000"], "a line keeps its order; typing and F9 open one window");
onWindow("frm採購輔助視窗", w => { stage.failDatabaseAt(1); w.press("Enter"); });
onMessage("取得採購單資料錯誤", "*");
s.set("txt採購單號", "250228901");
s.key("txt採購單號", "Enter");
stage.failDatabaseAt(0);
equal([s.grid("fml明細").lineCount, s.grid("fml明細").cell(1, "數量")], [1, "4.0000"], "lines that cannot be read leave those on the screen");

// ---- closed months ----
const held = stock(0);
s.set("txt入庫日期", "20241115");
says(() => s.press("F8"), [added], "a new receipt of a closed month is saved");
const number = s.get("txt入庫單號");
equal([s.get("txt入庫日期"), header(number)["入庫日期"]], ["20241201", "20241201"], "on the first day after it");
check(rule.isMonthClosed("20241130", "物料") && !rule.isMonthClosed("20241201", "物料"), "the guard says so too");
db.execute("insert into 盤點資料_物料 values ('" + codes[0] + "', '2024-12-31', '0')");
s.set("txt備註", "改");
says(() => s.press("F8"), [["提示", "本月份已有結轉,不允許此操作"]], "a stored receipt of a closed month is not changed");
equal([s.get("txt備註"), s.modified], ["改", true], "and stays typed");
s.grid("fml明細").enter(1, "採購單號");
says(() => { s.click("scmd刪除"); s.press("F9"); }, [], "lines are neither taken out nor picked, without a word");
equal(s.grid("fml明細").lineCount, 1, "the line stays");

// ---- approval, in the closed month too ----
onWindow("frm單據審核", w => w.click("scmd確定"));
says(() => s.press("F12"), [["詢問", "操作成功,是否立即儲存?", "yes"], updated], "the receipt is approved");
equal([header(number)["審核"], header(number)["審核人"], header(number)["審核日期"]], ["Y", "吳國棟", "20250303"], "with person and day");
check(s.visible("pic復核"), "and its stamp");
equal([stock(0) - held, line("250228901", 1)], [4, ["4", "6", "N"]], "approval moves nothing");
db.execute("delete from 盤點資料_物料 where 盤點日期='2024-12-31'");
says(() => s.press("F8"), [["提示", "該單已審單,不允許修改"]], "an approved receipt is not changed");
s.grid("fml明細").type(1, "數量", "9");
equal(s.grid("fml明細").cell(1, "數量"), "4", "its quantity takes no key");
says(() => s.press("F3"), [["提示", "該單已審核﹐不允許刪除!"]], "nor deleted");
db.execute("update 採購明細資料 set 送清='Y' where 採購單號='250228901' and 序=1");
onWindow("frm單據審核", w => { w.choose("Opt審核(1)", "取消復核"); w.click("scmd確定"); });
says(() => s.toolbar("審核"), [["詢問", "操作成功,是否立即儲存?", "yes"], updated], "the approval is taken back");
equal([header(number)["審核"], header(number)["審核人"], s.visible("pic復核")], ["N", "", false], "without a trace");
equal(line("250228901", 1), ["4", "6", "Y"], "a line closed by hand stays closed");
s.set("txt業務員代號", "");
says(() => s.toolbar("審核"), [["提示", "請選擇入庫驗收員代號,名稱!"]], "approval needs a clerk");
clean("the plant is in order after approvals");
db.execute("update 採購明細資料 set 送清='N' where 採購單號='250228901' and 序=1");

// ---- from an inspection ----
db.execute("insert into 進料檢驗資料 values ('Q1', 'N', 'N')");
db.execute("update 原料入庫資料 set 檢驗單號='Q1' where 入庫單號='" + number + "'");
s = open();
s.set("txt速查單號", number);
s.click("scmd速查");
onWindow("frm單據審核", w => w.click("scmd確定"));
says(() => s.toolbar("審核"), [["詢問", "操作成功,是否立即儲存?", "yes"], updated], "a receipt of an inspection is approved");
equal(one("select 入庫確認 from 進料檢驗資料 where 檢驗單號='Q1'")["入庫確認"], "Y", "which the inspection learns");
onWindow("frm單據審核", w => { w.choose("Opt審核(1)", "取消復核"); w.click("scmd確定"); });
says(() => s.toolbar("審核"), [["詢問", "操作成功,是否立即儲存?", "yes"], updated], "and taken back");
equal(one("select 入庫確認 from 進料檢驗資料 where 檢驗單號='Q1'")["入庫確認"], "N", "too");
says(() => s.press("F3"), [["刪除詢問", "確定要刪除此筆資料?", "yes"], ["錯誤", "該單由進料檢驗自動產生,不允許刪除"]], "it is not deleted");
equal(stock(0) - held, 4, "nothing moved");

// ---- rights ----
says(() => equal(open("訪客"), null, "no screen"), [["提示", Refused]], "who may not look does not get in");
const grant = (right, mark) => db.execute("update 使用者明細 set [" + right + "]='" + mark + "' where 使用者='倉管甲' and 模塊='frm物料入庫作業'");
for (const right of ["新增", "修改", "刪除"]) grant(right, "");
s = open("倉管甲");
says(() => s.press("F1"), [["提示", Refused]], "without the right nothing is added");
says(() => s.press("F8"), [["提示", Refused]], "changed");
says(() => s.press("F3"), [["提示", Refused]], "or deleted");
says(() => s.toolbar("審核"), [["提示", "您還沒有權限進行這項操作,請與管理員聯係"]], "or approved");
for (const right of ["新增", "修改", "刪除"]) grant(right, "√");

// ---- hidden prices ----
s = open("倉管甲");
check(s.locked("txt合計") && s.locked("cbo幣別"), "money is locked");
begin(s);
enter(s, "2", 1, 1);
let g = s.grid("fml明細");
equal([g.cell(1, "單價"), g.cell(1, "小計"), s.get("txt合計"), g.cell(1, "原單價"), g.cell(1, "原小計")], ["******", "******", "******", "77.13", "154.26"], "the price is hidden and real");
g.type(1, "單價", "1");
equal(g.cell(1, "單價"), "******", "nobody types what he may not see");
["數量", "單價", "小計", "備註"].forEach(title => { g.enter(1, title); check(!s.visibleTexts().join().includes("154.26"), "no amount beside " + title); });
check(!s.visibleTexts().join().includes("77.13"), "and no price anywhere");
says(() => s.press("F8"), [added], "the receipt is saved");
const hidden = s.get("txt入庫單號");
equal(Object.values(one("select 單價, 小計 from 原料入庫明細 where 入庫單號='" + hidden + "'")), ["77.13", "154.26"], "with its real price");
says(() => s.press("F8"), [sure, updated], "and again");
equal(header(hidden)["合計"], "154.26", "the total is the real one");
s.press("F2");
check(s.grid("MSHFlexGrid1").cell(1, "單價") === "******", "the list hides it too");
clean("the plant is in order without prices");

// ---- goods sent back on this screen ----
s = open();
begin(s);
s.set("Cbo單別", "退貨");
onWindow("frm採購輔助視窗_退貨", w => w.press("Enter"));
g = s.grid("fml明細");
g.type(1, "採購單號", "250228901");
equal([g.cell(1, "採購序"), g.cell(1, "數量")], ["1", "-4"], "what came can go");
g.type(1, "數量", "-3");
equal(g.cell(1, "數量"), "-3.0000", "one sign is enough");
g.type(1, "數量", "1");
g.type(1, "備品", "2");
equal([g.cell(1, "數量"), g.cell(1, "備品")], ["-1.0000", "-2.0000"], "and comes by itself");
says(() => s.press("F8"), [added], "the return is saved");
const back = s.get("txt入庫單號");
equal([stock(0) - held, line("250228901", 1)], [1, ["3", "7", "N"]], "it leaves the stock and opens the order");
clean("the plant is in order after goods went back");
s = open();
check(s.get("txt入庫單號") !== back, "it is not among the receipts");
s.set("txt速查單號", back);
s.click("scmd速查");
equal([s.get("txt入庫單號"), s.get("Cbo單別")], [back, "退貨"], "but can be asked for");
says(() => s.press("F3"), [["刪除詢問", "確定要刪除此筆資料?", "yes"], ["資料刪除", "資料刪除完畢!"]], "and deleted");
equal(stock(0) - held, 4, "it is back in stock");
clean("the plant is in order after the return is gone");

// ---- a number that exists, and one that was typed ----
s = open();
begin(s);
enter(s, "1");
s.set("txt入庫單號", hidden);
says(() => s.press("F8"), [["儲存錯誤", "入庫單號重複!"]], "a number that exists is refused");
equal([s.get("txt入庫單號"), s.grid("fml明細").cell(1, "數量")], [hidden, "1.0000"], "all stays typed");
s.set("txt入庫單號", "A-1");
says(() => s.press("F8"), [added], "another one is taken");
equal(s.get("txt入庫單號"), "A-1", "as it was typed");
begin(s);
enter(s, "1", 1, 1);
stage.beforeStatement("BEGIN", () => db.execute("insert into 原料入庫資料 (入庫單號, 類別, 單別, 製單時間) values ('2503030003', '紙品', '采購入庫', '2025-03-03')"));
says(() => s.press("F8"), [["儲存錯誤", "入庫單號重複!"]], "a number that was drawn and taken meanwhile is refused");
equal([s.get("txt入庫單號"), s.modified], ["2503030003", true], "it stays on show");
says(() => s.press("F8"), [added], "the next save draws anew");
equal([s.get("txt入庫單號"), line("250228901", 2)], ["2503030004", ["3", "7", "N"]], "the next one");

// ---- no number to be had ----
s = open();
begin(s);
enter(s, "1");
tolerate(true);
messages();
stage.failDatabaseAt(1);
s.press("F8");
stage.failDatabaseAt(0);
equal(messages().map(m => m.title + m.text).filter(m => !/流水號/.test(m)), ["錯誤「入庫單號」欄位不可為空白!"], "without a number nothing is saved");
tolerate(false);

// ---- approved, or gone, since it was opened ----
s = open("倉管甲");
s.set("txt速查單號", hidden);
s.click("scmd速查");
db.execute("update 原料入庫資料 set 審核='Y', 審核人='主管' where 入庫單號='" + hidden + "'");
says(() => s.press("F8"), [sure, ["提示", "該入庫單已審核﹐不能再進行修改!"]], "who may not approve does not overwrite an approval");
db.execute("update 原料入庫資料 set 審核='N', 審核人='' where 入庫單號='" + hidden + "'");
const other = open();
other.set("txt速查單號", hidden);
other.click("scmd速查");
says(() => other.press("F3"), [["刪除詢問", "確定要刪除此筆資料?", "yes"], ["資料刪除", "資料刪除完畢!"]], "another screen deletes the receipt");
says(() => s.press("F8"), [sure, ["更新錯誤", "入庫單 " + hidden + " 已由其他使用者刪除!"]], "a receipt that is gone is not written");
says(() => s.press("F5"), [["還原詢問", "確定要還原此筆資料?", "yes"], ["錯誤", "依入庫單號顯示資料發生錯誤!"]], "nor shown");
says(() => s.press("F3"), [["刪除詢問", "確定要刪除此筆資料?", "yes"], ["刪除錯誤", "入庫單 " + hidden + " 已由其他使用者刪除!"]], "nor undone twice");
clean("the plant is in order after all that");
s = open();
s.set("txt速查單號", "A-1");
s.click("scmd速查");

// ---- somebody else saved meanwhile ----
db.execute("update 原料入庫資料 set 修改人='別人', 修改時間='2025-03-03 09:00:00' where 入庫單號='A-1'");
db.execute("update 原料入庫明細 set 數量='2' where 入庫單號='A-1'");
db.execute("update 採購明細資料 set 已入庫數='6', 未交數='4' where 採購單號='250228901' and 序=1");
db.execute("update 物料資料 set 庫存='" + (stock(0) + 1) + "' where 物料代號='" + codes[0] + "'");
const conflict = "此單開啟後已由別人於2025-03-03 09:00:00修改,確定以畫面資料覆蓋?";
s.grid("fml明細").type(1, "數量", "3");
says(() => s.press("F8"), [sure, ["詢問", conflict, "no"]], "the other's receipt is not overwritten unasked");
equal(s.grid("fml明細").cell(1, "數量"), "3.0000", "the typing stays");
says(() => s.press("F8"), [sure, ["詢問", conflict, "yes"], updated], "but on demand");
equal(line("250228901", 1), ["7", "3", "N"], "what the other had posted is undone");
clean("the plant is in order after two users");

// ---- a database that fails ----
s.set("txt備註", "一");
const stored = JSON.stringify([db.query("select * from 原料入庫明細 where 入庫單號='A-1'"), line("250228901", 1), stock(0)]);
let struck = 0, asked = true;
tolerate(true);
for (let n = 1; n < 200; ++n) {
    messages();
    // A call that fails before the question leaves its answer for the next round.
    if (asked) onMessage(...sure);
    stage.failDatabaseAt(n);
    s.press("F8");
    stage.failDatabaseAt(0);
    const told = messages().map(m => m.title);
    asked = told.includes("詢問");
    if (told.includes("資料更新")) break;
    ++struck;
    equal([told.pop(), s.get("txt備註"), JSON.stringify([db.query("select * from 原料入庫明細 where 入庫單號='A-1'"), line("250228901", 1), stock(0)])],
        ["更新錯誤", "一", stored], "call " + n + " fails as a whole");
}
tolerate(false);
note("receipt save: " + struck + " calls struck");
check(struck > 20 && struck < 199, "the save was reached");
clean("the plant is in order after failures");
