// Every database call of a save, a deletion and an approval fails once: nothing is half-written, the typing stays, the
// message bears a title, and the next attempt succeeds.
clock("2025-03-03 08:30:00");
const Board = value("select top 1 浪紙代號 from 浪紙資料 where 進料單位='㎡' order by 浪紙代號");
const Need = one("select top 1 申購單號,原料代號,數量 from 原料申購明細 where 申購單號 in (select 申購單號 from 原料申購資料 where 類別='紙板' and 審單='Y') order by 申購單號 desc");
const ofNeed = "申購單號='" + Need["申購單號"] + "'", ofBoard = "浪紙代號='" + Board + "'";
const state = () => JSON.stringify([count("採購資料", "1=1"), count("採購明細資料", "1=1"), count("歷史單價記錄", "1=1"),
    db.query("select * from 採購資料 where 採購單號>='2503' order by 採購單號"), db.query("select * from 採購明細資料 where 採購單號>='2503' order by 採購單號,序"),
    db.query("select * from 原料申購明細 where " + ofNeed), db.query("select * from 浪紙資料 where " + ofBoard)]);
const bought = () => Number(value("select 已采購數 from 原料申購明細 where " + ofNeed + " and 原料代號='" + Need["原料代號"] + "'"));
const price = () => value("select 進價 from 浪紙資料 where " + ofBoard);
const reset = () => {
    db.execute("delete from 採購資料 where 採購單號>='2503'");
    db.execute("delete from 採購明細資料 where 採購單號>='2503'");
    db.execute("update 原料申購明細 set 已采購數='0' where " + ofNeed);
    db.execute("update 浪紙資料 set 進價='1' where " + ofBoard);
};
// An order in the database: one line for the requisition, one of its own.
const stored = user => {
    reset();
    insert("採購資料", { 採購單號: "250303001", 類別: "紙板", 採購日期: "20250303", 廠商代號: "V001", 廠商簡稱: "岱峻紙板", 業務員代號: "S01", 業務員名稱: "林佩珊", 幣別: "台幣",
        採購類別: "庫存", 合計: "50", 審單: "N", 製單時間: "2025-03-03 08:00:00" });
    [[Need["原料代號"], Need["申購單號"]], [Board, ""]].forEach(([code, need], i) => insert("採購明細資料", { 採購單號: "250303001", 序: i + 1, 請購單號: need, 原料代號: code,
        原料名稱: "板", 規格: "100*100", 數量: "5", 單價: "5", 單位: "pcs", 小計: "25", 寬剖: "1", 小紙數: "5", 已入庫數: "0", 未交數: "5", 送清: "N" }));
    db.execute("update 原料申購明細 set 已采購數='5' where " + ofNeed + " and 原料代號='" + Need["原料代號"] + "'");
    return openOrder(user, "250303001");
};
const shown = s => JSON.stringify(["txt廠商代號", "lbl廠商簡稱", "txt工單單號", "txt合計", "txt品質要求"].map(c => s.get(c)).concat(
    [1, 2].map(row => cells(s.grid("fml明細"), row, "申購單號", "代號", "規格", "大紙數", "單價", "單位", "小計", "備註"))));

let struck = 0, afterwards = 0;
// `act` on the screen that `begin` gives is played with the n-th call failing, for every n until none is left to fail.
const fails = (what, allowed, begin, act, done) => {
    let s = null, before = "", typing = "", attempt = 0;
    const calls = strike(n => act(s, n), (n, faults) => {
        const here = what + ", call " + n + " (" + faults[0].title + ")";
        check(faults.every(m => m.title !== "" && m.text !== ""), here + ": is told");
        // What failed may have come after the commit, or was no part of the save: then the save must be whole.
        if (state() === before) {
            check(allowed.includes(faults[0].title), here + ": under a title of its own");
            equal([shown(s), s.open], [typing, true], here + ": typing and screen stay");
            act(s);
        } else {
            ++afterwards;
        }
        check(done(n), here + ": it is done whole, then or by the next attempt");
        s.close();
    }, n => {
        attempt = n;
        s = begin(n);
        before = state();
        typing = shown(s);
    });
    check(done(attempt), what + ": with no call failing it is done");
    s.close();
    struck += calls;
};

// ---- a new order ----
const same = (a, b) => JSON.stringify(a) === JSON.stringify(b);
const header = () => db.query("select 合計,製單人,審單,工單單號 from 採購資料 where 採購單號>='2503'");
const lines = () => db.query("select 序,數量,單價,備註 from 採購明細資料 where 採購單號>='2503' order by 序");
const entered = n => {
    reset();
    const s = launch({ function: "紙板採購作業", user: "採購甲" });
    vendor(s, "V001");
    s.set("txt工單單號", "W" + n);
    const g = s.grid("fml明細");
    onWindow("frm原料輔助視窗_請購", w => {
        const rows = w.grid("MSHFlexGrid1");
        const wanted = column(rows, "申購單號").findIndex((number, i) => number === Need["申購單號"] && rows.cell(i + 1, "原料代號") === Need["原料代號"]);
        rows.enter(wanted + 1, "原料名稱");
        w.press("Enter");
    });
    g.type(1, "申購單號", Need["申購單號"]);
    item(s, 2, Board);
    for (const row of [1, 2]) fill(g, row, { 規格: "100*100", 單位: "pcs", 大紙數: "5", 單價: String(10 + n), 備註: "第" + n });
    return s;
};
fails("new order", ["取得採購單號流水號錯誤", "儲存錯誤"], entered, s => s.press("F8"), n => {
    const cost = String(10 + n);
    return same([header(), lines(), bought(), price()], [[{ 合計: cost + "0", 製單人: "林佩珊", 審單: "N", 工單單號: "W" + n }],
        [1, 2].map(row => ({ 序: row, 數量: "5", 單價: cost, 備註: "第" + n })), 5, cost]);
});

// ---- an order changed ----
const changed = n => {
    const s = stored("採購甲");
    s.set("txt工單單號", "W" + n);
    for (const row of [1, 2]) fill(s.grid("fml明細"), row, { 大紙數: "8", 單價: String(20 + n), 備註: "第" + n });
    return s;
};
fails("changed order", ["更新錯誤"], changed, s => save(s), n => {
    const cost = String(20 + n);
    return header().length === 1 && same([header()[0]["工單單號"], lines(), bought(), price()],
        ["W" + n, [1, 2].map(row => ({ 序: row, 數量: "8", 單價: cost, 備註: "第" + n })), 8, cost]);
});

// ---- an order deleted ----
fails("deleted order", ["刪除錯誤"], () => stored("採購甲"), s => {
    expect([DeleteSure]);
    tolerate(true);
    s.press("F3");
    tolerate(false);
}, () => header().length === 0 && lines().length === 0 && bought() === 0);

// ---- an order approved: the mark stays on the screen, the next save takes it along ----
fails("approved order", ["更新錯誤"], () => stored("主管甲"), (s, first) => {
    if (first) {
        onWindow("frm單據審核", w => w.click("scmd確定"));
        onMessage("詢問", "操作成功,是否立即儲存?", "yes");
        s.toolbar("審單");
    } else {
        check(s.get("txt審單") === "Y" && s.visible("pic審單"), "the mark stays on the screen");
        save(s);
    }
}, () => header()[0]["審單"] === "Y" && lines().length === 2 && bought() === 5);

note("calls struck: " + struck + ", of them behind the commit: " + afterwards);
check(struck > 60, "the strikes went through the whole of it");
