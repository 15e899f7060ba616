// Launch strings good and bad, and databases that cannot be reached or are none.
clock("2025-03-03 08:30:00");
const Connection = stage.defaultConnection();
const opens = (text, rows, what) => {
    let s = null;
    shows(() => { s = launchString(text); }, rows, what);
    return s;
};
const silent = (text, rows, what) => equal(opens(text, rows, what), null, what + " opens nothing");
const written = (f, user = "admin", approval = "Y", other = "", connection = Connection) =>
    "&&連結&&=" + connection + "&&種類&&=" + f + "&&用戶&&=" + user + "&&審單&&=" + approval + "&&其它&&=" + other;

// ---- length ----
const Short = ["critical", "提示", "外部參數錯誤!"];
const cut = "&&連結&&=&&種類&&=&&用戶&&=&&審單&&=&&其它&&=".slice(0, 29);
for (const text of ["  " + cut + " \t ", "", "x".repeat(29)]) silent(text, [Short], "'" + text + "', less than 30 characters without the blanks around");

// ---- functions; what is still to come says so ----
for (const name of ["不存在", "", "紙板採購", "紙板採購作業x", "&&"]) silent(written(name), [], "'" + name + "', in silence,");
let s = opens("  " + written("  紙板採購作業 ") + "  ", [], "blanks around do no harm");
equal([s.name, session("screenFunction")], ["frm採購作業系統", "紙板採購作業"], "the function is trimmed");
for (const [name, screen, category, kept, mode] of [["物料採購作業", "frm採購作業系統", "物料", "物料採購作業", ""], ["紙板採購作業", "frm採購作業系統", "紙板", "紙板採購作業", ""],
    ["凸版採購作業", "frm採購作業系統", "凸版", "凸版採購作業", ""], ["單位換算公式", "frm原料計價公式", "", "", "單位換算"], ["原料計價公式", "frm原料計價公式", "", "", "計價公式"],
    ["紙品管理系統", "frm紙品管理系統", ""], ["物料管理系統", "frm物料管理系統", ""], ["浪紙管理系統", "frm浪紙管理系統", ""],
    ["資材申購作業", "frm申購作業系統", ""], ["紙品入庫作業", "frm原料入庫作業", "紙品"], ["物料入庫作業", "frm原料入庫作業", "物料"],
    ["浪紙入庫作業", "frm原料入庫作業", "紙板"], ["紙板退料作業", "frm紙板退料作業", "紙板"], ["凸版入庫作業", "frm原料入庫作業", "凸版"],
    ["物料領料作業", "frm領料作業系統", "物料"], ["浪紙領料作業", "frm領料作業系統", "紙板"], ["採購明細表", "frm採購明細表", ""], ["採購未到料", "frm採購未到料明細", ""]]) {
    tolerate(true);
    messages();
    s = launchString(written(name));
    tolerate(false);
    equal(session("category"), category, name + " works on its family");
    if (kept !== undefined) equal([session("screenFunction"), session("formulaMode")], [kept, mode], "with its function");
    if (s) equal(s.name, screen, name + " opens its screen");
    else equal(told(), [["information", "提示", "「" + name + "」尚未提供!"]], name + " is not built yet");
}
equal(session("gridColours"), ["12632064", "15728381", "14221312", "16777215", "16747326", "16777215", "4868863"], "the colours of the lists");
opens(written("紙板採購作業", "採購甲", "", "Provider=x;Data Source=A && B"), [], "values may be empty or hold signs");
equal(["connectionString", "userName", "approvalParam", "otherParam", "salesmanCode", "salesmanName"].map(session),
    [Connection, "採購甲", "", "Provider=x;Data Source=A && B", "S01", "林佩珊"], "each value stands where it belongs");
silent(written("紙板採購作業", " admin"), [Refused], "a user, who is not trimmed,");
silent(written("紙板採購作業", "O'Brien"), [Refused], "an apostrophe, which breaks nothing,");
// Markers missing.
s = opens(written("紙板採購作業").replace("&&其它&&=", ""), [], "without the last marker");
equal([s.name, session("approvalParam"), session("otherParam")], ["frm採購作業系統", "", ""], "what cannot be cut stays empty");
silent(written("紙板採購作業").replace("&&用戶&&=", ""), [], "a function without an end");
silent("紙板採購作業".repeat(5), [["critical", "錯誤", "連線字串是空白!"]], "no marker at all");

// ---- databases that cannot be reached, or are none ----
const at = connection => written("紙板採購作業", "admin", "Y", "", connection);
const file = name => stage.workFolder() + "/" + name;
const Lite = "Provider=SQLite;Data Source=";
stage.writeFile(file("letter.db"), "This is a letter, no database. ".repeat(200));
stage.writeFile(file("void.db"), "");
for (const [connection, text] of [["", "連線字串是空白!"],
    ["Data Source=x", "看不懂連線字串的「Data Source」:缺少 Provider、Driver 或 DSN!"],
    ["Provider=Unknown;Data Source=x", "看不懂連線字串的「Provider」:不支援的資料庫!"],
    ["Provider=SQLite", "看不懂連線字串的「Data Source」:沒有指定資料庫檔案!"],
    [Lite + "x.db;Passwrd=secret", "看不懂連線字串的「Passwrd」:SQLite 沒有這個設定!"],
    [Lite + "'x.db", "連線字串的「Data Source」引號未結束!"],
    ["Provider=SQLOLEDB;Initial Catalog=x", "看不懂連線字串的「Data Source」:沒有指定伺服器!"],
    [Lite + file("nowhere.db"), "找不到資料庫檔案「" + file("nowhere.db") + "」!"],
    [Lite + stage.workFolder(), "「" + stage.workFolder() + "」不是檔案!"],
    [Lite + file("letter.db"), "此檔案不是資料庫!"],
    [Lite + file("void.db"), "Invalid object name '使用者資料'."]])
    silent(at(connection), [["critical", "錯誤", text], Refused], connection + ": the profile says why, then the screen refuses, and");
// What the driver says differs from one to the other; that the password is not in it does not.
for (const c of ["Provider=SQLOLEDB;Data Source=127.0.0.1,1;Initial Catalog=x;User ID=u;Password=secret", "Driver={No such driver};Server=x;PWD=secret", "DSN=nowhere;PWD=secret"]) {
    messages();
    onMessage("錯誤", "*");
    expect([Refused]);
    equal(launchString(at(c)), null, "a server that is not there opens nothing");
    const all = told();
    check(all.length === 2 && all[0][2].startsWith("無法連線資料庫伺服器!") && !all[0][2].includes("secret"), "and is told without its password");
}

// A database that may only be read: all can be looked at, and a save says so.
const plant = Connection.replace(/^.*Data Source=/, "").replace(/[;"].*$/, "");
stage.copyFile(plant, file("readonly.db"));
stage.writeByte(file("readonly.db"), 18, 3);
s = opens(at(Lite + file("readonly.db")), [], "a read-only database opens");
const number = value("select top 1 採購單號 from 採購資料 where 類別='紙板' and 審單='N' order by 採購單號 desc");
find(s, number);
equal(s.get("txt採購單號"), number, "its orders are shown");
s.set("txt工單單號", "改");
shows(() => s.press("F8"), [Sure, ["critical", "更新錯誤", "資料庫是唯讀的,無法寫入!"]], "and not changed");
equal([s.get("txt工單單號"), s.modified], ["改", true], "the typing stays");

// Databases with more or less than ours.
stage.copyFile(plant, file("other.db"));
const other = db.at(Lite + file("other.db"));
other.execute("update 料務_版本 set 版本=99");
equal(opens(at(Lite + file("other.db")), [], "a later version of our own tables").notice(), "資料庫的版本 99 比程式的版本 1 新,請更新程式", "opens as well, and says so");
other.execute("drop table 料務_版本");
check(opens(at(Lite + file("other.db")), [], "a plain database of the suite"), "opens as well");
other.execute("drop table 採購計價公式");
s = opens(at(Lite + file("other.db")), [["critical", "取得所有公式資料錯誤", "Invalid object name '採購計價公式'."]], "a missing table is told");
check(s && s.mode === "新增", "what does without it goes on");
