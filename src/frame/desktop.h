#pragma once
#include "common/messages.h"
#include <functional>

class QDialog;
class QWidget;

namespace liaowu {

/// Everything through which the program meets the person and the machine: messages, modal windows, files, the end of
/// the process. The desktop does it for real; the robot records and answers.
class Desktop : public Messages {
public:
    /// Runs a modal window to its end; gives its result code.
    virtual int runModal(QDialog& window) = 0;
    /// Tells how far long work is; false when the user wants it to stop. The last call has `done` equal to `total`.
    virtual bool progress(const QString& what, int done, int total) = 0;
    /// Shows a screen, non-modally, where the desktop has room for it.
    virtual void present(QWidget& screen) = 0;
    /// File to read; empty when the user gave up.
    virtual QString openFileName(QWidget* owner, const QString& title, const QString& proposal,
                                 const QString& filter) = 0;
    /// File to write; empty when the user gave up. `filter` in Qt's form.
    virtual QString saveFileName(QWidget* owner, const QString& title, const QString& proposal,
                                 const QString& filter) = 0;
    /// Where notices go: the screen in front sets it.
    void setNoticeSink(std::function<void(const QString&)> sink) { noticeSink = std::move(sink); }
    void notice(const QString& text) override {
        if (noticeSink) noticeSink(text);
    }
    /// Ends the process; a robot closes the screens instead.
    virtual void endProcess() = 0;

private:
    std::function<void(const QString&)> noticeSink;
};

} // namespace liaowu
