#include "client_bench.h"
#include "app/dispatch.h"
#include "app/launch_string.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include "frame/base_screen.h"
#include "frame/entry_view.h"
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTest>

namespace liaowu {

using namespace Qt::StringLiterals;

int BenchDesktop::runModal(QDialog& window) {
    if (!inWindow) giveUp(u"an unexpected window: "_s + window.objectName());
    QWidget* const owner = QApplication::activeWindow();
    window.show();
    QApplication::setActiveWindow(&window);
    settle();
    inWindow(window);
    window.hide();
    QApplication::setActiveWindow(owner);
    return window.result();
}

void BenchDesktop::present(QWidget& screen) {
    screen.resize(1366, 740);
    screen.show();
    QApplication::setActiveWindow(&screen);
}

void BenchDesktop::show(Icon, const QString& title, const QString& text) {
    giveUp(u"[%1] %2"_s.arg(title, text));
}

void settle() {
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    }
}

namespace {

class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget* view) { view->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        painted |= event->type() == QEvent::Paint;
        return false;
    }
    bool painted = false;
};

} // namespace

double untilPainted(QWidget* view, const std::function<void()>& work) {
    PaintWatch watch(view);
    const double time = microseconds([&] {
        work();
        settle();
    });
    if (!watch.painted) giveUp(u"nothing was painted in "_s + view->parentWidget()->objectName());
    return time;
}

Client::Client(const QString& plant) {
    if (!QFile::copy(plant, file)) giveUp(u"the plant cannot be copied"_s);
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    target = connectionStringFor(file);
    process.pool.setClock(QDateTime(QDate(2025, 3, 3), QTime(8, 30)));
    registerEverything(process);
}

ScreenFrame* Client::open(const QString& function) {
    ScreenFrame* screen = launch(process, composeLaunch({target, function, u"admin"_s, u"Y"_s, {}}));
    for (int i = 0; i < 200 && !(screen && screen->isActivated()); ++i)
        settle();
    if (!screen || !screen->isActivated()) giveUp(u"no screen for "_s + function);
    settle();
    return screen;
}

QString Client::largeOrder(const QString& category, bool approved) {
    Connection connection(process.pool, target);
    const bool board = category == u"紙板";
    const QString number = board ? u"250301002"_s : u"250301001"_s;
    connection.Execute(sql(
        u"insert into 採購資料 (採購單號,類別,採購日期,廠商代號,廠商簡稱,幣別,採購類別,審單,製單時間) values "
        u"('{}','{}','20250301','V001','甲','台幣','庫存','{}','2025-03-01 08:00:00')",
        number, category, approved ? u"Y"_s : u"N"_s));
    Recordset items = select(
        connection,
        board
            ? sql(u"select top 350 浪紙代號,浪紙名稱 from 浪紙資料 order by 浪紙代號")
            : sql(u"select top 350 原料代號,max(原料名稱) as 名稱,count(*) as n from 採購明細資料 inner join "
                  u"採購資料 on 採購資料.採購單號=採購明細資料.採購單號 where 類別='物料' group by 原料代號 "
                  u"order by n desc"));
    Transaction transaction(connection);
    Recordset lines;
    lines.Open(sql(u"select * from 採購明細資料 where 1<>1"), connection, Cursor::Batch);
    for (int i = 1; i <= 350; ++i) {
        lines.AddNew();
        lines.set(u"採購單號", number);
        lines.set(u"序", double(i));
        lines.set(u"原料代號", items.text(0));
        lines.set(u"原料名稱", items.text(1));
        lines.set(u"規格", board ? u"120*90"_s : QString());
        lines.set(u"數量", u"10"_s);
        lines.set(u"單價", u"5"_s);
        lines.set(u"小計", u"50"_s);
        lines.set(u"單位", board ? u"㎡"_s : u"PCS"_s);
        lines.set(u"寬剖", u"1"_s);
        lines.set(u"已入庫數", u"0"_s);
        lines.set(u"未交數", u"10"_s);
        lines.set(u"送清", u"N"_s);
        items.MoveNext();
        if (items.EOF_()) items.MoveFirst();
    }
    lines.UpdateBatch();
    transaction.commit();
    return number;
}

void typeInto(QWidget* window, const QString& field, const QString& text) {
    auto* box = control<QLineEdit>(window, field);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, text);
    if (box->text() != text) giveUp(field + u" does not take "_s + text);
}

} // namespace liaowu
