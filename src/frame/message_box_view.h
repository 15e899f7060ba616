#pragma once
#include "frame/desktop.h"
#include <memory>

class QProgressDialog;

namespace liaowu {

/// The desktop as a person sees it.
class RealDesktop : public Desktop {
public:
    RealDesktop();
    ~RealDesktop() override;
    bool ask(const QString& title, const QString& text, bool defaultYes) override;
    void busy(bool on) override;
    int runModal(QDialog& window) override;
    bool progress(const QString& what, int done, int total) override;
    void present(QWidget& screen) override;
    QString openFileName(QWidget* owner, const QString& title, const QString& proposal,
                         const QString& filter) override;
    QString saveFileName(QWidget* owner, const QString& title, const QString& proposal,
                         const QString& filter) override;
    void endProcess() override;
    void notice(const QString& text) override;
    /// The last notice given, for who started the program.
    const QString& lastNotice() const { return last; }

protected:
    void show(Icon icon, const QString& title, const QString& text) override;

private:
    std::unique_ptr<QProgressDialog> progressBox;
    QString last;
};

} // namespace liaowu
