#include "data/schema/integrity.h"
#include "data/connection_string.h"
#include "data/database_error.h"
#include "data/dialect/dialect.h"
#include <sqlite3.h>

namespace liaowu {

using namespace Qt::StringLiterals;

QStringList engineFaults(const QString& connectionString) {
    const ConnectionTarget target = parseConnectionString(connectionString);
    if (target.engine != ConnectionTarget::Engine::Embedded) return {};
    sqlite3* opened = nullptr;
    int result = sqlite3_open_v2(target.file.toUtf8().constData(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> database(opened, sqlite3_close);
    QStringList faults;
    if (result == SQLITE_OK) {
        sqlite3_busy_timeout(opened, 10000);
        // Without the collation the order of the indexes cannot be judged.
        dialect::installFunctions(opened, [] { return QDateTime::currentDateTime(); });
        const auto row = [](void* list, int, char** values, char**) {
            static_cast<QStringList*>(list)->append(QString::fromUtf8(values[0]));
            return 0;
        };
        result = sqlite3_exec(opened, "pragma integrity_check", row, &faults, nullptr);
    }
    if (result != SQLITE_OK)
        throw DatabaseError(
            DatabaseError::ConnectionFailed,
            u"無法檢查資料庫檔案 %1:%2"_s.arg(target.file, QString::fromUtf8(sqlite3_errmsg(opened))));
    faults.removeAll(u"ok"_s);
    return faults;
}

} // namespace liaowu
