// What the scenarios share. It is played before each of them, and its names stay: they are assigned, not declared. The robot tells a
// check that fails in here with the line of the scenario.

// ---- the database ----
one = sql => db.query(sql)[0];
value = sql => Object.values(one(sql))[0];
values = sql => db.query(sql).map(row => Object.values(row)[0]);
count = (table, where) => value("select count(*) as n from " + table + " where " + where);
insert = (table, ...rows) => rows.forEach(row =>
    db.execute("insert into " + table + " (" + Object.keys(row) + ") values ('" + Object.values(row).join("','") + "')"));
requisition = (number, family, lines, mark = "Y") => {
    insert("原料申購資料", { 申購單號: number, 類別: family, 申購日期: "20250301", 審單: mark });
    lines.forEach((line, i) => insert("原料申購明細", Object.assign({ 申購單號: number, 序: i + 1, 已采購數: "0" }, line)));
};
clean = what => equal(stage.run("liaowu-db", ["check", stage.defaultConnection()]), 0, "the plant is in order " + what);

// ---- messages: icon, title, text, and the answer to a question ----
Refused = ["warning", "提示", "您還沒有權限進行這項操作,請與管理員聯繫"];
Sure = ["question", "詢問", "確定更新此筆資料?", "yes"];
DeleteSure = ["question", "刪除詢問", "確定要刪除此筆資料?", "yes"];
Deleted = ["information", "資料刪除", "資料刪除完畢!"];
Added = ["information", "資料儲存", "資料儲存完畢!"];
Updated = ["information", "資料更新", "資料儲存完畢!"];
told = () => messages().map(m => [m.icon, m.title, m.text]);
expect = expected => expected.forEach(([, title, text, answer]) => onMessage(title, text, answer));
// `doing` shows these messages and no other.
shows = (doing, expected, what) => {
    messages();
    expect(expected);
    doing();
    equal(told(), expected.map(m => m.slice(0, 3)), what);
};
stops = (doing, icon, title, text, what) => shows(doing, [[icon, title, text]], what);

// ---- windows and grids; the robot leaves a window with Esc when the script has not closed it ----
// `look` at the window, then press the keys.
inWindow = (name, look, ...keys) => onWindow(name, w => {
    look(w);
    keys.forEach(key => w.press(key));
});
pick = (name, ...keys) => inWindow(name, () => {}, ...keys, "Enter");
leave = name => onWindow(name, () => {});
visibleTitles = g => g.titles.filter(title => g.visible(title));
texts = (s, ...controls) => controls.map(control => s.get(control));
cells = (g, row, ...titles) => titles.map(title => g.cell(row, title));
column = (g, title) => Array.from({ length: g.lineCount }, (_, i) => g.cell(i + 1, title));
fill = (g, row, texts) => Object.keys(texts).forEach(title => g.type(row, title, texts[title]));

// ---- orders, requisitions and receipts ----
enter = (s, control, text) => {
    s.set(control, text);
    s.press("Enter");
    return s;
};
find = (s, number) => enter(s, "txt速查單號", number);
vendor = (s, code) => enter(s, "txt廠商代號", code);
openOrder = (user, number, name = "紙板採購作業") => {
    const s = find(launch({ function: name, user }), number);
    equal(s.get("txt採購單號"), number, number + " is on show for " + user);
    return s;
};
item = (s, row, code) => {
    pick("frm原料輔助視窗_採購");
    s.grid("fml明細").type(row, "代號", code);
};
// A vendor and a line of board that no master knows.
ownOrder = s => {
    vendor(s, "V001");
    fill(s.grid("fml明細"), 1, { 內部品名: "自訂紙板", 單位: "pcs", 走紙才: "1", 大紙數: "5", 單價: "3" });
};
receivingVendor = (s, code) => {
    pick("frm廠商輔助視窗_驗收");
    vendor(s, code);
};
receivedOrder = (s, number) => {
    pick("frm採購輔助視窗");
    enter(s, "txt採購單號", number);
};
saveNew = s => {
    s.press("F8");
    return s.get("txt採購單號");
};
save = (s, answer = "yes") => {
    onMessage("詢問", "確定更新此筆資料?", answer);
    s.press("F8");
};
remove = s => {
    expect([DeleteSure, Deleted]);
    s.press("F3");
};
// `others` are the messages beside the question whether to save at once.
approve = (s, { answer = "yes", key = "審單", dialog = () => {}, others = [] } = {}) => {
    onWindow("frm單據審核", w => {
        dialog(w);
        w.click("scmd確定");
    });
    shows(() => s.toolbar(key), [["question", "詢問", "操作成功,是否立即儲存?", answer], ...others], "the approval is asked for and given");
};
takeBack = (s, options = {}) => approve(s, Object.assign({ dialog: w => w.click("Opt審核(1)") }, options));
// The search page: a text for the condition at hand, or what stands there.
conditions = s => {
    if (!s.visible("span查詢條件")) s.click("scmd查詢條件");
};
search = (s, text) => {
    conditions(s);
    if (text !== undefined) s.set("txt查詢內容(0)", text);
    s.click("scmd確定");
};

// ---- a database that fails ----
// Plays `doing` with its n-th database call failing, for every n until none is left to fail, with `begin` before and `after` behind each
// failure. Gives the number of calls struck.
strike = (doing, after, begin = () => {}) => {
    for (let n = 1; n < 1000; ++n) {
        begin(n);
        messages();
        tolerate(true);
        stage.failDatabaseAt(n);
        doing(n);
        stage.failDatabaseAt(0);
        tolerate(false);
        const all = messages(), faults = all.filter(m => m.icon === "critical");
        if (faults.length === 0) return n - 1;
        after(n, faults, all);
    }
};
