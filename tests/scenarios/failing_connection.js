// Every database call of a save, a deletion and an approval fails once: nothing is half-written, the typing stays, the
// message bears a title, and the next attempt succeeds.
clock("2025-03-03 08:30:00");
const Board = db.query("select top 1 浪紙代號 from 浪紙資料 where 進料單位='㎡' order by 浪紙代號")[0]["浪紙代號"];
const Need = db.query("select top 1 申購單號,原料代號,數量 from 原料申購明細 where 申購單號 in (select 申購單號 from 原料申購資料 where 類別='紙板' and 審單='Y') order by 申購單號 desc")[0];
const one = (sql, column) => db.query(sql)[0][column];
const state = () => JSON.stringify([
    one("select count(*) as n from 採購資料", "n"), one("select count(*) as n from 採購明細資料", "n"), one("select count(*) as n from 歷史單價記錄", "n"),
    db.query("select * from 採購資料 where 採購單號>='2503' order by 採購單號"), db.query("select * from 採購明細資料 where 採購單號>='2503' order by 採購單號,序"),
    db.query("select * from 原料申購明細 where 申購單號='" + Need["申購單號"] + "'"), db.query("select * from 浪紙資料 where 浪紙代號='" + Board + "'")]);
const bought = () => Number(one("select 已采購數 from 原料申購明細 where 申購單號='" + Need["申購單號"] + "' and 原料代號='" + Need["原料代號"] + "'", "已采購數"));
const reset = () => {
    db.execute("delete from 採購資料 where 採購單號>='2503'");
    db.execute("delete from 採購明細資料 where 採購單號>='2503'");
    db.execute("update 原料申購明細 set 已采購數='0' where 申購單號='" + Need["申購單號"] + "'");
    db.execute("update 浪紙資料 set 進價='1' where 浪紙代號='" + Board + "'");
};
// An order in the database: one line for the requisition, one of its own.
const insert = () => {
    reset();
    db.execute("insert into 採購資料 (採購單號,類別,採購日期,廠商代號,廠商簡稱,業務員代號,業務員名稱,幣別,採購類別,合計,審單,製單時間) values " +
        "('250303001','紙板','20250303','V001','岱峻紙板','S01','林佩珊','台幣','庫存','50','N','2025-03-03 08:00:00')");
    for (const [n, code, need] of [[1, Need["原料代號"], Need["申購單號"]], [2, Board, ""]])
        db.execute("insert into 採購明細資料 (採購單號,序,請購單號,原料代號,原料名稱,規格,數量,單價,單位,小計,寬剖,小紙數,已入庫數,未交數,送清) values " +
            "('250303001'," + n + ",'" + need + "','" + code + "','板','100*100','5','5','pcs','25','1','5','0','5','N')");
    db.execute("update 原料申購明細 set 已采購數='5' where 申購單號='" + Need["申購單號"] + "' and 原料代號='" + Need["原料代號"] + "'");
};
const open = user => {
    const s = launch({ function: "紙板採購作業", user });
    s.set("txt速查單號", "250303001");
    s.press("Enter");
    return s;
};
const shown = s => JSON.stringify([s.get("txt廠商代號"), s.get("lbl廠商簡稱"), s.get("txt工單單號"), s.get("txt合計"), s.get("txt品質要求"), [1, 2].map(i => {
    const row = s.grid("fml明細").row(i);
    return ["申購單號", "代號", "規格", "大紙數", "單價", "單位", "小計", "備註"].map(t => row[t]);
})]);

let struck = 0, afterwards = 0;
const titles = {};
// `act` is played with the n-th call failing, for every n until none is left to fail.
const strike = (what, allowed, begin, act, saved) => {
    for (let n = 1; ; ++n) {
        const s = begin(n);
        const before = state(), typing = shown(s);
        messages();
        tolerate(true);
        stage.failDatabaseAt(n);
        act(s);
        stage.failDatabaseAt(0);
        tolerate(false);
        const faults = messages().filter(m => m.icon === "critical");
        if (faults.length === 0) {
            check(saved(n), what + ": with no call failing it is done");
            s.close();
            note(what + ": " + (n - 1) + " calls");
            return;
        }
        ++struck;
        const here = what + ", call " + n + " (" + faults[0].title + ")";
        titles[faults[0].title] = (titles[faults[0].title] || 0) + 1;
        check(faults.every(m => m.title !== "" && m.text !== ""), here + ": is told");
        if (state() === before) {
            check(allowed.includes(faults[0].title), here + ": under a title of its own");
            equal(shown(s), typing, here + ": the typing stays");
            check(s.open, here + ": the screen stays");
            messages();
            act(s);
            check(saved(n), here + ": the next attempt does it whole");
        } else {
            // What failed came after the commit, or was no part of the save: then the save must be whole.
            ++afterwards;
            check(saved(n), here + ": nothing is half-written");
        }
        s.close();
    }
};

// ---- a new order ----
const header = () => db.query("select 廠商代號,合計,製單人,製單時間,審單,工單單號 from 採購資料 where 採購單號>='2503'");
const lines = () => db.query("select 序,請購單號,原料代號,數量,單價,備註 from 採購明細資料 where 採購單號>='2503' order by 序");
const enter = n => {
    reset();
    const s = launch({ function: "紙板採購作業", user: "採購甲" });
    s.set("txt廠商代號", "V001");
    s.press("Enter");
    s.set("txt工單單號", "W" + n);
    const g = s.grid("fml明細");
    onWindow("frm原料輔助視窗_請購", w => {
        const rows = w.grid("MSHFlexGrid1");
        for (let i = 1; i <= rows.lineCount; ++i)
            if (rows.cell(i, "申購單號") === Need["申購單號"] && rows.cell(i, "原料代號") === Need["原料代號"]) rows.enter(i, "原料名稱");
        w.press("Enter");
    });
    g.type(1, "申購單號", Need["申購單號"]);
    onWindow("frm原料輔助視窗_採購", w => w.press("Enter"));
    g.type(2, "代號", Board);
    for (const row of [1, 2])
        for (const [title, text] of [["規格", "100*100"], ["單位", "pcs"], ["大紙數", "5"], ["單價", String(10 + n)], ["備註", "第" + n]]) g.type(row, title, text);
    return s;
};
const entered = n => {
    const h = header(), l = lines();
    return h.length === 1 && h[0]["製單人"] === "林佩珊" && h[0]["合計"] === String(10 * (10 + n)) && l.length === 2 && bought() === 5 &&
        l.every((r, i) => r["序"] === i + 1 && r["備註"] === "第" + n && r["單價"] === String(10 + n)) &&
        one("select 進價 from 浪紙資料 where 浪紙代號='" + Board + "'", "進價") === String(10 + n);
};
strike("new order", ["取得採購單號流水號錯誤", "儲存錯誤"], enter, s => s.press("F8"), entered);

// ---- an order changed ----
const change = n => {
    insert();
    const s = open("採購甲");
    s.set("txt工單單號", "W" + n);
    const g = s.grid("fml明細");
    for (const row of [1, 2]) for (const [title, text] of [["大紙數", "8"], ["單價", String(20 + n)], ["備註", "第" + n]]) g.type(row, title, text);
    return s;
};
const changed = n => {
    const h = header(), l = lines();
    return h.length === 1 && h[0]["工單單號"] === "W" + n && l.length === 2 && bought() === 8 && l.every((r, i) => r["序"] === i + 1 && r["數量"] === "8") &&
        one("select 進價 from 浪紙資料 where 浪紙代號='" + Board + "'", "進價") === String(20 + n);
};
strike("changed order", ["更新錯誤"], change, s => { onMessage("詢問", "確定更新此筆資料?", "yes"); s.press("F8"); }, changed);

// ---- an order deleted ----
strike("deleted order", ["刪除錯誤"], () => { insert(); return open("採購甲"); }, s => {
    onMessage("刪除詢問", "確定要刪除此筆資料?", "yes");
    tolerate(true);
    s.press("F3");
    tolerate(false);
}, () => header().length === 0 && lines().length === 0 && bought() === 0);

// ---- an order approved: the mark stays on the screen, the next save takes it along ----
let first = true;
strike("approved order", ["更新錯誤"], () => { insert(); first = true; return open("主管甲"); }, s => {
    if (first) {
        onWindow("frm單據審核", w => w.click("scmd確定"));
        onMessage("詢問", "操作成功,是否立即儲存?", "yes");
        s.toolbar("審單");
    } else {
        check(s.get("txt審單") === "Y" && s.visible("pic審單"), "the mark stays on the screen");
        onMessage("詢問", "確定更新此筆資料?", "yes");
        s.press("F8");
    }
    first = false;
}, () => header()[0]["審單"] === "Y" && lines().length === 2 && bought() === 5);

note("calls struck: " + struck + ", of them behind the commit: " + afterwards + "; " + JSON.stringify(titles));
check(struck > 60, "the strikes went through the whole of it");
