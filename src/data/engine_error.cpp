#include "data/engine_error.h"
#include "data/dialect/dialect.h"
#include <QStringList>
#include <optional>
#include <sqlite3.h>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;

/// "UNIQUE constraint failed: 採購資料.採購單號, 採購資料.序" as table and columns.
std::pair<QString, QString> constrained(const QString& message) {
    QString table;
    QStringList columns;
    for (const QString& name : message.section(u": "_s, 1).split(u", "_s)) {
        table = name.section(u'.', 0, 0);
        columns += name.section(u'.', 1);
    }
    return {table, columns.join(u"、")};
}

DatabaseError constraintError(int code, const QString& message) {
    const auto [table, columns] = constrained(message);
    switch (code) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_ROWID:
        return {DatabaseError::DuplicateKey, u"資料重複:「%1」已有相同的「%2」!"_s.arg(table, columns)};
    case SQLITE_CONSTRAINT_NOTNULL:
        return {DatabaseError::NullRefused, u"「%1」的「%2」不可沒有值!"_s.arg(table, columns)};
    default:
        return {DatabaseError::CheckFailed, u"資料不符合資料庫的限制! (%1)"_s.arg(message)};
    }
}

/// The name behind `prefix` when the message begins with it.
std::optional<QString> nameAfter(const QString& message, QStringView prefix) {
    if (!message.startsWith(prefix)) return {};
    return message.mid(prefix.size()).trimmed();
}

DatabaseError statementError(const QString& message) {
    const auto [number, text] = dialect::functionError(message);
    if (number != 0) return {number, text};
    if (const auto table = nameAfter(message, u"no such table: "))
        return {DatabaseError::InvalidObject, u"找不到資料表「%1」!"_s.arg(*table)};
    if (const auto column = nameAfter(message, u"no such column: "))
        return {DatabaseError::InvalidColumn, u"找不到欄位「%1」!"_s.arg(*column)};
    // "table t has no column named c"
    if (message.contains(u" has no column named "))
        return {DatabaseError::InvalidColumn,
                u"找不到欄位「%1」!"_s.arg(message.section(u" has no column named "_s, 1))};
    return {DatabaseError::EngineFailed, u"資料庫執行失敗! (%1)"_s.arg(message)};
}

} // namespace

DatabaseError engineError(int code, const QString& message) {
    switch (code & 0xff) {
    case SQLITE_CONSTRAINT:
        return constraintError(code, message);
    case SQLITE_ERROR:
        return statementError(message);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {DatabaseError::Locked, u"資料庫正被其他使用者鎖定,請稍候再試!"_s};
    case SQLITE_READONLY:
        return {DatabaseError::ReadOnly, u"資料庫是唯讀的,無法寫入!"_s};
    case SQLITE_FULL:
        return {DatabaseError::DiskFull, u"磁碟已滿,資料庫無法寫入!"_s};
    case SQLITE_NOTADB:
        return {DatabaseError::ConnectionFailed, u"此檔案不是資料庫!"_s};
    case SQLITE_CORRUPT:
        return {DatabaseError::ConnectionFailed, u"資料庫檔案已損毀! (%1)"_s.arg(message)};
    case SQLITE_CANTOPEN:
        return {DatabaseError::ConnectionFailed, u"無法開啟資料庫檔案! (%1)"_s.arg(message)};
    case SQLITE_IOERR:
        return {DatabaseError::ConnectionFailed, u"讀寫資料庫檔案失敗! (%1)"_s.arg(message)};
    case SQLITE_NOMEM:
        return {DatabaseError::EngineFailed, u"記憶體不足!"_s};
    default:
        return {DatabaseError::EngineFailed, u"資料庫執行失敗! (%1)"_s.arg(message)};
    }
}

DatabaseError engineError(sqlite3* database) {
    return engineError(sqlite3_extended_errcode(database), QString::fromUtf8(sqlite3_errmsg(database)));
}

} // namespace liaowu
