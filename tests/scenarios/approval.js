// The approval of an order: the dialog, what it writes, what an approved order refuses, and sites without approval.
clock("2025-03-03 08:30:00");
const stored = n => Object.values(one("select 審單,審單人,審單日期 from 採購資料 where 採購單號='" + n + "'"));
const [first, second, third, fourth] = values("select top 4 採購單號 from 採購資料 where 類別='紙板' and 審單='N' and 廠商代號<>'' order by 採購單號 desc");

// ---- the dialog ----
let s = openOrder("主管甲", first);
onWindow("frm單據審核", w => {
    const ways = of => ["Opt審核(0)", "Opt審核(1)"].map(way => w[of](way));
    equal([ways("get"), ways("enabled")], [["審    單", "取消審單"], [true, true]], "both ways are open");
    equal([w.get("txt業務員代號"), w.get("lbl業務員名稱"), ways("colour")], ["S05", "吳國棟", ["#0000ff", "#808080"]], "the user's own name is proposed; to approve is chosen, in blue");
    w.click("Opt審核(1)");
    equal(ways("colour"), ["#808080", "#0000ff"], "a click moves the blue");
    w.click("scmd取消");
});
s.toolbar("審單");
leave("frm單據審核");
s.toolbar("審單");
equal([s.get("txt審單"), s.visible("pic審單"), s.modified, stored(first)], ["N", false, false, ["N", "", ""]], "cancel and Esc leave all as it was");

onWindow("frm單據審核", w => {
    const named = (text, person, what) => {
        enter(w, "lbl業務員名稱", text);
        equal(texts(w, "txt業務員代號", "lbl業務員名稱"), person, what);
    };
    w.set("lbl業務員名稱", "吳");
    equal(w.get("txt業務員代號"), "", "another name has no code");
    stops(() => w.click("scmd確定"), "warning", "提示", "[經辦人員]不能為空!", "one character is no name");
    named("林佩珊", ["S01", "林佩珊"], "a name is looked up");
    w.set("txt業務員代號", "s02");
    w.key("lbl業務員名稱", "Enter");
    equal([w.get("txt業務員代號"), w.get("lbl業務員名稱")], ["S02", "陳柏宇"], "and by its code");
    leave("frm業務輔助視窗");
    named("無此人", ["", "無此人"], "nothing picked, nothing changed");
    pick("frm業務輔助視窗", "Down", "Down");
    named("無此人", ["S03", "黃雅筑"], "a pick fills both");
    inWindow("frm業務輔助視窗", p => equal(p.get("txt查詢"), "", "the button presets nothing"), "Enter");
    w.click("scmd業務員");
    equal(w.get("lbl業務員名稱"), "林佩珊", "the button's pick too");
    w.key("scmd確定", "Enter");
});
onMessage("詢問", "操作成功,是否立即儲存?", "no");
s.toolbar("審單");
equal([texts(s, "txt審單", "txt審單項(0)", "txt審單項(1)"), s.visible("pic審單"), s.modified, stored(first)], [["Y", "林佩珊", "20250303"], true, true, ["N", "", ""]],
    "without a save the stamp is on the screen, and only there");
s.toolbar("edit");
find(s, first);
check(!s.visible("pic審單") && s.get("txt審單") === "N", "another look at the order loses it");
approve(s, { answer: "no" });
save(s);
equal(stored(first), ["Y", "吳國棟", "20250303"], "the next save brings it into the database");

// ---- an approved order ----
stops(() => s.press("F8"), "warning", "提示", "該單已審單,不允許修改", "an approved order is not saved again");
onWindow("frm單據審核", w => w.click("scmd確定"));
stops(() => s.toolbar("審單"), "warning", "提示", "該單已審單,請先取消審單", "nor approved again");
const g = s.grid("fml明細");
const line = cells(g, 1, "單價", "大紙數", "單位");
fill(g, 1, { 單價: "77", 大紙數: "77" });
g.enter(1, "單位");
equal(cells(g, 1, "單價", "大紙數", "單位").concat(g.list()), line, "price, quantity and unit are shut");
g.enter(1, "送清");
equal(g.list().slice(1), ["Y"], "the end of deliveries is not");
s.press("Esc");
// Taking it back needs no name.
approve(s, { dialog: w => { w.click("Opt審核(1)"); w.set("lbl業務員名稱", "x"); } });
equal([stored(first), s.visible("pic審單"), s.get("txt審單")], [["N", "", ""], false, "N"], "mark, person and day are gone");

// ---- lines typed before the approval keep their numbers ----
const n = g.lineCount;
fill(g, n + 1, { 內部品名: "補一行", 單位: "pcs", 走紙才: "1", 大紙數: "5" });
approve(s);
const numbers = () => values("select 序 from 採購明細資料 where 採購單號='" + first + "' order by 序");
const given = numbers();
equal([given.length, g.cell(n + 1, "採購序")], [n + 1, "" + given[n]], "the new line is stored under its number");
takeBack(s);
equal(numbers(), given, "and keeps it at the next save");

// ---- one right only ----
const rights = (a, b) => db.execute("update 使用者明細 set 審單='" + a + "',批轉='" + b + "' where 使用者='主管甲' and 模塊='frm紙板採購作業'");
for (const [a, b, way, mark] of [["", "√", 1, "N"], ["√", "", 0, "Y"]]) {
    rights(a, b);
    s = openOrder("主管甲", second);
    approve(s, { dialog: w => equal([w.enabled("Opt審核(0)"), w.enabled("Opt審核(1)"), w.colour("Opt審核(" + way + ")")],
        [way === 0, way === 1, "#0000ff"], "only one way is open, and chosen") });
    equal(stored(second)[0], mark, "with that right the mark is " + mark);
}
rights("√", "√");
// A received order, with the right to take receipts.
const received = value("select top 1 採購資料.採購單號 from 採購資料 inner join 原料入庫明細 on 採購資料.採購單號=原料入庫明細.採購單號 " +
    "where 採購資料.類別='紙板' and 採購資料.審單='Y' order by 採購資料.採購單號 desc");
s = openOrder("主管甲", received);
takeBack(s);
equal(stored(received), ["N", "", ""], "its approval can be taken back");

// ---- approved meanwhile ----
for (const [user, number, told_, what] of [
    ["採購甲", third, ["warning", "提示", "該採購單已審單﹐不能再進行修改!"], "who cannot approve cannot save it"],
    ["主管甲", fourth, ["question", "詢問", "此單開啟後已由吳國棟於20250303修改,確定以畫面資料覆蓋?", "no"], "who can is asked"]]) {
    s = openOrder(user, number);
    s.set("txt工單單號", "未存");
    db.execute("update 採購資料 set 審單='Y',審單人='吳國棟',審單日期='20250303' where 採購單號='" + number + "'");
    shows(() => s.press("F8"), [Sure, told_], "approved meanwhile: " + what);
    equal([s.get("txt工單單號"), s.modified, stored(number)[0]], ["未存", true, "Y"], "the typing is kept");
}

// ---- a site without approval ----
s = launch({ function: "紙板採購作業", user: "採購甲", approval: "N" });
check(!s.visible("toolbar:審單"), "there is no key to approve");
ownOrder(s);
const born = saveNew(s);
equal([stored(born), s.visible("pic審單")], [["Y", "林佩珊", "20250303"], false], "an order is born approved, which shows nowhere");
s.grid("fml明細").type(1, "單價", "4");
save(s);
equal(one("select 單價,小計 from 採購明細資料 where 採購單號='" + born + "'"), { "單價": "4", "小計": "20" }, "price and order stay open");
remove(s);

// ---- neither word: approval is there, its guard of a save is not ----
s = launch({ function: "紙板採購作業", user: "主管甲", approval: "" });
check(s.visible("toolbar:審單"), "without a word the key is there");
ownOrder(s);
const plain = saveNew(s);
equal(stored(plain), ["N", "", ""], "a new order is open");
approve(s);
s.set("txt工單單號", "可存");
save(s);
equal(one("select 工單單號,審單 from 採購資料 where 採購單號='" + plain + "'"), { 工單單號: "可存", 審單: "Y" }, "approved, an ordinary save passes");
shows(() => s.press("F3"), [DeleteSure, ["warning", "提示", "該單已審單﹐不允許刪除!"]], "the guard of a deletion holds");
