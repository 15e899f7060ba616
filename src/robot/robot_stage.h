#pragma once
#include "common/session.h"
#include "frame/process.h"
#include "robot/robot_desktop.h"
#include <QJSEngine>
#include <QObject>
#include <QPointer>
#include <QTemporaryDir>
#include <memory>
#include <set>

namespace liaowu::robot {

/// The stage on which scripts play: the functions they call, the launches they made, what passed and what failed.
class Stage : public QObject {
    Q_OBJECT
public:
    explicit Stage(const QString& connection);
    ~Stage() override;

    /// Plays one script; gives false when it cannot be read.
    bool play(const QString& path);
    int passed() const { return passedCount; }
    int failed() const { return failedCount; }
    const std::vector<Told>& messagesShown() const { return desktop.all; }

    // What scripts call; the prelude gives these their names.
    Q_INVOKABLE QJSValue launchString(const QString& text);
    Q_INVOKABLE QString defaultConnection() const { return connection; }
    Q_INVOKABLE void onMessage(const QString& title, const QString& text, const QString& answer);
    Q_INVOKABLE void onWindow(const QString& name, const QJSValue& run);
    Q_INVOKABLE void onFile(const QString& path) { desktop.answerFile(path); }
    Q_INVOKABLE void tolerate(bool on) { desktop.tolerant = on; }
    Q_INVOKABLE QJSValue messages();
    Q_INVOKABLE QJSValue query(const QString& connection, const QString& sql);
    Q_INVOKABLE int execute(const QString& connection, const QString& sql);
    Q_INVOKABLE QJSValue sessionField(const QString& field);
    Q_INVOKABLE void clock(const QString& time);
    Q_INVOKABLE QString clipboardText() const;
    Q_INVOKABLE void setClipboardText(const QString& text);
    Q_INVOKABLE void screenshot(const QString& path);
    Q_INVOKABLE void note(const QString& text);
    Q_INVOKABLE void result(bool good, const QString& what, const QString& stack);
    Q_INVOKABLE QJSValue rule(const QString& name, const QJSValue& arguments);
    Q_INVOKABLE void failDatabaseAt(int call);
    Q_INVOKABLE int databaseCalls();
    /// Runs the function once, before the next statement of any launch whose native text holds `fragment`.
    Q_INVOKABLE void beforeStatement(const QString& fragment, const QJSValue& run);
    Q_INVOKABLE int run(const QString& program, const QStringList& arguments);
    /// Folder of the script being played.
    Q_INVOKABLE QString folder() const;
    /// An empty folder of this run, gone at its end.
    Q_INVOKABLE QString workFolder() const { return work.path(); }
    Q_INVOKABLE void writeFile(const QString& path, const QString& text);
    Q_INVOKABLE void copyFile(const QString& from, const QString& to);
    Q_INVOKABLE void writeByte(const QString& path, int offset, int value);

private:
    void fail(const QString& what);
    QString where() const;

    QString connection;
    QJSEngine engine;
    RobotDesktop desktop;
    std::vector<std::unique_ptr<Process>> launches;
    /// Serves `db` and `rule`, beside the launches.
    std::unique_ptr<Process> backstage;
    QDateTime frozen;
    QString script;
    QTemporaryDir work;
    std::set<QString> awaited; ///< fragments of statements that have not come yet
    int passedCount = 0;
    int failedCount = 0;
};

/// Calls a shared function by its own name and arguments; a JavaScript error on a failure.
QJSValue callRule(QJSEngine& engine, Session& session, const QString& name, const QJSValue& arguments);

} // namespace liaowu::robot
