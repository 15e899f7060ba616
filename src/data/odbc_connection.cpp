#include "data/odbc_connection.h"
#include "data/odbc_statement.h"
#include <QDateTime>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlIndex>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>
#include <array>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;
using dialect::Type;

constexpr int loginSeconds = 15;
constexpr qint64 trustedIdleMilliseconds = 30'000;
constexpr int deadlockVictim = 1205;

template <std::size_t N>
bool contains(const std::array<int, N>& numbers, int number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

/// Numbers of the FreeTDS client library for a server that cannot be reached or has gone.
constexpr std::array<int, 9> lostNumbers{20002, 20003, 20004, 20006, 20009, 20012, 20017, 20047, 20056};
constexpr std::array<int, 3> lockedNumbers{deadlockVictim, 1222, 1204};
constexpr std::array<int, 3> fullNumbers{1101, 1105, 9002};
constexpr std::array<int, 2> readOnlyNumbers{3906, 3908};

/// "[FreeTDS][SQL Server]Invalid object name [t]" as "Invalid object name [t]".
QString withoutOrigin(const QString& text) {
    static const QRegularExpression origin(u"^(\\[[^\\]]*\\])+|(\\[[^\\]]*\\]){2,}"_s);
    return QString(text).remove(origin).trimmed();
}

Type typeOf(const QMetaType& type) {
    switch (type.id()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return Type::Float;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
        return Type::Integer;
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return Type::DateTime;
    default:
        return Type::Text;
    }
}

std::shared_ptr<ResultShape> shapeOf(const QSqlRecord& record) {
    auto shape = std::make_shared<ResultShape>();
    for (int i = 0; i < record.count(); ++i) {
        // Some drivers give a name's length in bytes of another encoding: what follows its end is rubbish.
        const QString name = record.fieldName(i).section(QChar(u'\0'), 0, 0);
        shape->fields.push_back({name, typeOf(record.field(i).metaType()), {}});
    }
    return shape;
}

QString timeText(const QDateTime& time) {
    return time.toString(time.time().msec() == 0 ? u"yyyy-MM-dd HH:mm:ss" : u"yyyy-MM-dd HH:mm:ss.zzz");
}

void append(RowBlock& rows, const QVariant& value) {
    if (value.isNull()) {
        rows.appendNull();
        return;
    }
    switch (typeOf(value.metaType())) {
    case Type::Float:
        rows.appendFloat(value.toDouble());
        return;
    case Type::Integer:
        rows.appendInteger(value.toLongLong());
        return;
    default:
        break;
    }
    const QString text = value.typeId() == QMetaType::QDateTime ? timeText(value.toDateTime())
                         : value.typeId() == QMetaType::QByteArray
                             ? QString::fromLatin1(value.toByteArray().toHex())
                             : value.toString();
    const QByteArray utf8 = text.toUtf8();
    rows.appendText(utf8.constData(), static_cast<int>(utf8.size()));
}

/// What Qt takes as the name of a data source: it puts "DSN=" or "FILEDSN=" in front by itself.
QString qtDatabaseName(const QString& odbcString) {
    if (odbcString.contains(u"DRIVER=", Qt::CaseInsensitive) ||
        odbcString.contains(u"SERVER=", Qt::CaseInsensitive))
        return odbcString;
    for (const QStringView prefix : {u"DSN=", u"FILEDSN="})
        if (odbcString.startsWith(prefix, Qt::CaseInsensitive)) return odbcString.mid(prefix.size());
    return odbcString;
}

} // namespace

DatabaseError odbcError(const QSqlError& error) {
    // The driver lists all diagnostics; the first is the cause, those behind it say that the statement was ended.
    const int number = error.nativeErrorCode().section(u';', 0, 0).toInt();
    const QString text = withoutOrigin(error.databaseText());
    if (error.type() == QSqlError::ConnectionError || contains(lostNumbers, number))
        return {DatabaseError::ConnectionFailed, u"無法連線資料庫伺服器! (%1)"_s.arg(text)};
    if (contains(lockedNumbers, number))
        return {DatabaseError::Locked, u"資料正被其他使用者鎖定,請稍候再試!"_s};
    if (contains(fullNumbers, number)) return {DatabaseError::DiskFull, u"伺服器磁碟已滿,資料庫無法寫入!"_s};
    if (contains(readOnlyNumbers, number)) return {DatabaseError::ReadOnly, u"資料庫是唯讀的,無法寫入!"_s};
    return {number, text};
}

OdbcConnection::OdbcConnection(const ConnectionTarget& target, ConnectionPool::Private& owner)
    : PhysicalConnection(owner) {
    const QString name = u"liaowu-%1"_s.arg(reinterpret_cast<quintptr>(this));
    database = pool.makeDriver ? QSqlDatabase::addDatabase(pool.makeDriver(), name)
                               : QSqlDatabase::addDatabase(u"QODBC"_s, name);
    database.setConnectOptions(u"SQL_ATTR_LOGIN_TIMEOUT=%1"_s.arg(loginSeconds));
    database.setDatabaseName(qtDatabaseName(target.odbcString));
    if (!database.open()) {
        const QSqlError error = database.lastError();
        database = {};
        QSqlDatabase::removeDatabase(name);
        throw DatabaseError(DatabaseError::ConnectionFailed,
                            u"無法連線資料庫伺服器! (%1)"_s.arg(withoutOrigin(error.databaseText())));
    }
    idle.start();
}

OdbcConnection::~OdbcConnection() {
    const QString name = database.connectionName();
    database.close();
    database = {};
    QSqlDatabase::removeDatabase(name);
}

void OdbcConnection::fail(const QSqlError& error) {
    DatabaseError failure = odbcError(error);
    if (failure.nativeError == DatabaseError::ConnectionFailed) broken = cancelled = true;
    if (error.nativeErrorCode().section(u';', 0, 0).toInt() == deadlockVictim) cancelled = true;
    throw failure;
}

void OdbcConnection::checkTransaction() const {
    if (inTransaction() && cancelled)
        throw DatabaseError(DatabaseError::Locked, u"交易已被資料庫取消,請重新操作!"_s);
}

void OdbcConnection::run(QSqlQuery& query, const QString& statement) {
    checkTransaction();
    traced(statement);
    query.setForwardOnly(true);
    if (!query.exec(statement)) fail(query.lastError());
    idle.start();
}

void OdbcConnection::doBegin() {
    cancelled = false;
    traced(u"BEGIN"_s);
    if (!database.transaction()) fail(database.lastError());
}

void OdbcConnection::doCommit() {
    checkTransaction();
    traced(u"COMMIT"_s);
    if (!database.commit()) fail(database.lastError());
}

void OdbcConnection::doRollback() {
    traced(u"ROLLBACK"_s);
    if (!database.rollback()) fail(database.lastError());
    cancelled = false;
}

qint64 OdbcConnection::doExecute(const QString& statement) {
    QSqlQuery query(database);
    run(query, statement);
    return std::max(0, query.numRowsAffected());
}

ShapePointer OdbcConnection::doRead(const QString& statement, RowBlock& rows) {
    QSqlQuery query(database);
    run(query, statement);
    if (!query.isSelect()) throw DatabaseError(DatabaseError::Usage, u"此敘述不是查詢,沒有資料可讀!"_s);
    auto shape = shapeOf(query.record());
    const auto columns = static_cast<int>(shape->fields.size());
    rows.reset(columns);
    while (query.next())
        for (int i = 0; i < columns; ++i)
            append(rows, query.value(i));
    if (query.lastError().isValid()) fail(query.lastError());
    rows.finish();
    return shape;
}

ShapePointer OdbcConnection::doDescribe(const QString& statement) {
    const WritableSelect select = writableSelect(statement);
    QSqlQuery query(database);
    run(query, select.table.isEmpty() ? statement : select.probe);
    auto shape = shapeOf(query.record());
    query.finish();
    if (select.table.isEmpty()) return shape;
    shape->table = select.table;
    for (ResultField& field : shape->fields)
        field.baseColumn = field.name;
    for (const QString& key : primaryKey(select.table)) {
        const auto holds = [&](const ResultField& field) {
            return field.name.compare(key, Qt::CaseInsensitive) == 0;
        };
        const auto found = std::find_if(shape->fields.begin(), shape->fields.end(), holds);
        if (found == shape->fields.end()) {
            shape->keys.clear();
            break;
        }
        shape->keys.push_back(static_cast<int>(found - shape->fields.begin()));
    }
    return shape;
}

const QStringList& OdbcConnection::primaryKey(const QString& table) {
    const auto known = primaryKeys.constFind(table);
    if (known != primaryKeys.constEnd()) return *known;
    const QSqlIndex index = database.primaryIndex(plainTableName(table));
    QStringList names;
    for (int i = 0; i < index.count(); ++i)
        names += index.fieldName(i);
    return *primaryKeys.insert(table, names);
}

void OdbcConnection::doInsert(const QString& table, const ColumnValues& values) {
    QSqlQuery query(database);
    run(query, insertStatement(table, values).text());
}

qint64 OdbcConnection::doUpdate(const QString& table, const ColumnValues& changes, const ColumnValues& keys,
                                const ColumnValues& old) {
    QSqlQuery query(database);
    run(query, updateStatement(table, changes, keys, old).text());
    // A driver that cannot count has not failed.
    return query.numRowsAffected() < 0 ? 1 : query.numRowsAffected();
}

bool OdbcConnection::alive() {
    if (!database.isOpen()) return false;
    if (idle.elapsed() < trustedIdleMilliseconds) return true;
    // A server that was restarted or a dropped line shows here and not in the user's next save.
    QSqlQuery query(database);
    query.setForwardOnly(true);
    traced(u"SELECT 1"_s);
    idle.start();
    return query.exec(u"SELECT 1"_s);
}

} // namespace liaowu
