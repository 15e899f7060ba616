#include "robot/robot_stage.h"
#include "app/dispatch.h"
#include "data/recordset.h"
#include "frame/base_screen.h"
#include "robot/robot_input.h"
#include "robot/robot_window.h"
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPixmap>
#include <QProcess>
#include <QRegularExpression>
#include <cstdio>

namespace liaowu::robot {

using namespace Qt::StringLiterals;

namespace {

/// The script's own names, in the script's language.
constexpr char16_t prelude[] = uR"JS(
function launchString(text) { return stage.launchString(text); }
function launch(o) {
    const v = (x, d) => x === undefined ? d : x;
    return stage.launchString("&&連結&&=" + v(o.connection, stage.defaultConnection()) + "&&種類&&=" + v(o.function, "") +
        "&&用戶&&=" + v(o.user, "admin") + "&&審單&&=" + v(o.approval, "Y") + "&&其它&&=" + v(o.other, ""));
}
function onMessage(title, text, answer) { stage.onMessage(title, text, answer === undefined ? "ok" : answer); }
function onWindow(name, fn) { stage.onWindow(name, fn); }
function onFile(path) { stage.onFile(path); }
function tolerate(on) { stage.tolerate(on); }
function messages() { return stage.messages(); }
var db = {
    query: sql => stage.query("", sql), execute: sql => stage.execute("", sql),
    at: c => ({ query: sql => stage.query(c, sql), execute: sql => stage.execute(c, sql) }) };
function session(field) { return stage.sessionField(field); }
function clock(time) { stage.clock(time === undefined ? "" : time); }
function clipboard(text) { if (text === undefined) return stage.clipboardText(); stage.setClipboardText(text); }
function lastReport() { return null; }
function screenshot(path) { stage.screenshot(path); }
function note(text) { stage.note(String(text)); }
function check(condition, what) { stage.result(!!condition, String(what), new Error().stack); }
function equal(actual, expected, what) {
    const a = JSON.stringify(actual), e = JSON.stringify(expected);
    stage.result(a === e, what + (a === e ? "" : ": got " + a + ", expected " + e), new Error().stack); }
var rule = new Proxy({}, { get: (target, name) => (...args) => stage.rule(name, args) });
)JS";

/// Texts of the fields that scripts ask for.
QJSValue fieldOf(QJSEngine& engine, const Session& session, const QString& name) {
    const std::pair<const char16_t*, QString> texts[] = {{u"commandLine", session.commandLine},
                                                         {u"connectionString", session.connectionString},
                                                         {u"functionName", session.functionName},
                                                         {u"userName", session.userName},
                                                         {u"approvalParam", session.approvalParam},
                                                         {u"otherParam", session.otherParam},
                                                         {u"screenFunction", session.screenFunction},
                                                         {u"category", session.category},
                                                         {u"formulaMode", session.formulaMode},
                                                         {u"salesmanCode", session.salesmanCode},
                                                         {u"salesmanName", session.salesmanName},
                                                         {u"salesScope", session.salesScope},
                                                         {u"formula1", session.formula1},
                                                         {u"pickParam", session.pickParam},
                                                         {u"pickCategory", session.pickCategory},
                                                         {u"pickMode", session.pickMode},
                                                         {u"pickVendor", session.pickVendor},
                                                         {u"scratchText", session.scratchText},
                                                         {u"scratchA", session.scratchA},
                                                         {u"scratchB", session.scratchB},
                                                         {u"numberPartA", session.numberPartA},
                                                         {u"numberPartB", session.numberPartB},
                                                         {u"numberPartC", session.numberPartC}};
    for (const auto& [field, value] : texts)
        if (name == field) return value;
    const std::pair<const char16_t*, bool> flags[] = {
        {u"isAdministrator", session.isAdministrator}, {u"amountRight", session.amountRight},
        {u"documentSaved", session.documentSaved},     {u"approveAllowed", session.approveAllowed},
        {u"reverseAllowed", session.reverseAllowed},   {u"approvalDone", session.approvalDone}};
    for (const auto& [field, value] : flags)
        if (name == field) return value;
    if (name == u"pickResult") return engine.toScriptValue(session.pickResult);
    if (name == u"gridColours")
        return engine.toScriptValue(QStringList(session.gridColours.begin(), session.gridColours.end()));
    engine.throwError(u"no session field %1"_s.arg(name));
    return {};
}

} // namespace

Stage::Stage(const QString& target) : connection(target) {
    backstage = std::make_unique<Process>(desktop);
    backstage->session.connectionString = connection;
    desktop.fail = [this](const QString& what) { fail(what); };
    desktop.play = [this](QJSValue run, QWidget* window) {
        const QJSValue outcome = run.call({engine.newQObject(new WindowHandle(engine, window))});
        if (outcome.isError())
            fail(u"%1 (line %2)"_s.arg(outcome.toString(), outcome.property(u"lineNumber"_s).toString()));
    };
    engine.globalObject().setProperty(u"stage"_s, engine.newQObject(this));
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    const QJSValue loaded = engine.evaluate(QString::fromUtf16(prelude), u"prelude"_s);
    if (loaded.isError()) qFatal("prelude: %s", qPrintable(loaded.toString()));
}

Stage::~Stage() {
    launches.clear();
}

QString Stage::where() const {
    return QFileInfo(script).fileName();
}

void Stage::fail(const QString& what) {
    ++failedCount;
    std::printf("FAILED %s: %s\n", qPrintable(where()), qPrintable(what));
    std::fflush(stdout);
}

void Stage::result(bool good, const QString& what, const QString& stack) {
    if (good) {
        ++passedCount;
        return;
    }
    // The first frame outside the prelude is the script's line.
    QString line;
    static const QRegularExpression frame(u":(\\d+)$"_s);
    for (const QString& entry : stack.split(u'\n')) {
        if (entry.contains(u"prelude")) continue;
        const auto found = frame.match(entry.trimmed());
        if (found.hasMatch()) {
            line = found.captured(1);
            break;
        }
    }
    fail(u"line %1: %2"_s.arg(line, what));
}

bool Stage::play(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        script = path;
        fail(u"cannot be read"_s);
        return false;
    }
    script = path;
    const QString text = QString::fromUtf8(file.readAll());
    const QJSValue outcome = engine.evaluate(u"(function(){"_s + text + u"\n})()"_s, path);
    if (outcome.isError())
        fail(u"line %1: %2"_s.arg(outcome.property(u"lineNumber"_s).toString(), outcome.toString()));
    settle();
    for (const QString& text_ : desktop.unmet())
        fail(text_);
    for (const QString& fragment : awaited)
        fail(u"statement never came: %1"_s.arg(fragment));
    awaited.clear();
    desktop.reset();
    for (auto& launched : launches)
        launched->pool.failAt(0);
    launches.clear();
    engine.collectGarbage();
    frozen = QDateTime();
    backstage->pool.setClock(frozen);
    return true;
}

// ---- launches ----

QJSValue Stage::launchString(const QString& text) {
    auto process = std::make_unique<Process>(desktop);
    process->pool.forbidSecondConnection(true);
    process->pool.setClock(frozen);
    registerEverything(*process);
    ScreenFrame* screen = liaowu::launch(*process, text);
    QPointer<ScreenFrame> alive(screen);
    launches.push_back(std::move(process));
    for (int i = 0; i < 50 && alive && !alive->isActivated() && !alive->wasRefused(); ++i)
        settle();
    settle();
    if (!alive || alive->wasRefused() || !alive->isVisible()) return QJSValue(QJSValue::NullValue);
    return engine.newQObject(new WindowHandle(engine, alive));
}

void Stage::onMessage(const QString& title, const QString& text, const QString& answer) {
    desktop.expectMessage(title, text, answer);
}
void Stage::onWindow(const QString& name, const QJSValue& run) {
    desktop.expectWindow(name, run);
}

QJSValue Stage::messages() {
    const std::vector<Told> told = desktop.takeMessages();
    QJSValue list = engine.newArray(static_cast<uint>(told.size()));
    for (uint i = 0; i < told.size(); ++i) {
        QJSValue entry = engine.newObject();
        entry.setProperty(u"icon"_s, told[i].icon);
        entry.setProperty(u"title"_s, told[i].title);
        entry.setProperty(u"text"_s, told[i].text);
        entry.setProperty(u"answer"_s, told[i].answer);
        list.setProperty(i, entry);
    }
    return list;
}

QJSValue Stage::sessionField(const QString& field) {
    const Session& session = launches.empty() ? backstage->session : launches.back()->session;
    return fieldOf(engine, session, field);
}

void Stage::clock(const QString& time) {
    frozen = time.isEmpty() ? QDateTime() : QDateTime::fromString(time, u"yyyy-MM-dd hh:mm:ss"_s);
    if (!time.isEmpty() && !frozen.isValid()) {
        engine.throwError(u"no time: %1"_s.arg(time));
        return;
    }
    backstage->pool.setClock(frozen);
    for (auto& launched : launches)
        launched->pool.setClock(frozen);
}

void Stage::failDatabaseAt(int call) {
    if (!launches.empty()) launches.back()->pool.failAt(call);
}
int Stage::databaseCalls() {
    return launches.empty() ? 0 : launches.back()->pool.callCount();
}

void Stage::beforeStatement(const QString& fragment, const QJSValue& run) {
    awaited.insert(fragment);
    const auto met = [this, fragment, run](const StatementTrace& statement) {
        if (!statement.native.contains(fragment) || awaited.erase(fragment) == 0) return;
        const QJSValue outcome = run.call();
        if (outcome.isError())
            fail(u"%1 (line %2)"_s.arg(outcome.toString(), outcome.property(u"lineNumber"_s).toString()));
    };
    for (auto& launched : launches)
        launched->pool.setTrace(met);
}

int Stage::run(const QString& program, const QStringList& arguments) {
    return QProcess::execute(QCoreApplication::applicationDirPath() + u'/' + program, arguments);
}

QString Stage::folder() const {
    return QFileInfo(script).absolutePath();
}

void Stage::writeFile(const QString& path, const QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        engine.throwError(u"not written: %1"_s.arg(path));
}

void Stage::copyFile(const QString& from, const QString& to) {
    QFile::remove(to);
    if (!QFile::copy(from, to)) engine.throwError(u"not copied: %1"_s.arg(from));
}

void Stage::writeByte(const QString& path, int offset, int value) {
    QFile file(path);
    const char byte = static_cast<char>(value);
    if (!file.open(QIODevice::ReadWrite) || !file.seek(offset) || file.write(&byte, 1) != 1)
        engine.throwError(u"not written: %1"_s.arg(path));
}

// ---- the database, from backstage ----

QJSValue Stage::query(const QString& at, const QString& text) {
    try {
        Connection link(backstage->pool, at.isEmpty() ? connection : at);
        Recordset rows = select(link, readyMadeSql(text));
        const QStringList names = rows.columnNames();
        QJSValue list = engine.newArray(static_cast<uint>(rows.RecordCount()));
        for (int r = 0; r < rows.RecordCount(); ++r) {
            QJSValue object = engine.newObject();
            for (int c = 0; c < names.size(); ++c) {
                QJSValue value(QJSValue::NullValue);
                if (!rows.isNullAt(r, c))
                    value = rows.isNumeric(c) ? QJSValue(rows.textAt(r, c).toDouble())
                                              : QJSValue(rows.textAt(r, c));
                object.setProperty(names[c], value);
            }
            list.setProperty(static_cast<uint>(r), object);
        }
        return list;
    } catch (const DatabaseError& error) {
        engine.throwError(error.text);
        return {};
    }
}

int Stage::execute(const QString& at, const QString& text) {
    try {
        Connection link(backstage->pool, at.isEmpty() ? connection : at);
        return static_cast<int>(link.Execute(readyMadeSql(text)));
    } catch (const DatabaseError& error) {
        engine.throwError(error.text);
        return 0;
    }
}

QJSValue Stage::rule(const QString& name, const QJSValue& arguments) {
    return callRule(engine, backstage->session, name, arguments);
}

// ---- results ----

QString Stage::clipboardText() const {
    return QApplication::clipboard()->text();
}
void Stage::setClipboardText(const QString& text) {
    QApplication::clipboard()->setText(text);
}

void Stage::screenshot(const QString& path) {
    settle();
    QWidget* shown = QApplication::activeModalWidget();
    if (!shown && !launches.empty() && !launches.back()->openScreens().empty())
        shown = launches.back()->openScreens().back();
    if (!shown) {
        fail(u"nothing to take a picture of"_s);
        return;
    }
    QDir().mkpath(QFileInfo(path).absolutePath());
    QWidget* behind = shown->parentWidget() ? shown->parentWidget()->window() : nullptr;
    QPixmap picture = shown->grab();
    if (behind && behind != shown) {
        // A modal window is shown where it stands, over its owner.
        QPixmap whole = behind->grab();
        QPainter painter(&whole);
        const QPoint place = shown->pos() - behind->pos();
        painter.setPen(QColor(0x7f, 0x9b, 0xb8));
        painter.drawPixmap(place, picture);
        painter.drawRect(QRect(place, picture.size()));
        painter.end();
        picture = whole;
    }
    if (picture.save(path)) {
        std::printf("picture %s\n", qPrintable(path));
    } else {
        fail(u"picture not written: %1"_s.arg(path));
    }
}

void Stage::note(const QString& text) {
    std::printf("%s\n", qPrintable(text));
}

} // namespace liaowu::robot
