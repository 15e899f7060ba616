#include "frame/message_box_view.h"
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

namespace liaowu {

using namespace Qt::StringLiterals;

void RealDesktop::show(Icon icon, const QString& title, const QString& text) {
    static const QHash<Icon, QMessageBox::Icon> pictures{{Icon::Information, QMessageBox::Information},
                                                         {Icon::Warning, QMessageBox::Warning},
                                                         {Icon::Critical, QMessageBox::Critical}};
    QMessageBox box(pictures.value(icon), title, text, QMessageBox::Ok, QApplication::activeWindow());
    box.button(QMessageBox::Ok)->setText(u"確定"_s);
    box.exec();
}

bool RealDesktop::ask(const QString& title, const QString& text, bool defaultYes) {
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                    QApplication::activeWindow());
    box.button(QMessageBox::Yes)->setText(u"是(&Y)"_s);
    box.button(QMessageBox::No)->setText(u"否(&N)"_s);
    box.setDefaultButton(defaultYes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void RealDesktop::busy(bool on) {
    if (on) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

int RealDesktop::runModal(QDialog& window) {
    QWidget* focus = QApplication::focusWidget();
    const int result = window.exec();
    if (focus) focus->setFocus();
    return result;
}

RealDesktop::RealDesktop() = default;
RealDesktop::~RealDesktop() = default;

bool RealDesktop::progress(const QString& what, int done, int total) {
    if (done >= total) {
        progressBox.reset();
        return true;
    }
    if (!progressBox) {
        progressBox =
            std::make_unique<QProgressDialog>(what, u"停止"_s, 0, total, QApplication::activeWindow());
        progressBox->setWindowModality(Qt::ApplicationModal);
        progressBox->setMinimumDuration(400);
    }
    progressBox->setValue(done);
    const bool goOn = !progressBox->wasCanceled();
    if (!goOn) progressBox.reset();
    return goOn;
}

void RealDesktop::present(QWidget& screen) {
    const QRect area = screen.screen()->availableGeometry();
    if (area.width() <= 1440) {
        screen.setGeometry(area);
        screen.showMaximized();
        return;
    }
    screen.resize(std::min(1500, area.width()), std::min(900, area.height()));
    screen.move(area.center() - screen.rect().center());
    screen.show();
}

QString RealDesktop::openFileName(QWidget* owner, const QString& title, const QString& proposal,
                                  const QString& filter) {
    return QFileDialog::getOpenFileName(owner, title, proposal, filter);
}

QString RealDesktop::saveFileName(QWidget* owner, const QString& title, const QString& proposal,
                                  const QString& filter) {
    return QFileDialog::getSaveFileName(owner, title, proposal, filter);
}

void RealDesktop::notice(const QString& text) {
    last = text;
    Desktop::notice(text);
}

void RealDesktop::endProcess() {
    QTimer::singleShot(0, qApp, &QApplication::quit);
}

} // namespace liaowu
