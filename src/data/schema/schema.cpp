#include "data/schema/schema.h"
#include "data/connection_pool.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <sqlite3.h>

static void registerSchemaFiles() {
    Q_INIT_RESOURCE(schema);
}

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

/// In the order of their dependencies: what a view reads comes before it.
constexpr std::array<const char16_t*, 8> SchemaFiles{u"users",      u"masters",     u"purchasing",
                                                     u"warehouse",  u"work_tables", u"other_modules",
                                                     u"own_tables", u"views"};

QString withoutComments(const QString& text) {
    QStringList kept;
    for (const QString& line : text.split(u'\n'))
        if (!line.trimmed().startsWith(u"--"_s)) kept << line;
    return kept.join(u'\n');
}

QStringList statementsOf(QStringView file) {
    registerSchemaFiles();
    QFile source(u":/schema/%1.sql"_s.arg(file));
    if (!source.open(QIODevice::ReadOnly))
        throw DatabaseError(DatabaseError::Usage, u"程式內沒有資料庫結構 %1"_s.arg(file));
    static const QRegularExpression separator(u"^go\\s*$"_s, QRegularExpression::MultilineOption);
    QStringList statements;
    for (const QString& piece : withoutComments(QString::fromUtf8(source.readAll())).split(separator))
        if (const QString statement = piece.trimmed(); !statement.isEmpty()) statements << statement;
    return statements;
}

/// Name of the object that a statement makes, folded for comparison.
QString objectName(const QString& statement) {
    static const QRegularExpression head(
        u"^create\\s+(?:table|view|index|function)\\s+(?:\\[([^\\]]+)\\]|dbo\\.(\\w+))"_s);
    const QRegularExpressionMatch match = head.match(statement);
    return (match.captured(1) + match.captured(2)).toCaseFolded();
}

void makeFile(const QString& file) {
    if (QFileInfo::exists(file)) return;
    sqlite3* database = nullptr;
    const int opened = sqlite3_open_v2(file.toUtf8().constData(), &database,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    // An empty database has no file yet; a version number brings one about.
    const int written = opened == SQLITE_OK
                            ? sqlite3_exec(database, "pragma user_version = 1", nullptr, nullptr, nullptr)
                            : opened;
    const QString reason = QString::fromUtf8(sqlite3_errmsg(database));
    sqlite3_close(database);
    if (written != SQLITE_OK)
        throw DatabaseError(DatabaseError::ConnectionFailed, u"無法建立資料庫檔案 %1:%2"_s.arg(file, reason));
}

QSet<QString> objectsOfFile(const QString& file) {
    sqlite3* database = nullptr;
    QSet<QString> names;
    int result = sqlite3_open_v2(file.toUtf8().constData(), &database, SQLITE_OPEN_READWRITE, nullptr);
    if (result == SQLITE_OK) {
        sqlite3_busy_timeout(database, 10000);
        const auto row = [](void* set, int, char** values, char**) {
            static_cast<QSet<QString>*>(set)->insert(QString::fromUtf8(values[0]).toCaseFolded());
            return 0;
        };
        result = sqlite3_exec(database, "select name from sqlite_master", row, &names, nullptr);
    }
    const QString reason = QString::fromUtf8(sqlite3_errmsg(database));
    sqlite3_close(database);
    if (result != SQLITE_OK)
        throw DatabaseError(DatabaseError::ConnectionFailed, u"無法讀取資料庫檔案 %1:%2"_s.arg(file, reason));
    return names;
}

QSet<QString> objectsOfServer(Connection& connection) {
    QSet<QString> names;
    const Recordset rows = select(
        connection,
        sql(u"select name from sys.objects union select name from sys.indexes where name is not null"));
    for (int row = 0; row < rows.RecordCount(); ++row)
        names.insert(rows.textAt(row, 0).toCaseFolded());
    return names;
}

bool isEmbedded(const QString& connectionString) {
    return parseConnectionString(connectionString).engine == ConnectionTarget::Engine::Embedded;
}

/// Read before the data layer holds a transaction: the file is looked at through a handle of its own.
QSet<QString> existingObjects(ConnectionPool& pool, const QString& connectionString) {
    if (isEmbedded(connectionString)) return objectsOfFile(parseConnectionString(connectionString).file);
    Connection connection(pool, connectionString);
    return objectsOfServer(connection);
}

void createMissing(Connection& connection, const QStringList& statements, const QSet<QString>& existing) {
    for (const QString& statement : statements)
        if (!existing.contains(objectName(statement))) connection.Execute(readyMadeSql(statement));
}

void writeVersion(Connection& connection, int version) {
    connection.Execute(sql(u"insert into [料務_版本] ([版本], [建立時間]) values ({}, dbo.DT(9))", version));
}

/// What leads from the version before to `to`. Statements whose object exists already are passed over.
struct UpgradeStep {
    int to;
    QStringList statements;
};

std::vector<UpgradeStep> upgradeSteps() {
    // A plain database of the suite has no version: it gets the tables of our own and nothing else is touched.
    QStringList own = statementsOf(u"own_tables");
    for (const QString& statement : statementsOf(u"views"))
        if (objectName(statement).startsWith(u"料務_"_s)) own << statement;
    return {{1, own}};
}

} // namespace

int schemaVersion() {
    return 1;
}

QStringList schemaStatements() {
    QStringList all;
    for (const char16_t* file : SchemaFiles)
        all << statementsOf(file);
    return all;
}

void createSchema(ConnectionPool& pool, const QString& connectionString, SchemaParts parts) {
    const bool embedded = isEmbedded(connectionString);
    if (embedded) makeFile(parseConnectionString(connectionString).file);
    const QSet<QString> existing = existingObjects(pool, connectionString);
    QStringList statements = schemaStatements();
    if (parts == SchemaParts::WithoutIndexes)
        statements.removeIf([](const QString& statement) { return statement.startsWith(u"create index"_s); });
    if (!embedded) statements = statementsOf(u"server") + statements;

    Connection connection(pool, connectionString);
    Transaction transaction(connection);
    createMissing(connection, statements, existing);
    if (!existing.contains(u"料務_版本"_s)) writeVersion(connection, schemaVersion());
    transaction.commit();
}

int storedVersion(Connection& connection) {
    try {
        const Recordset rows = select(connection, sql(u"select max([版本]) as [版本] from [料務_版本]"));
        return static_cast<int>(rows.number(u"版本"));
    } catch (const DatabaseError& error) {
        if (error.nativeError == DatabaseError::InvalidObject) return 0;
        throw;
    }
}

void upgradeSchema(ConnectionPool& pool, const QString& connectionString) {
    const QSet<QString> existing = existingObjects(pool, connectionString);
    Connection connection(pool, connectionString);
    const int stored = storedVersion(connection);
    if (stored > schemaVersion())
        throw DatabaseError(
            DatabaseError::Usage,
            u"資料庫的版本 %1 比程式的版本 %2 新,請先更新程式"_s.arg(stored).arg(schemaVersion()));
    Transaction transaction(connection);
    for (const UpgradeStep& step : upgradeSteps()) {
        if (step.to <= stored) continue;
        createMissing(connection, step.statements, existing);
        writeVersion(connection, step.to);
    }
    transaction.commit();
}

} // namespace liaowu
