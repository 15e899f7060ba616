// The approval of an order: the dialog, what it writes, what an approved order refuses, and sites without approval.
clock("2025-03-03 08:30:00");
const told = () => messages().map(m => [m.icon, m.title, m.text]);
const stops = (doing, title, text, what) => {
    messages();
    onMessage(title, text);
    doing();
    equal(told(), [["warning", title, text]], what);
};
const stored = n => {
    const r = db.query("select 審單,審單人,審單日期 from 採購資料 where 採購單號='" + n + "'")[0];
    return [r["審單"], r["審單人"], r["審單日期"]];
};
const open = (user, number, more = {}) => {
    const w = launch(Object.assign({ function: "紙板採購作業", user }, more));
    w.set("txt速查單號", number);
    w.press("Enter");
    equal(w.get("txt採購單號"), number, number + " is on show for " + user);
    return w;
};
const save = (w, answer = "yes") => { onMessage("詢問", "確定更新此筆資料?", answer); w.press("F8"); };
const [first, second, third, fourth] = db.query("select top 4 採購單號 from 採購資料 where 類別='紙板' and 審單='N' and 廠商代號<>'' order by 採購單號 desc").map(r => r["採購單號"]);
const question = answer => onMessage("詢問", "操作成功,是否立即儲存?", answer);

// ---- the dialog ----
let s = open("主管甲", first);
onWindow("frm單據審核", w => {
    equal([w.get("Opt審核(0)"), w.get("Opt審核(1)")], ["審    單", "取消審單"], "the words of the choice");
    equal([w.get("txt業務員代號"), w.get("lbl業務員名稱")], ["S05", "吳國棟"], "the user's own name is proposed");
    check(w.enabled("Opt審核(0)") && w.enabled("Opt審核(1)"), "both ways are open");
    equal([w.colour("Opt審核(0)"), w.colour("Opt審核(1)")], ["#0000ff", "#808080"], "to approve is chosen, in blue");
    w.click("Opt審核(1)");
    equal([w.colour("Opt審核(0)"), w.colour("Opt審核(1)")], ["#808080", "#0000ff"], "a click moves the blue");
    w.click("Opt審核(0)");
    screenshot("out/approval_dialog.png");
    w.click("scmd取消");
});
s.toolbar("審單");
onWindow("frm單據審核", w => w.press("Esc"));
s.toolbar("審單");
equal([s.get("txt審單"), s.visible("pic審單"), s.modified, stored(first)], ["N", false, false, ["N", "", ""]], "cancel and Esc leave all as it was");

onWindow("frm單據審核", w => {
    w.set("lbl業務員名稱", "吳");
    equal(w.get("txt業務員代號"), "", "another name has no code");
    stops(() => w.click("scmd確定"), "提示", "[經辦人員]不能為空!", "one character is no name");
    check(w.open, "the dialog stays");
    w.set("lbl業務員名稱", "林佩珊");
    w.press("Enter");
    equal([w.get("txt業務員代號"), w.get("lbl業務員名稱")], ["S01", "林佩珊"], "a name is looked up");
    w.set("txt業務員代號", "s02");
    equal(w.get("txt業務員代號"), "S02", "codes are in capitals");
    w.key("lbl業務員名稱", "Enter");
    equal([w.get("txt業務員代號"), w.get("lbl業務員名稱")], ["S02", "陳柏宇"], "and by its code");
    onWindow("frm業務輔助視窗", p => p.press("Esc"));
    w.set("lbl業務員名稱", "無此人");
    w.press("Enter");
    equal([w.get("txt業務員代號"), w.get("lbl業務員名稱")], ["", "無此人"], "nothing picked, nothing changed");
    onWindow("frm業務輔助視窗", p => { p.grid("MSHFlexGrid1").enter(3, "人員名稱"); p.press("Enter"); });
    w.press("Enter");
    equal([w.get("txt業務員代號"), w.get("lbl業務員名稱")], ["S03", "黃雅筑"], "a pick fills both");
    onWindow("frm業務輔助視窗", p => { equal(p.get("txt查詢"), "", "the button presets nothing"); p.press("Enter"); });
    w.click("scmd業務員");
    equal(w.get("lbl業務員名稱"), "林佩珊", "the button's pick too");
    w.key("scmd確定", "Enter");
});
question("no");
s.toolbar("審單");
equal([s.get("txt審單"), s.get("txt審單項(0)"), s.get("txt審單項(1)"), s.visible("pic審單"), s.modified],
    ["Y", "林佩珊", "20250303", true, true], "without a save the stamp is on the screen");
equal(stored(first), ["N", "", ""], "and only there");
s.toolbar("edit");
s.set("txt速查單號", first);
s.press("Enter");
check(!s.visible("pic審單") && s.get("txt審單") === "N", "another look at the order loses it");
onWindow("frm單據審核", w => w.click("scmd確定"));
question("no");
s.toolbar("審單");
save(s);
equal(stored(first), ["Y", "吳國棟", "20250303"], "the next save brings it into the database");
screenshot("out/approval_stamped.png");

// ---- an approved order ----
stops(() => s.press("F8"), "提示", "該單已審單,不允許修改", "an approved order is not saved again");
stops(() => s.toolbar("save"), "提示", "該單已審單,不允許修改", "by the key neither");
onWindow("frm單據審核", w => w.click("scmd確定"));
stops(() => s.toolbar("審單"), "提示", "該單已審單,請先取消審單", "nor approved again");
const g = s.grid("fml明細");
const line = [g.cell(1, "單價"), g.cell(1, "大紙數"), g.cell(1, "單位")];
g.type(1, "單價", "77");
g.type(1, "大紙數", "77");
g.enter(1, "單位");
equal([g.cell(1, "單價"), g.cell(1, "大紙數"), g.cell(1, "單位"), g.list()], line.concat([[]]), "price, quantity and unit are shut");
g.enter(1, "送清");
equal(g.list().slice(1), ["Y"], "the end of deliveries is not");
s.press("Esc");

// ---- taking it back needs no name ----
onWindow("frm單據審核", w => {
    w.click("Opt審核(1)");
    w.set("lbl業務員名稱", "x");
    w.click("scmd確定");
});
question("yes");
s.toolbar("審單");
equal([stored(first), s.visible("pic審單"), s.get("txt審單")], [["N", "", ""], false, "N"], "mark, person and day are gone");
g.type(1, "備註", "可改");
save(s);
check(!s.modified, "it can be saved again");

// ---- lines typed before the approval keep their numbers ----
const n = g.lineCount;
g.type(n + 1, "內部品名", "補一行");
for (const [title, text] of [["單位", "pcs"], ["走紙才", "1"], ["大紙數", "5"]]) g.type(n + 1, title, text);
onWindow("frm單據審核", w => w.click("scmd確定"));
question("yes");
s.toolbar("審單");
const numbers = () => db.query("select 序 from 採購明細資料 where 採購單號='" + first + "' order by 序").map(r => r["序"]);
const given = numbers();
equal([given.length, g.cell(n + 1, "採購序")], [n + 1, "" + given[n]], "the new line is stored under its number");
onWindow("frm單據審核", w => { w.click("Opt審核(1)"); w.click("scmd確定"); });
question("yes");
s.toolbar("審單");
equal(numbers(), given, "and keeps it at the next save");

// ---- one right only ----
const rights = (a, b) => db.execute("update 使用者明細 set 審單='" + a + "',批轉='" + b + "' where 使用者='主管甲' and 模塊='frm紙板採購作業'");
rights("", "√");
s = open("主管甲", second);
onWindow("frm單據審核", w => {
    equal([w.enabled("Opt審核(0)"), w.enabled("Opt審核(1)"), w.colour("Opt審核(1)")], [false, true, "#0000ff"], "only to take back");
    w.click("scmd確定");
});
question("yes");
s.toolbar("審單");
equal(stored(second), ["N", "", ""], "on an open order that changes nothing");
rights("√", "");
s = open("主管甲", second);
onWindow("frm單據審核", w => {
    equal([w.enabled("Opt審核(0)"), w.enabled("Opt審核(1)"), w.colour("Opt審核(0)")], [true, false, "#0000ff"], "only to approve");
    w.click("scmd確定");
});
question("yes");
s.toolbar("審單");
equal(stored(second)[0], "Y", "approved");
rights("√", "√");

// ---- a received order, with the right to take receipts ----
const received = db.query("select top 1 採購資料.採購單號 from 採購資料 inner join 原料入庫明細 on 採購資料.採購單號=原料入庫明細.採購單號 " +
    "where 採購資料.類別='紙板' and 採購資料.審單='Y' order by 採購資料.採購單號 desc")[0]["採購單號"];
s = open("主管甲", received);
onWindow("frm單據審核", w => { w.click("Opt審核(1)"); w.click("scmd確定"); });
question("yes");
s.toolbar("審單");
equal(stored(received), ["N", "", ""], "its approval can be taken back");

// ---- approved meanwhile ----
const approve = number => db.execute("update 採購資料 set 審單='Y',審單人='吳國棟',審單日期='20250303' where 採購單號='" + number + "'");
s = open("採購甲", third);
s.set("txt工單單號", "未存");
approve(third);
onMessage("提示", "該採購單已審單﹐不能再進行修改!");
save(s);
equal(told().slice(-1), [["warning", "提示", "該採購單已審單﹐不能再進行修改!"]], "who cannot approve cannot save what was approved meanwhile");
equal([s.get("txt工單單號"), s.modified, stored(third)[0]], ["未存", true, "Y"], "the typing is kept");
s = open("主管甲", fourth);
s.set("txt工單單號", "未存");
approve(fourth);
onMessage("詢問", "此單開啟後已由吳國棟於20250303修改,確定以畫面資料覆蓋?", "no");
save(s);
equal([s.get("txt工單單號"), stored(fourth)[0]], ["未存", "Y"], "who can is asked");

// ---- a site without approval ----
const enter = w => {
    w.set("txt廠商代號", "V001");
    w.press("Enter");
    const grid = w.grid("fml明細");
    for (const [title, text] of [["內部品名", "自訂紙板"], ["單位", "pcs"], ["走紙才", "1"], ["大紙數", "5"], ["單價", "3"]]) grid.type(1, title, text);
    w.press("F8");
    return w.get("txt採購單號");
};
s = launch({ function: "紙板採購作業", user: "採購甲", approval: "N" });
check(!s.visible("toolbar:審單"), "there is no key to approve");
check(!s.visible("pic審單"), "and no stamp on a new order");
const born = enter(s);
equal(stored(born), ["Y", "林佩珊", "20250303"], "it is born approved");
check(!s.visible("pic審單"), "which shows nowhere");
s.grid("fml明細").type(1, "單價", "4");
save(s);
equal(db.query("select 單價,小計 from 採購明細資料 where 採購單號='" + born + "'")[0], { "單價": "4", "小計": "20" }, "price and order stay open");
onMessage("刪除詢問", "確定要刪除此筆資料?", "yes");
onMessage("資料刪除", "資料刪除完畢!");
s.press("F3");
equal(db.query("select 審單 from 採購資料 where 採購單號='" + born + "'"), [], "and can be deleted");

// ---- neither word: approval is there, its guard of a save is not ----
s = launch({ function: "紙板採購作業", user: "主管甲", approval: "" });
check(s.visible("toolbar:審單"), "without a word the key is there");
const plain = enter(s);
equal(stored(plain), ["N", "", ""], "a new order is open");
onWindow("frm單據審核", w => w.click("scmd確定"));
question("yes");
s.toolbar("審單");
check(s.visible("pic審單"), "and can be approved");
s.set("txt工單單號", "可存");
save(s);
equal([db.query("select 工單單號 from 採購資料 where 採購單號='" + plain + "'")[0]["工單單號"], stored(plain)[0]], ["可存", "Y"], "an ordinary save passes");
onMessage("刪除詢問", "確定要刪除此筆資料?", "yes");
onMessage("提示", "該單已審單﹐不允許刪除!");
s.press("F3");
equal(told().slice(-1), [["warning", "提示", "該單已審單﹐不允許刪除!"]], "the guard of a deletion holds");

// ---- plates ----
s = launch({ function: "凸版採購作業", user: "主管甲" });
equal([s.title, s.items("Cbo類別")], ["紙板採購作業", ["凸版"]], "plates have the page of board and a word of their own");
const plate = enter(s);
equal(db.query("select 類別 from 採購資料 where 採購單號='" + plate + "'")[0]["類別"], "凸版", "which the order keeps");
onWindow("frm單據審核", w => w.click("scmd確定"));
question("yes");
s.toolbar("審單");
equal(stored(plate)[0], "Y", "approved like any other");
