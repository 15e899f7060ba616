#pragma once
#include "data/connection.h"
#include "data/connection_pool.h"
#include "data/connection_string.h"
#include "data/embedded_connection.h"
#include "data/recordset.h"
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace liaowu {

/// A file of the embedded engine that goes with the test.
class TestDatabase {
public:
    TestDatabase() {
        QFile created(file);
        if (!created.open(QIODevice::WriteOnly)) throw std::runtime_error("no temporary file");
    }

    void run(std::initializer_list<const char16_t*> statements) {
        Connection connection(pool, target);
        for (const char16_t* statement : statements)
            connection.Execute(readyMadeSql(QString::fromUtf16(statement)));
    }

    /// First field of the first row; "(none)" without rows.
    QString value(const char16_t* statement) {
        Connection connection(pool, target);
        const Recordset rows = select(connection, readyMadeSql(QString::fromUtf16(statement)));
        return rows.EOF_() ? QStringLiteral("(none)") : rows.text(0);
    }

    QTemporaryDir folder;
    QString file = folder.filePath(QStringLiteral("plant.db"));
    QString target = connectionStringFor(file);
    ConnectionPool pool;
};

/// What the engine answers by itself, untranslated: rows with their cells joined by "|".
inline QStringList engineRows(sqlite3* handle, const QByteArray& statement) {
    const auto append = [](void* rows, int count, char** cells, char**) {
        QStringList texts;
        for (int i = 0; i < count; ++i)
            texts << QString::fromUtf8(cells[i]);
        *static_cast<QStringList*>(rows) << texts.join(u'|');
        return 0;
    };
    QStringList rows;
    EXPECT_EQ(sqlite3_exec(handle, statement.constData(), append, &rows, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle);
    return rows;
}

inline sqlite3* handleOf(Connection& connection) {
    return static_cast<EmbeddedConnection&>(connection.physical()).handle();
}

/// Another program's handle on the same file.
class OtherUser {
public:
    explicit OtherUser(const QString& file) {
        EXPECT_EQ(sqlite3_open(file.toUtf8().constData(), &handle), SQLITE_OK);
    }
    ~OtherUser() { sqlite3_close(handle); }
    OtherUser(const OtherUser&) = delete;
    OtherUser& operator=(const OtherUser&) = delete;

    QStringList run(const QByteArray& statement) { return engineRows(handle, statement); }

    sqlite3* handle = nullptr;
};

/// Number of the `DatabaseError` that `deed` throws, 0 when it throws none; `text` gets its text.
template <typename Deed>
int errorOf(Deed deed, QString* text = nullptr) {
    try {
        deed();
    } catch (const DatabaseError& error) {
        if (text) *text = error.text;
        return error.nativeError;
    }
    return 0;
}

/// Whether `deed` throws a `DatabaseError` of this number that says so.
template <typename Deed>
testing::AssertionResult fails(Deed deed, int number, QStringView says = {}) {
    QString text;
    const int thrown = errorOf(deed, &text);
    if (thrown == number && text.contains(says)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << thrown << ": " << text;
}

} // namespace liaowu
