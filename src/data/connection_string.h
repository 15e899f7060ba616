#pragma once
#include <QHash>
#include <QString>

namespace liaowu {

/// A connection string taken apart. Keys compare without case.
struct ConnectionTarget {
    enum class Engine { Embedded, Odbc } engine = Engine::Embedded;
    QString file;          ///< of the embedded engine
    bool readOnly = false; ///< "Mode=Read" of the embedded engine
    QString odbcString;    ///< what goes to the ODBC driver manager
};

/// Understands "Provider=SQLite;Data Source=/path/plant.db", OLE DB strings of the server (SQLOLEDB, SQLNCLI11,
/// MSOLEDBSQL) and raw ODBC strings ("Driver={...};..." or "DSN=..."). Throws `DatabaseError` naming the key that was
/// not understood, never a password.
ConnectionTarget parseConnectionString(const QString& text);

/// "Provider=SQLite;Data Source=..." for a file name; a text that is a connection string already stays.
QString connectionStringFor(const QString& fileOrConnectionString);

} // namespace liaowu
