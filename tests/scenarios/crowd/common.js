// What the clients of a crowd share. `crowd` with `worker` and `saves` comes from the script before.
Object.assign(crowd, { again: 0, slowest: 0 });
// A number that another client took first gives its message, and F8 saves again under the next one.
crowd.save = (s, duplicate, what) => {
    messages();
    for (let tries = 0; s.mode === "新增" && tries < 60; ++tries) {
        const started = Date.now();
        s.press("F8");
        crowd.slowest = Math.max(crowd.slowest, Date.now() - started);
        const told = messages();
        if (s.mode !== "新增") break;
        ++crowd.again;
        check(told.length === 1 && told[0].text === duplicate, "a refused save says that the number was taken: " + JSON.stringify(told));
    }
    equal(s.mode, "修改", what + " is saved");
};
crowd.report = () => {
    check(crowd.slowest < 5000, "nobody waits longer than the busy timeout: " + crowd.slowest + " ms");
    note("client " + crowd.worker + ": " + crowd.saves + " saves, " + crowd.again + " again, slowest " + crowd.slowest + " ms");
};
