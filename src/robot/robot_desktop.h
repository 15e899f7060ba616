#pragma once
#include "frame/desktop.h"
#include <QJSValue>
#include <QString>
#include <deque>
#include <functional>
#include <vector>

namespace liaowu::robot {

/// A message as the script sees it.
struct Told {
    QString icon, title, text, answer;
};

/// The desktop of a script: records every message and answers it as the script said, runs modal windows through the
/// script's functions, and fails the script on what nobody expected.
class RobotDesktop : public Desktop {
public:
    bool ask(const QString& title, const QString& text, bool defaultYes) override;
    int runModal(QDialog& window) override;
    bool progress(const QString&, int, int) override { return true; }
    void present(QWidget& screen) override;
    QString openFileName(QWidget* owner, const QString& title, const QString& proposal,
                         const QString& filter) override {
        return saveFileName(owner, title, proposal, filter);
    }
    QString saveFileName(QWidget* owner, const QString& title, const QString& proposal,
                         const QString& filter) override;
    void endProcess() override {}

    void expectMessage(const QString& title, const QString& text, const QString& answer);
    void expectWindow(const QString& name, QJSValue run);
    void answerFile(const QString& path) { files.push_back(path); }
    std::vector<Told> takeMessages();
    /// What the script expected and never met.
    QStringList unmet() const;
    void reset();

    bool tolerant = false;
    std::function<void(const QString& what)> fail;
    /// Runs the script's function on a window.
    std::function<void(QJSValue, QWidget*)> play;
    /// Every message shown in the whole run, for the list of those that no script has met.
    std::vector<Told> all;

protected:
    void show(Icon icon, const QString& title, const QString& text) override;

private:
    struct Expected {
        QString title, text, answer;
    };
    struct ExpectedWindow {
        QString name;
        QJSValue run;
    };
    bool takeExpected(const QString& title, const QString& text, QString& answer);
    void record(const QString& icon, const QString& title, const QString& text, const QString& answer);

    std::vector<Expected> expected;
    std::vector<ExpectedWindow> windows;
    std::deque<QString> files;
    std::vector<Told> told;
};

} // namespace liaowu::robot
