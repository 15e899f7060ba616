#include "launchpad/launchpad_window.h"
#include "app/launch_string.h"
#include "common/users.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

QLabel* heading(const QString& text, QWidget* parent) {
    auto* made = new QLabel(text, parent);
    made->setProperty("heading", true);
    return made;
}

QFrame* cardIn(QWidget* parent) {
    auto* made = new QFrame(parent);
    made->setProperty("card", true);
    return made;
}

} // namespace

LaunchpadWindow::LaunchpadWindow(const QString& target) {
    setObjectName(u"launchpad"_s);
    setWindowTitle(u"料務 Liaowu"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(18, 14, 18, 14);
    column->setSpacing(12);
    auto* title = new QLabel(u"料務"_s, this);
    title->setProperty("title", true);
    auto* subtitle = new QLabel(u"紙箱印刷廠的資材:採購、倉儲、主檔、公式"_s, this);
    subtitle->setProperty("hint", true);
    auto* top = new QHBoxLayout;
    top->addWidget(title);
    top->addSpacing(10);
    top->addWidget(subtitle, 1, Qt::AlignBottom);
    column->addLayout(top);
    auto* middle = new QHBoxLayout;
    middle->setSpacing(12);
    middle->addWidget(buildSettings());
    middle->addWidget(buildFunctions(), 1);
    column->addLayout(middle, 1);
    column->addWidget(buildLaunchLine());
    database->setText(target);
    resize(980, 620);
    loadUsers();
    users->setFocus();
}

void LaunchpadWindow::keyPressEvent(QKeyEvent* event) {
    // Enter presses the button that has the focus, as Space does.
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (button && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        button->click();
        return;
    }
    QWidget::keyPressEvent(event);
}

void LaunchpadWindow::tell(const QString& text, bool fault) {
    status->setProperty("good", !fault);
    status->setProperty("fault", fault);
    status->style()->unpolish(status);
    status->style()->polish(status);
    status->setText(text);
}

QWidget* LaunchpadWindow::buildSettings() {
    auto* card = cardIn(this);
    card->setFixedWidth(340);
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(14, 12, 14, 12);
    column->addWidget(heading(u"資料庫"_s, card));
    database = new QLineEdit(card);
    database->setObjectName(u"database"_s);
    database->setPlaceholderText(u"檔案,或連結字串"_s);
    connect(database, &QLineEdit::returnPressed, this, &LaunchpadWindow::loadUsers);
    auto* browse = new QPushButton(u"…"_s, card);
    browse->setProperty("lookup", true);
    connect(browse, &QPushButton::clicked, this, &LaunchpadWindow::chooseFile);
    auto* line = new QHBoxLayout;
    line->addWidget(database, 1);
    line->addWidget(browse);
    column->addLayout(line);
    column->addSpacing(6);
    column->addWidget(heading(u"使用者"_s, card));
    users = new QListWidget(card);
    users->setObjectName(u"users"_s);
    column->addWidget(users, 1);
    column->addSpacing(6);
    column->addWidget(heading(u"審單"_s, card));
    withApproval = new QRadioButton(u"啟用"_s, card);
    withApproval->setChecked(true);
    auto* withoutApproval = new QRadioButton(u"停用(單據自動審核)"_s, card);
    auto* approval = new QHBoxLayout;
    approval->addWidget(withApproval);
    approval->addWidget(withoutApproval);
    approval->addStretch(1);
    column->addLayout(approval);
    column->addSpacing(6);
    column->addWidget(heading(u"第二資料庫(轉稅,可不填)"_s, card));
    secondDatabase = new QLineEdit(card);
    secondDatabase->setObjectName(u"secondDatabase"_s);
    column->addWidget(secondDatabase);
    return card;
}

QWidget* LaunchpadWindow::buildFunctions() {
    auto* area = new QWidget(this);
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    for (const auto& group : {u"採購"_s, u"倉儲"_s, u"主檔"_s, u"公式"_s}) {
        auto* card = cardIn(area);
        auto* lines = new QVBoxLayout(card);
        lines->setContentsMargins(14, 10, 14, 12);
        lines->addWidget(heading(group, card));
        auto* grid = new QGridLayout;
        grid->setSpacing(8);
        int n = 0;
        for (const LaunchTarget& target : launchTable()) {
            if (target.group != group) continue;
            auto* made = new QPushButton(target.function, card);
            made->setObjectName(u"start_"_s + target.function);
            made->setMinimumHeight(34);
            connect(made, &QPushButton::clicked, this,
                    [this, function = target.function] { start(function); });
            grid->addWidget(made, n / 3, n % 3);
            ++n;
        }
        // Empty places keep the columns of all groups in line.
        for (; n < 3; ++n)
            grid->addWidget(new QWidget(card), 0, n);
        for (int c = 0; c < 3; ++c)
            grid->setColumnStretch(c, 1);
        lines->addLayout(grid);
        column->addWidget(card);
    }
    column->addStretch(1);
    return area;
}

QWidget* LaunchpadWindow::buildLaunchLine() {
    auto* card = cardIn(this);
    auto* column = new QVBoxLayout(card);
    column->setContentsMargins(14, 8, 14, 8);
    auto* line = new QHBoxLayout;
    line->addWidget(heading(u"啟動字串"_s, card));
    launchLine = new QLineEdit(card);
    launchLine->setObjectName(u"launchString"_s);
    launchLine->setReadOnly(true);
    launchLine->setPlaceholderText(u"選一項作業,這裡會顯示主程式啟動它所用的字串"_s);
    line->addWidget(launchLine, 1);
    auto* copy = new QPushButton(u"複製"_s, card);
    connect(copy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(launchLine->text()); });
    line->addWidget(copy);
    column->addLayout(line);
    status = new QLabel(card);
    status->setObjectName(u"status"_s);
    status->setProperty("good", true);
    column->addWidget(status);
    return card;
}

void LaunchpadWindow::loadUsers() {
    users->clear();
    try {
        Connection connection(pool, connectionStringFor(database->text().trimmed()));
        for (const UserRow& user : usersOf(connection)) {
            const QString person =
                user.salesmanName.isEmpty() ? QString() : u" ("_s + user.salesmanName + u')';
            auto* item = new QListWidgetItem(user.userName + person + u'\n' + user.role, users);
            item->setData(Qt::UserRole, user.userName);
        }
        users->setCurrentRow(0);
        tell(u"資料庫已就緒,共 %1 位使用者"_s.arg(users->count()));
    } catch (const DatabaseError& error) {
        tell(error.text, true);
    }
}

void LaunchpadWindow::chooseFile() {
    const QString file =
        desktop.openFileName(this, u"選擇資料庫"_s, database->text(), u"資料庫 (*.db);;所有檔案 (*)"_s);
    if (file.isEmpty()) return;
    database->setText(file);
    loadUsers();
}

QString LaunchpadWindow::launchStringOf(const QString& function) const {
    const QString second = secondDatabase->text().trimmed();
    const QListWidgetItem* user = users->currentItem();
    return composeLaunch({connectionStringFor(database->text().trimmed()), function,
                          user ? user->data(Qt::UserRole).toString() : QString(),
                          withApproval->isChecked() ? u"Y"_s : u"N"_s,
                          second.isEmpty() ? QString() : connectionStringFor(second)});
}

void LaunchpadWindow::start(const QString& function) {
    const QString text = launchStringOf(function);
    launchLine->setText(text);
    launchLine->setCursorPosition(0);
    auto* client = new QProcess(this);
    client->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(client, &QProcess::finished, this, [this, client, function](int code) {
        finished(function, QString::fromUtf8(client->readAllStandardOutput()), code);
        client->deleteLater();
    });
    connect(client, &QProcess::errorOccurred, this, [this, client](QProcess::ProcessError) {
        tell(u"無法啟動 liaowu:%1"_s.arg(client->errorString()), true);
    });
    client->start(QCoreApplication::applicationDirPath() + u"/liaowu"_s, {text});
    tell(u"已啟動 %1"_s.arg(function));
}

void LaunchpadWindow::finished(const QString& function, const QString& output, int code) {
    const QString last = output.trimmed().section(u'\n', -1);
    QString told = u"%1 已結束"_s.arg(function);
    if (!last.isEmpty()) told += u":"_s + last;
    if (code != 0) told += u"(代碼 %1)"_s.arg(code);
    tell(told, code != 0);
    showNormal();
    raise();
    activateWindow();
}

} // namespace liaowu
