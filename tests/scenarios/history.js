// Who made and who changed an order: the panel that the status bar opens.
clock("2025-03-03 08:30:00");
const s = launch({ function: "紙板採購作業", user: "採購甲" });
shows(() => s.panel(8), [], "a new order has no history to show");
s.press("F2");
s.panel(8);
s.click("scmd回前畫面_查詢");

vendor(s, "V001");
s.press("F8");
const history = (close, person, time, what) => {
    onWindow("frm系統修改明細", w => {
        const g = w.grid("MSHFlexGrid1");
        equal([g.titles, w.visibleTexts().includes("雙擊關閉窗口")], [["項目", "項目值"], true], "two columns, and how to close it");
        equal([column(g, "項目"), column(g, "項目值")], [["製單人", "製單時間", "修改人", "修改時間"], ["林佩珊", "2025-03-03 08:30:00", person, time]], what);
        close(w, g);
        check(!w.open, "the panel is gone");
    });
    s.panel(8);
};
history(w => w.press("Esc"), "", "", "a new order was made, not changed");
clock("2025-03-04 09:15:30");
const boss = openOrder("主管甲", s.get("txt採購單號"));
boss.set("txt工單單號", "改");
save(boss);
boss.close();
s.set("txt工單單號", "未存");
history((w, g) => g.doubleClick(2, "項目值"), "吳國棟", "2025-03-04 09:15:30", "a change tells who and when, as it is stored now");
history((w, g) => g.rightClick(1, "項目"), "吳國棟", "2025-03-04 09:15:30", "a right click closes it as well");
equal([s.get("txt工單單號"), s.modified], ["未存", true], "typing does not keep from looking, and stays");
