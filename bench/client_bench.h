#pragma once
#include "frame/message_box_view.h"
#include "frame/process.h"
#include "measures.h"
#include <QTemporaryDir>
#include <QWidget>
#include <functional>

namespace liaowu {

class ScreenFrame;

/// Tells a message that nobody expected and ends; a modal window is worked by `inWindow` and then closed.
class BenchDesktop : public RealDesktop {
public:
    bool ask(const QString&, const QString&, bool) override { return true; }
    int runModal(QDialog& window) override;
    bool progress(const QString&, int, int) override { return true; }
    void present(QWidget& screen) override;
    void endProcess() override {}

    std::function<void(QDialog&)> inWindow;

protected:
    void show(Icon, const QString& title, const QString& text) override;
};

/// Lets everything happen that is waiting to happen, painting included.
void settle();

/// Microseconds from the start of `work` until all that it caused is painted. Ends the benchmark when `view` was not
/// painted at all.
double untilPainted(QWidget* view, const std::function<void()>& work);

/// The client on a copy of a demo plant, offscreen. The clock stands at 2025-03-03.
struct Client {
    explicit Client(const QString& plant);

    /// The screen of this function as an administrator gets it, ready for keys.
    ScreenFrame* open(const QString& function);
    /// An order of 350 lines of busy items, approved or not; gives its number.
    QString largeOrder(const QString& category, bool approved);

    QTemporaryDir folder;
    QString file = folder.filePath(QStringLiteral("plant.db"));
    QString target;
    BenchDesktop desktop;
    Process process{desktop};
};

/// A control of a screen or window by its name; ends the benchmark when there is none.
template <typename Control>
Control* control(QWidget* window, const QString& name) {
    auto* found = window->findChild<Control*>(name);
    if (!found) giveUp(QStringLiteral("no control ") + name);
    return found;
}

/// Types into a field as a person does, replacing what it holds.
void typeInto(QWidget* window, const QString& field, const QString& text);

// What the program measures; each prints its rows.
void orderFigures(const QString& plant);
void searchFigures(const QString& plant);
void fillFigures(const QString& plant);

} // namespace liaowu
