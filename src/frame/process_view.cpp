#include "frame/base_screen.h"
#include "frame/process.h"
#include <QPointer>
#include <algorithm>
#include <stdexcept>

namespace liaowu {

Process::Process(Desktop& on) : desktop(on), session(pool, on) {}

Process::~Process() {
    // A screen leaves the list as it goes.
    while (!opened.empty())
        delete opened.back();
}

void Process::registerScreen(const QString& name, ScreenFactory factory) {
    screens.insert(name, std::move(factory));
}

void Process::registerWindow(const QString& name, WindowRunner runner) {
    windows[name] = std::move(runner);
}

ScreenFrame* Process::openScreen(const QString& name) {
    const auto factory = screens.constFind(name);
    if (factory == screens.constEnd()) return nullptr;
    ScreenFrame* screen = (*factory)(*this);
    opened.push_back(screen);
    // A screen that refuses its user is gone before it was seen.
    const QPointer<ScreenFrame> shown(screen);
    desktop.present(*screen);
    return shown;
}

void Process::runWindow(const QString& name, QWidget* owner) {
    const auto found = windows.find(name);
    if (found == windows.end()) throw std::logic_error("no such window: " + name.toStdString());
    found->second(*this, owner);
}

void Process::forget(ScreenFrame* screen) {
    std::erase(opened, screen);
}

} // namespace liaowu
