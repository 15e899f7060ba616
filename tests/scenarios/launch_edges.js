// Launch strings good and bad, and databases that cannot be reached or are none.
clock("2025-03-03 08:30:00");
const told = () => messages().map(m => [m.icon, m.title, m.text]);
const Connection = stage.defaultConnection();
const Refused = ["warning", "提示", "您還沒有權限進行這項操作,請與管理員聯繫"];
const say = rows => { messages(); for (const [, title, text] of rows) onMessage(title, text); };
const expect = (text, rows, what) => {
    say(rows);
    const s = launchString(text);
    equal(told(), rows, what);
    return s;
};

// ---- length ----
const Short = ["critical", "提示", "外部參數錯誤!"];
const markers = "&&連結&&=&&種類&&=&&用戶&&=&&審單&&=&&其它&&=";
const cut = markers.slice(0, 29);
equal(cut.length, 29, "29 characters");
equal(expect(cut, [Short], "29 characters are too few"), null, "and nothing opens");
equal(expect("  " + cut + " \t ", [Short], "blanks around do not count"), null, "nothing opens");
equal(expect("", [Short], "nothing at all is too short"), null, "nothing opens");
equal(expect("x".repeat(29), [Short], "whatever it says"), null, "nothing opens");

// ---- functions ----
const base = f => "&&連結&&=" + Connection + "&&種類&&=" + f + "&&用戶&&=admin&&審單&&=Y&&其它&&=";
for (const name of ["不存在", "", "紙板採購", "紙板採購作業x", "&&"]) equal(expect(base(name), [], "'" + name + "' opens nothing, in silence"), null, "no screen");
let s = expect("  " + base("  紙板採購作業 ") + "  ", [], "blanks around do no harm");
equal([s.name, session("screenFunction"), session("category"), session("formulaMode")], ["frm採購作業系統", "紙板採購作業", "紙板", ""], "the function is trimmed");
const table = [["物料採購作業", "frm採購作業系統", "物料採購作業", "物料", "", "物料採購作業"], ["紙板採購作業", "frm採購作業系統", "紙板採購作業", "紙板", "", "紙板採購作業"],
    ["凸版採購作業", "frm採購作業系統", "凸版採購作業", "凸版", "", "紙板採購作業"], ["單位換算公式", "frm原料計價公式", "", "", "單位換算", "單位換算公式"],
    ["原料計價公式", "frm原料計價公式", "", "", "計價公式", "原料計價公式"]];
for (const [name, screen, kept, category, mode, title] of table) {
    s = expect(base(name), [], name);
    equal([s.name, session("screenFunction"), session("category"), session("formulaMode"), s.title], [screen, kept, category, mode, title], name + " opens its screen");
    s.close();
    check(!s.open, "and closes it");
}
// Functions whose screen is still to come say so.
const more = [["紙品管理系統", "frm紙品管理系統", ""], ["物料管理系統", "frm物料管理系統", ""], ["浪紙管理系統", "frm浪紙管理系統", ""],
    ["資材申購作業", "frm申購作業系統", ""], ["紙品入庫作業", "frm原料入庫作業", "紙品"], ["物料入庫作業", "frm原料入庫作業", "物料"],
    ["浪紙入庫作業", "frm原料入庫作業", "紙板"], ["紙板退料作業", "frm紙板退料作業", "紙板"], ["凸版入庫作業", "frm原料入庫作業", "凸版"],
    ["物料領料作業", "frm領料作業系統", "物料"], ["浪紙領料作業", "frm領料作業系統", "紙板"], ["採購明細表", "frm採購明細表", ""], ["採購未到料", "frm採購未到料明細", ""]];
for (const [name, screen, category] of more) {
    tolerate(true);
    messages();
    s = launchString(base(name));
    tolerate(false);
    equal(session("category"), category, name + " works on its family");
    if (s) equal(s.name, screen, name + " opens its screen");
    else equal(told(), [["information", "提示", "「" + name + "」尚未提供!"]], name + " is not built yet");
}
equal(session("gridColours"), ["12632064", "15728381", "14221312", "16777215", "16747326", "16777215", "4868863"], "the colours of the lists");

// ---- values ----
s = expect("&&連結&&=" + Connection + "&&種類&&=紙板採購作業&&用戶&&=採購甲&&審單&&=&&其它&&=Provider=x;Data Source=A && B", [], "values may be empty or hold signs");
equal([session("connectionString"), session("userName"), session("approvalParam"), session("otherParam"), session("salesmanCode"), session("salesmanName")],
    [Connection, "採購甲", "", "Provider=x;Data Source=A && B", "S01", "林佩珊"], "each value stands where it belongs");
s = expect("&&連結&&=" + Connection + "&&種類&&=紙板採購作業&&用戶&&= admin&&審單&&=Y&&其它&&=", [Refused], "values are not trimmed");
equal([s, session("userName")], [null, " admin"], "so this is nobody");
s = expect("&&連結&&=" + Connection + "&&種類&&=紙板採購作業&&用戶&&=O'Brien&&審單&&=Y&&其它&&=", [Refused], "an apostrophe breaks nothing");

// ---- markers missing or out of order ----
s = expect("&&連結&&=" + Connection + "&&種類&&=紙板採購作業&&用戶&&=admin&&審單&&=Y", [], "without the last marker");
equal([s.name, session("approvalParam"), session("otherParam")], ["frm採購作業系統", "", ""], "what cannot be cut stays empty");
s = expect("&&連結&&=" + Connection + "&&種類&&=紙板採購作業&&審單&&=Y&&其它&&=", [], "without the third, the function has no end");
equal([s, session("connectionString"), session("functionName"), session("userName")], [null, Connection, "", ""], "and opens nothing");
const Blank = ["critical", "錯誤", "連線字串是空白!"];
equal(expect("&&種類&&=紙板採購作業&&連結&&=" + Connection + "&&用戶&&=admin&&審單&&=Y&&其它&&=", [Blank], "out of order"), null, "opens nothing");
equal(session("userName"), "admin", "though what stands in order is cut");
equal(expect("紙板採購作業".repeat(5), [Blank], "no marker at all"), null, "opens nothing");

// ---- databases that cannot be reached, or are none ----
const at = c => "&&連結&&=" + c + "&&種類&&=紙板採購作業&&用戶&&=admin&&審單&&=Y&&其它&&=";
const file = name => stage.workFolder() + "/" + name;
const unreachable = (c, text, what) =>
    equal(expect(at(c), [["critical", "錯誤", text], Refused], what), null, what + ": the profile says why, then the screen refuses");
const Lite = "Provider=SQLite;Data Source=";
unreachable("", "連線字串是空白!", "no connection string");
unreachable("Data Source=x", "看不懂連線字串的「Data Source」:缺少 Provider、Driver 或 DSN!", "no provider");
unreachable("Provider=Unknown;Data Source=x", "看不懂連線字串的「Provider」:不支援的資料庫!", "an unknown provider");
unreachable("Provider=SQLite", "看不懂連線字串的「Data Source」:沒有指定資料庫檔案!", "no file");
unreachable(Lite + "x.db;Passwrd=secret", "看不懂連線字串的「Passwrd」:SQLite 沒有這個設定!", "an unknown key is named, its value is not");
unreachable("Provider=SQLite;Data Source='x.db", "連線字串的「Data Source」引號未結束!", "an open quote");
unreachable("Provider=SQLOLEDB;Initial Catalog=x", "看不懂連線字串的「Data Source」:沒有指定伺服器!", "no server");
unreachable(Lite + file("nowhere.db"), "找不到資料庫檔案「" + file("nowhere.db") + "」!", "a file that is not there");
unreachable(Lite + stage.workFolder(), "「" + stage.workFolder() + "」不是檔案!", "a folder");
stage.writeFile(file("letter.db"), "This is a letter, no database. ".repeat(200));
unreachable(Lite + file("letter.db"), "此檔案不是資料庫!", "a file that is no database");
stage.writeFile(file("void.db"), "");
unreachable(Lite + file("void.db"), "Invalid object name '使用者資料'.", "a database without our tables");
// What the driver says differs from one to the other; that the password is not in it does not.
for (const c of ["Provider=SQLOLEDB;Data Source=127.0.0.1,1;Initial Catalog=x;User ID=u;Password=secret", "Driver={No such driver};Server=x;PWD=secret", "DSN=nowhere;PWD=secret"]) {
    messages();
    onMessage("錯誤", "*");
    onMessage("提示", Refused[2]);
    equal(launchString(at(c)), null, "a server that is not there opens nothing");
    const all = told();
    check(all.length === 2 && all[0][2].startsWith("無法連線資料庫伺服器!") && !all[0][2].includes("secret"), "and is told without its password");
}

// A database that may only be read: all can be looked at, and a save says so.
const plant = Connection.replace(/^.*Data Source=/, "").replace(/[;"].*$/, "");
stage.copyFile(plant, file("readonly.db"));
stage.writeByte(file("readonly.db"), 18, 3);
s = expect(at(Lite + file("readonly.db")), [], "a read-only database opens");
const number = db.query("select top 1 採購單號 from 採購資料 where 類別='紙板' and 審單='N' order by 採購單號 desc")[0]["採購單號"];
s.set("txt速查單號", number);
s.press("Enter");
equal(s.get("txt採購單號"), number, "its orders are shown");
s.set("txt工單單號", "改");
messages();
onMessage("詢問", "確定更新此筆資料?", "yes");
onMessage("更新錯誤", "資料庫是唯讀的,無法寫入!");
s.press("F8");
equal([told().slice(-1)[0], s.get("txt工單單號"), s.modified], [["critical", "更新錯誤", "資料庫是唯讀的,無法寫入!"], "改", true], "and not changed");

// Databases with more or less than ours.
stage.copyFile(plant, file("other.db"));
const other = db.at(Lite + file("other.db"));
other.execute("update 料務_版本 set 版本=99");
const later = expect(at(Lite + file("other.db")), [], "a later version of our own tables");
equal(later.notice(), "資料庫的版本 99 比程式的版本 1 新,請更新程式", "opens as well, and says so");
other.execute("drop table 料務_版本");
check(expect(at(Lite + file("other.db")), [], "a plain database of the suite"), "opens as well");
other.execute("drop table 採購計價公式");
s = expect(at(Lite + file("other.db")), [["critical", "取得所有公式資料錯誤", "Invalid object name '採購計價公式'."]], "a missing table is told");
check(s && s.mode === "新增", "what does without it goes on");
