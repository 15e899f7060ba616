// Who made and who changed an order: the panel that the status bar opens.
clock("2025-03-03 08:30:00");
const s = launch({ function: "紙板採購作業", user: "採購甲" });
s.panel(8);
equal(messages(), [], "a new order has no history to show");
s.press("F2");
s.panel(8);
s.click("scmd回前畫面_查詢");

s.set("txt廠商代號", "V001");
s.press("Enter");
s.press("F8");
const number = s.get("txt採購單號");
const history = close => {
    let rows = null;
    onWindow("frm系統修改明細", w => {
        const g = w.grid("MSHFlexGrid1");
        rows = [...Array(g.lineCount).keys()].map(i => [g.cell(i + 1, "項目"), g.cell(i + 1, "項目值")]);
        equal([g.titles, w.visibleTexts().includes("雙擊關閉窗口")], [["項目", "項目值"], true], "two columns, and how to close it");
        close(w, g);
        check(!w.open, "the panel is gone");
    });
    s.panel(8);
    return rows;
};
equal(history((w, g) => { screenshot("out/history.png"); w.press("Esc"); }),
    [["製單人", "林佩珊"], ["製單時間", "2025-03-03 08:30:00"], ["修改人", ""], ["修改時間", ""]], "a new order was made, not changed");

clock("2025-03-04 09:15:30");
const boss = launch({ function: "紙板採購作業", user: "主管甲" });
boss.set("txt速查單號", number);
boss.press("Enter");
boss.set("txt工單單號", "改");
onMessage("詢問", "確定更新此筆資料?", "yes");
boss.press("F8");
boss.close();
const changed = [["製單人", "林佩珊"], ["製單時間", "2025-03-03 08:30:00"], ["修改人", "吳國棟"], ["修改時間", "2025-03-04 09:15:30"]];
equal(history((w, g) => g.doubleClick(2, "項目值")), changed, "a change tells who and when, as it is stored now");
equal(history((w, g) => g.rightClick(1, "項目")), changed, "a right click closes it as well");
s.set("txt工單單號", "未存");
equal(history(w => w.press("Esc")), changed, "typing does not keep from looking");
equal([s.get("txt工單單號"), s.modified], ["未存", true], "and stays");
