#include "data/embedded_connection.h"
#include "data/engine_error.h"
#include <QFileInfo>
#include <QStringEncoder>
#include <algorithm>
#include <sqlite3.h>

namespace liaowu {

namespace {

using namespace Qt::StringLiterals;
using dialect::Literal;

constexpr int keptShapes = 256;
constexpr int keptWriters = 64;

/// Leaves no statement open between commands.
class ResetAtEnd {
public:
    explicit ResetAtEnd(sqlite3_stmt* used) : statement(used) {}
    ~ResetAtEnd() { sqlite3_reset(statement); }
    ResetAtEnd(const ResetAtEnd&) = delete;
    ResetAtEnd& operator=(const ResetAtEnd&) = delete;

private:
    sqlite3_stmt* statement;
};

QString traceText(const Literal& literal) {
    switch (literal.kind) {
    case Literal::Kind::Null:
        return QString(QChar(u'\0'));
    case Literal::Kind::Text:
        return literal.text;
    case Literal::Kind::Float:
        return QString::number(literal.number, 'g', 17);
    case Literal::Kind::Integer:
        return QString::number(literal.integer);
    }
    return {};
}

/// Runs to the end, dropping rows.
void finish(sqlite3_stmt* statement) {
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW)
        code = sqlite3_step(statement);
    if (code != SQLITE_DONE) throw engineError(sqlite3_db_handle(statement));
}

void readRow(sqlite3_stmt* statement, int columns, RowBlock& rows) {
    for (int i = 0; i < columns; ++i) {
        // The connection has no locks of its own, so the value may be read as it stands, without finding it each time.
        sqlite3_value* const value = sqlite3_column_value(statement, i);
        switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            rows.appendNull();
            break;
        case SQLITE_INTEGER:
            rows.appendInteger(sqlite3_value_int64(value));
            break;
        case SQLITE_FLOAT:
            rows.appendFloat(sqlite3_value_double(value));
            break;
        default: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
            rows.appendText(text, sqlite3_value_bytes(value));
        }
        }
    }
}

/// Reads from the row on that `code` tells of to the end.
void readRest(sqlite3_stmt* statement, int code, RowBlock& rows) {
    const int columns = sqlite3_column_count(statement);
    rows.reset(columns);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement))
        readRow(statement, columns, rows);
    if (code != SQLITE_DONE) throw engineError(sqlite3_db_handle(statement));
    rows.finish();
}

QByteArray quoted(const QString& name) {
    return '"' + name.toUtf8().replace("\"", "\"\"") + '"';
}

bool isKept(const dialect::Translation& translation) {
    return translation.kind != dialect::Translation::Kind::Batch &&
           translation.kind != dialect::Translation::Kind::Schema;
}

} // namespace

/// Values of one run. The engine reads the texts where they lie, so they live until the run is over.
class EmbeddedConnection::Bindings {
public:
    explicit Bindings(sqlite3_stmt* target) : statement(target) {}

    void add(const Literal& literal) {
        ++position;
        int code = SQLITE_OK;
        switch (literal.kind) {
        case Literal::Kind::Null:
            code = sqlite3_bind_null(statement, position);
            break;
        case Literal::Kind::Float:
            code = sqlite3_bind_double(statement, position, literal.number);
            break;
        case Literal::Kind::Integer:
            code = sqlite3_bind_int64(statement, position, literal.integer);
            break;
        case Literal::Kind::Text: {
            const QByteArrayView text = encoded(literal.text);
            code = sqlite3_bind_text64(statement, position, text.data(),
                                       static_cast<sqlite3_uint64>(text.size()), SQLITE_STATIC, SQLITE_UTF8);
            break;
        }
        }
        if (code != SQLITE_OK) throw engineError(sqlite3_db_handle(statement));
    }

private:
    /// Many short texts share one block.
    QByteArrayView encoded(QStringView text) {
        QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
        const qsizetype most = encoder.requiredSpace(text.size());
        if (left < most) {
            left = std::max<qsizetype>(most, 4096);
            next = blocks.emplace_back(left, Qt::Uninitialized).data();
        }
        char* const begin = next;
        next = encoder.appendToBuffer(begin, text);
        left -= next - begin;
        return {begin, next - begin};
    }

    sqlite3_stmt* statement;
    int position = 0;
    std::vector<QByteArray> blocks;
    char* next = nullptr;
    qsizetype left = 0;
};

void EmbeddedConnection::CloseDatabase::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}
void EmbeddedConnection::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

EmbeddedConnection::EmbeddedConnection(const ConnectionTarget& target, ConnectionPool::Private& owner)
    : PhysicalConnection(owner), shapes(keptShapes), writers(keptWriters) {
    open(target.file, target.readOnly);
    configure();
}

EmbeddedConnection::~EmbeddedConnection() = default;

void EmbeddedConnection::open(const QString& file, bool readOnly) {
    const QFileInfo info(file);
    if (!info.exists())
        throw DatabaseError(DatabaseError::ConnectionFailed, u"找不到資料庫檔案「%1」!"_s.arg(file));
    if (!info.isFile()) throw DatabaseError(DatabaseError::ConnectionFailed, u"「%1」不是檔案!"_s.arg(file));
    // One thread uses a connection at a time, so the engine's own locks are left out.
    const int flags = (readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_NOMUTEX;
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(file.toUtf8().constData(), &handle, flags, nullptr);
    database.reset(handle);
    if (code != SQLITE_OK) throw engineError(code, QString::fromUtf8(sqlite3_errstr(code)));
}

void EmbeddedConnection::configure() {
    sqlite3_extended_result_codes(handle(), 1);
    sqlite3_busy_timeout(handle(), pool.busyTimeout);
    // A misspelt "name" must not pass as a text.
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    dialect::installFunctions(handle(), [state = &pool] { return state->now(); });
    if (!sqlite3_db_readonly(handle(), "main")) run("PRAGMA journal_mode=WAL");
    run("PRAGMA synchronous=FULL");
    run("PRAGMA foreign_keys=OFF");
    schemaVersion = prepare("PRAGMA schema_version", -1);
    forgetOldSchema();
    catalog = dialect::catalogOf(handle());
}

void EmbeddedConnection::run(const char* statement) {
    if (sqlite3_exec(handle(), statement, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw engineError(handle());
}

EmbeddedConnection::Statement EmbeddedConnection::prepare(const char* native, int size, const char** tail) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(handle(), native, size, SQLITE_PREPARE_PERSISTENT, &statement, tail) != SQLITE_OK)
        throw engineError(handle());
    return Statement(statement);
}

qint64 EmbeddedConnection::schemaNow() {
    const ResetAtEnd reset(schemaVersion.get());
    if (sqlite3_step(schemaVersion.get()) != SQLITE_ROW) throw engineError(handle());
    return sqlite3_column_int64(schemaVersion.get(), 0);
}

void EmbeddedConnection::forgetOldSchema() {
    const qint64 version = schemaNow();
    if (version == knownSchema) return;
    knownSchema = version;
    shapes.clear();
    writers.clear();
}

void EmbeddedConnection::checkTransaction() const {
    if (inTransaction() && sqlite3_get_autocommit(handle()))
        throw DatabaseError(DatabaseError::EngineFailed, u"交易已被資料庫取消,請重新操作!"_s);
}

void EmbeddedConnection::doBegin() {
    // A deferred transaction fails at its first write when another user has written since.
    traced(u"BEGIN IMMEDIATE"_s);
    run("BEGIN IMMEDIATE");
    forgetOldSchema();
}

void EmbeddedConnection::doCommit() {
    traced(u"COMMIT"_s);
    run("COMMIT");
}

void EmbeddedConnection::doRollback() {
    if (sqlite3_get_autocommit(handle())) return;
    traced(u"ROLLBACK"_s);
    run("ROLLBACK");
    // What a schema change inside had made known is gone again.
    forgetOldSchema();
}

ShapePointer EmbeddedConnection::resultOf(const dialect::Translation& translation) const {
    auto shape = std::make_shared<ResultShape>();
    for (const dialect::ResultColumn& column : translation.columns)
        shape->fields.push_back({column.name, column.type, column.baseColumn});
    if (translation.baseTable.isEmpty()) return shape;
    shape->table = translation.baseTable;
    const dialect::TableInfo* table = catalog->table(translation.baseTable);
    if (!table) return shape;
    for (const dialect::TableColumn& column : table->columns) {
        if (!column.primaryKey) continue;
        int at = -1;
        for (int i = 0; i < static_cast<int>(shape->fields.size()) && at < 0; ++i)
            if (shape->fields[static_cast<std::size_t>(i)].baseColumn.compare(column.name,
                                                                              Qt::CaseInsensitive) == 0)
                at = i;
        if (at < 0) {
            shape->keys.clear();
            return shape;
        }
        shape->keys.push_back(at);
    }
    return shape;
}

EmbeddedConnection::CachedShape& EmbeddedConnection::shapeOf(const dialect::Lifted& lifted,
                                                             std::unique_ptr<CachedShape>& unkept) {
    if (CachedShape* known = shapes.object(lifted.shape)) return *known;
    unkept = std::make_unique<CachedShape>();
    unkept->translation = dialect::translate(lifted, *catalog);
    if (!unkept->translation.columns.empty()) unkept->result = resultOf(unkept->translation);
    if (!isKept(unkept->translation)) return *unkept;
    const QByteArray& native = unkept->translation.native;
    unkept->statement = prepare(native.constData(), static_cast<int>(native.size()));
    CachedShape* kept = unkept.release();
    shapes.insert(lifted.shape, kept);
    return *kept;
}

EmbeddedConnection::Bindings EmbeddedConnection::bind(sqlite3_stmt* statement,
                                                      const dialect::Translation& translation,
                                                      const dialect::Lifted& lifted) const {
    Bindings bindings(statement);
    QStringList values;
    // Marks are numbered over the whole translation, so a part of a batch skips those of the parts before it.
    const int marks = sqlite3_bind_parameter_count(statement);
    for (int i = 0; i < marks; ++i) {
        const Literal value =
            dialect::valueOf(translation.parameters.at(static_cast<std::size_t>(i)), lifted);
        bindings.add(value);
        if (tracing()) values += traceText(value);
    }
    if (tracing()) traced(QString::fromUtf8(sqlite3_sql(statement)).trimmed(), values);
    return bindings;
}

qint64 EmbeddedConnection::doExecute(const QString& statement) {
    checkTransaction();
    if (!inTransaction()) forgetOldSchema();
    const dialect::Lifted lifted = dialect::lift(statement);
    std::unique_ptr<CachedShape> unkept;
    const CachedShape& cached = shapeOf(lifted, unkept);
    if (!cached.statement) {
        RowBlock dropped;
        return runBatch(cached.translation, lifted, dropped);
    }
    const ResetAtEnd reset(cached.statement.get());
    const Bindings bindings = bind(cached.statement.get(), cached.translation, lifted);
    finish(cached.statement.get());
    return cached.result ? 0 : sqlite3_changes64(handle());
}

qint64 EmbeddedConnection::runBatch(const dialect::Translation& translation, const dialect::Lifted& lifted,
                                    RowBlock& rows) {
    const char* next = translation.native.constData();
    const char* const end = next + translation.native.size();
    const qint64 before = sqlite3_total_changes64(handle());
    while (next < end) {
        // Each is prepared when its turn comes: it may need the table that the one before it makes.
        const Statement statement = prepare(next, static_cast<int>(end - next), &next);
        if (!statement) continue;
        const Bindings bindings = bind(statement.get(), translation, lifted);
        readRest(statement.get(), sqlite3_step(statement.get()), rows);
    }
    forgetOldSchema();
    return sqlite3_total_changes64(handle()) - before;
}

ShapePointer EmbeddedConnection::doRead(const QString& statement, RowBlock& rows) {
    checkTransaction();
    const dialect::Lifted lifted = dialect::lift(statement);
    ShapePointer shape = readOnce(lifted, rows);
    while (!shape) {
        forgetOldSchema();
        shape = readOnce(lifted, rows);
    }
    return shape;
}

ShapePointer EmbeddedConnection::readOnce(const dialect::Lifted& lifted, RowBlock& rows) {
    std::unique_ptr<CachedShape> unkept;
    const CachedShape& cached = shapeOf(lifted, unkept);
    if (!cached.result) throw DatabaseError(DatabaseError::Usage, u"此敘述不是查詢,沒有資料可讀!"_s);
    if (!cached.statement) {
        runBatch(cached.translation, lifted, rows);
        return cached.result;
    }
    sqlite3_stmt* const statement = cached.statement.get();
    const ResetAtEnd reset(statement);
    const Bindings bindings = bind(statement, cached.translation, lifted);
    const int code = sqlite3_step(statement);
    // A schema that another user changed shows only now, when the engine has prepared the statement anew or failed to.
    const bool suspicious = (code != SQLITE_ROW && code != SQLITE_DONE) ||
                            sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 1) != 0;
    if (suspicious) {
        DatabaseError failure = engineError(handle());
        if (schemaNow() != knownSchema) return nullptr;
        if (code != SQLITE_ROW && code != SQLITE_DONE) throw failure;
    }
    readRest(statement, code, rows);
    return cached.result;
}

ShapePointer EmbeddedConnection::doDescribe(const QString& statement) {
    checkTransaction();
    if (!inTransaction()) forgetOldSchema();
    const dialect::Lifted lifted = dialect::lift(statement);
    std::unique_ptr<CachedShape> unkept;
    const CachedShape& cached = shapeOf(lifted, unkept);
    if (!cached.result) throw DatabaseError(DatabaseError::Usage, u"此敘述不是查詢,沒有資料可讀!"_s);
    return cached.result;
}

sqlite3_stmt* EmbeddedConnection::writer(const QByteArray& native) {
    if (const Statement* known = writers.object(native)) return known->get();
    auto statement =
        std::make_unique<Statement>(prepare(native.constData(), static_cast<int>(native.size())));
    sqlite3_stmt* const prepared = statement->get();
    writers.insert(native, statement.release());
    return prepared;
}

qint64 EmbeddedConnection::runWriter(sqlite3_stmt* statement,
                                     std::initializer_list<const ColumnValues*> values) const {
    const ResetAtEnd reset(statement);
    Bindings bindings(statement);
    QStringList texts;
    for (const ColumnValues* list : values) {
        for (const ColumnValue& value : *list) {
            bindings.add(*value.value);
            if (tracing()) texts += traceText(*value.value);
        }
    }
    if (tracing()) traced(QString::fromUtf8(sqlite3_sql(statement)), texts);
    finish(statement);
    return sqlite3_changes64(handle());
}

void EmbeddedConnection::doInsert(const QString& table, const ColumnValues& values) {
    checkTransaction();
    if (!inTransaction()) forgetOldSchema();
    const auto same = [](const QString& name, const ColumnValue& value) { return name == *value.column; };
    if (lastInsert.table != table ||
        !std::equal(lastInsert.columns.begin(), lastInsert.columns.end(), values.begin(), values.end(), same))
        composeInsert(table, values);
    runWriter(writer(lastInsert.native), {&values});
}

void EmbeddedConnection::composeInsert(const QString& table, const ColumnValues& values) {
    lastInsert.table = table;
    lastInsert.columns.clear();
    QByteArray names, marks;
    for (const ColumnValue& value : values) {
        lastInsert.columns.push_back(*value.column);
        names += (names.isEmpty() ? "" : ",") + quoted(*value.column);
        marks += marks.isEmpty() ? "?" : ",?";
    }
    lastInsert.native = "INSERT INTO " + quoted(table) + " (" + names + ") VALUES (" + marks + ')';
    if (values.empty()) lastInsert.native = "INSERT INTO " + quoted(table) + " DEFAULT VALUES";
}

qint64 EmbeddedConnection::doUpdate(const QString& table, const ColumnValues& changes,
                                    const ColumnValues& keys, const ColumnValues& old) {
    checkTransaction();
    if (!inTransaction()) forgetOldSchema();
    QByteArray native = "UPDATE " + quoted(table) + " SET ";
    const auto list = [&](const ColumnValues& values, const char* between, const char* sign) {
        for (std::size_t i = 0; i < values.size(); ++i)
            native += (i == 0 ? "" : between) + quoted(*values[i].column) + sign;
    };
    list(changes, ",", "=?");
    native += " WHERE ";
    list(keys, " AND ", " IS ?");
    if (!old.empty()) native += " AND ";
    // Compared letter by letter: by the column's own collation a change of case would go unseen.
    list(old, " AND ", " COLLATE BINARY IS ?");
    return runWriter(writer(native), {&changes, &keys, &old});
}

bool EmbeddedConnection::alive() {
    // A file that was replaced under the same name is another database.
    int moved = 0;
    const int code = sqlite3_file_control(handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return code == SQLITE_OK && !moved;
}

} // namespace liaowu
