#pragma once
#include <QString>

namespace liaowu {

enum class Icon { Information, Warning, Critical, Question };

/// The one channel to the user. The desktop shows modal boxes; the robot records and answers. Notices are our own
/// additions: one line in the status bar, never modal.
class Messages {
public:
    virtual ~Messages() = default;
    void inform(const QString& title, const QString& text) { show(Icon::Information, title, text); }
    void warn(const QString& title, const QString& text) { show(Icon::Warning, title, text); }
    void stop(const QString& title, const QString& text) { show(Icon::Critical, title, text); }
    /// Yes or no; `defaultYes` is what Enter answers, and what a closed box means is always no.
    virtual bool ask(const QString& title, const QString& text, bool defaultYes = true) = 0;
    virtual void notice(const QString& text) = 0;
    /// The wait cursor, counted.
    virtual void busy(bool) {}

protected:
    virtual void show(Icon icon, const QString& title, const QString& text) = 0;
};

} // namespace liaowu
