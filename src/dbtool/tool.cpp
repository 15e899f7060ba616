#include "dbtool/tool.h"
#include "data/connection_string.h"
#include "data/schema/integrity.h"
#include "data/schema/schema.h"
#include "dbtool/demo.h"
#include "dbtool/demo_plant.h"
#include "dbtool/demo_users.h"
#include "warehouse/check_plant.h"
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

QString usage() {
    QString text =
        u"用法:\n"
        u"  liaowu-db create 資料庫               建立資料表、檢視表及索引;已有的一概不動\n"
        u"  liaowu-db demo 資料庫 [--scale N]     建立資料表並填入示範工廠的資料,N 為 1 到 %1 的整數\n"
        u"  liaowu-db upgrade 資料庫              將舊版資料庫升級到版本 %2\n"
        u"  liaowu-db check 資料庫                "
        u"由單據重新計算入庫數、未交數、送清、庫存及板位,列出所有差異\n"
        u"資料庫可為檔名,或連結字串,例如 \"Provider=SQLite;Data Source=plant.db\"。\n"
        u"結束碼:0 成功,1 有差異或失敗,2 用法錯誤。\n"
        u"示範工廠的使用者:\n"_s.arg(LargestDemoScale)
            .arg(schemaVersion());
    for (const demo::User& user : demo::users())
        text += u"  %1\t%2\n"_s.arg(user.login, user.about);
    return text;
}

struct Request {
    QString command, connectionString, file;
    int scale = 1;
};

/// Null, with the reason on `err`, when the arguments make no sense.
std::optional<Request> understand(QStringList arguments, QTextStream& err) {
    const auto refuse = [&](const QString& reason) {
        err << reason << u"\n\n"_s << usage();
        return std::nullopt;
    };
    if (arguments.isEmpty()) return refuse(u"請指定命令。"_s);
    Request request;
    request.command = arguments.takeFirst();
    if (!QStringList{u"create"_s, u"demo"_s, u"upgrade"_s, u"check"_s}.contains(request.command))
        return refuse(u"不認得的命令「%1」。"_s.arg(request.command));
    if (const qsizetype option = arguments.indexOf(u"--scale"_s); option >= 0) {
        bool number = false;
        request.scale = arguments.value(option + 1).toInt(&number);
        if (request.command != u"demo") return refuse(u"只有 demo 可以指定 --scale。"_s);
        if (!number || request.scale < 1 || request.scale > LargestDemoScale)
            return refuse(u"--scale 之後須為 1 到 %1 的整數。"_s.arg(LargestDemoScale));
        arguments.remove(option, 2);
    }
    if (arguments.isEmpty() || arguments.first().isEmpty()) return refuse(u"請指定資料庫。"_s);
    if (arguments.size() > 1) return refuse(u"多餘的參數「%1」。"_s.arg(arguments.at(1)));
    if (arguments.first().startsWith(u'-')) return refuse(u"不認得的選項「%1」。"_s.arg(arguments.first()));
    request.connectionString = connectionStringFor(arguments.first());
    try {
        request.file = parseConnectionString(request.connectionString).file;
    } catch (const DatabaseError& error) {
        return refuse(error.text);
    }
    return request;
}

ExitCode create(const Request& request, ConnectionPool& pool, QTextStream& out) {
    const bool made = !request.file.isEmpty() && !QFileInfo::exists(request.file);
    createSchema(pool, request.connectionString);
    Connection connection(pool, request.connectionString);
    out << (made ? u"已建立資料庫"_s : u"資料庫已齊備"_s) << u",版本 %1。\n"_s.arg(storedVersion(connection));
    return Done;
}

ExitCode upgrade(const Request& request, ConnectionPool& pool, QTextStream& out) {
    int before = 0;
    {
        Connection connection(pool, request.connectionString);
        before = storedVersion(connection);
    }
    upgradeSchema(pool, request.connectionString);
    if (before == schemaVersion()) {
        out << u"資料庫已是版本 %1,不需升級。\n"_s.arg(before);
    } else {
        out << u"資料庫已由版本 %1 升級到版本 %2。\n"_s.arg(before).arg(schemaVersion());
    }
    return Done;
}

/// A file that came into being and was not finished would look like a plant; it is taken away again.
class UnfinishedFile {
public:
    explicit UnfinishedFile(const QString& name)
        : file(!name.isEmpty() && !QFileInfo::exists(name) ? name : QString()) {}
    ~UnfinishedFile() {
        if (file.isEmpty()) return;
        for (const QString& tail : {u""_s, u"-wal"_s, u"-shm"_s})
            QFile::remove(file + tail);
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    void keep() { file.clear(); }

private:
    QString file;
};

ExitCode fillDemo(const Request& request, QTextStream& out) {
    UnfinishedFile unfinished(request.file);
    QElapsedTimer timer;
    timer.start();
    ConnectionPool pool;
    // The demo stands still in time, so that two runs give the same database.
    if (!request.file.isEmpty()) pool.setClock(QDateTime(demo::Today, QTime(8, 30)));
    const DemoSummary summary = createDemo(pool, request.connectionString, request.scale);
    unfinished.keep();
    out << u"示範資料已建立:申購單 %1、採購單 %2(明細 %3)、入庫及退貨單 %4、領料單 %5,費時 %6 秒。\n"_s
               .arg(summary.requisitions)
               .arg(summary.orders)
               .arg(summary.orderLines)
               .arg(summary.receipts)
               .arg(summary.issues)
               .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 1);
    return Done;
}

ExitCode check(const Request& request, ConnectionPool& pool, QTextStream& out) {
    const QStringList faults = engineFaults(request.connectionString);
    for (const QString& fault : faults)
        out << u"資料庫檔案:"_s << fault << u'\n';
    Connection connection(pool, request.connectionString);
    // Figures and documents must be of one moment; a database that nobody can write to is always.
    std::optional<Transaction> moment;
    try {
        moment.emplace(connection);
    } catch (const DatabaseError& error) {
        if (error.nativeError != DatabaseError::ReadOnly) throw;
    }
    const PlantCheck result = checkPlant(connection);
    for (const Difference& difference : result.differences)
        out << difference.text() << u'\n';
    for (const QString& note : result.notes)
        out << u"注意:"_s << note << u'\n';
    if (request.file.isEmpty()) out << u"注意:伺服器資料庫本身的完整性由伺服器管理員檢查\n"_s;
    const auto found = static_cast<qsizetype>(result.differences.size()) + faults.size();
    out << u"已檢查採購明細 %1、申購明細 %2、入庫明細 %3、領料明細 %4、原料 %5、板位 %6;差異 %7 項。\n"_s
               .arg(result.orderLines)
               .arg(result.requisitionLines)
               .arg(result.receiptLines)
               .arg(result.issueLines)
               .arg(result.items)
               .arg(result.binRows)
               .arg(found);
    return found == 0 ? Done : Failed;
}

} // namespace

ExitCode runTool(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    if (arguments == QStringList{u"--help"_s} || arguments == QStringList{u"-h"_s}) {
        out << usage();
        return Done;
    }
    const std::optional<Request> request = understand(arguments, err);
    if (!request) return Misused;
    try {
        ConnectionPool pool;
        if (request->command == u"create") return create(*request, pool, out);
        if (request->command == u"upgrade") return upgrade(*request, pool, out);
        if (request->command == u"demo") return fillDemo(*request, out);
        return check(*request, pool, out);
    } catch (const DatabaseError& error) {
        err << error.text << u'\n';
        return Failed;
    }
}

} // namespace liaowu
