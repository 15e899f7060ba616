#pragma once
#include "common/session.h"
#include "data/connection_pool.h"
#include "frame/desktop.h"
#include <QHash>
#include <functional>
#include <map>
#include <vector>

class QWidget;

namespace liaowu {

class ScreenFrame;

/// One launch: its connections, its `Session`, its screens. Nothing of a launch lives outside it, so a fresh launch
/// beside an old one is as clean as a new process.
class Process {
public:
    using ScreenFactory = std::function<ScreenFrame*(Process&)>;
    using WindowRunner = std::function<void(Process&, QWidget* owner)>;

    explicit Process(Desktop& desktop);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void registerScreen(const QString& name, ScreenFactory factory);
    void registerWindow(const QString& name, WindowRunner runner);
    bool knowsScreen(const QString& name) const { return screens.contains(name); }

    /// Makes the screen of this name and shows it, non-modally; null for a name that is not registered.
    ScreenFrame* openScreen(const QString& name);
    /// Runs the modal window of this name to its end; hand-over goes through `session`. Throws std::logic_error for a
    /// name that is not registered: a fault of the program.
    void runWindow(const QString& name, QWidget* owner);
    const std::vector<ScreenFrame*>& openScreens() const { return opened; }
    void forget(ScreenFrame* screen);

    Desktop& desktop;
    ConnectionPool pool;
    Session session;

private:
    QHash<QString, ScreenFactory> screens;
    std::map<QString, WindowRunner> windows;
    std::vector<ScreenFrame*> opened;
};

} // namespace liaowu
