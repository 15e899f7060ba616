#include "data/dialect/emit.h"
#include "data/dialect/lexer.h"
#include "data/dialect/refuse.h"
#include "data/dialect/view_types.h"
#include <algorithm>

namespace liaowu::dialect {

namespace {

QByteArray storedType(ValueType type, bool soleKey) {
    switch (type) {
    case ValueType::Integer:
        // INTEGER as a sole primary key would number new rows by itself.
        return soleKey ? "INT" : "INTEGER";
    case ValueType::Float:
        return "REAL";
    case ValueType::DateTime:
        return "DATETIME TEXT";
    default:
        return QByteArray("TEXT COLLATE ") + collationName;
    }
}

QByteArray joinedNames(const std::vector<QString>& names) {
    QByteArray text;
    for (const QString& name : names)
        text += (text.isEmpty() ? "" : ", ") + quotedName(name);
    return text;
}

void refuseExisting(const Catalog& catalog, const QString& name) {
    if (catalog.table(name))
        serverError(2714, u"There is already an object named '%1' in the database."_s.arg(name));
    if (name.startsWith(u"sqlite_"_s, Qt::CaseInsensitive))
        refuse(0, u"The name '%1' is reserved."_s.arg(name));
}

} // namespace

QByteArray Emitter::columnDefinition(const ColumnDefinition& column, bool soleKey, bool key) {
    QByteArray text = quotedName(column.name) + ' ' + storedType(column.type.type, soleKey);
    if (column.notNull || key) text += " NOT NULL";
    if (column.defaultValue) {
        const Expr& expr = *column.defaultValue;
        const Sql sql = emit(*column.defaultValue);
        ValueType type = column.type.type;
        // A default is a plain constant, so that other programs can insert too.
        if (sql.type == ValueType::Text && type == ValueType::Text) {
            text += " DEFAULT " + sql.text;
        } else if (sql.type == ValueType::Null) {
            text += " DEFAULT NULL";
        } else if (sql.type == ValueType::Text && expr.name.trimmed().isEmpty() &&
                   type != ValueType::DateTime) {
            text += " DEFAULT 0";
        } else if (sql.type != ValueType::Text && type == ValueType::Text) {
            text += " DEFAULT '" + sql.text + '\'';
        } else if (sql.type != ValueType::Text && type != ValueType::DateTime) {
            text += " DEFAULT " + sql.text;
        } else {
            refuse(expr.offset, u"This default is not covered by the embedded engine."_s);
        }
    }
    return text;
}

QByteArray Emitter::createTable(const Statement& statement) {
    refuseExisting(catalog, statement.name);
    std::vector<QString> keyColumns;
    QByteArray constraints;
    const auto known = [&](const QString& name) {
        return std::any_of(statement.columns.begin(), statement.columns.end(),
                           [&](const ColumnDefinition& column) { return sameName(column.name, name); });
    };
    for (const KeyDefinition& key : statement.keys) {
        for (size_t i = 0; i < key.columns.size(); ++i) {
            if (!known(key.columns[i]))
                serverError(1911, u"Column name '%1' does not exist in the target table or view."_s.arg(
                                      key.columns[i]));
            for (size_t k = 0; k < i; ++k) {
                if (sameName(key.columns[k], key.columns[i]))
                    serverError(
                        1909,
                        u"Cannot use duplicate column names in index. Column name '%1' listed more than "
                        "once."_s.arg(key.columns[i]));
            }
        }
        if (key.primary) {
            if (!keyColumns.empty())
                serverError(8110, u"Cannot add multiple PRIMARY KEY constraints to table '%1'."_s.arg(
                                      statement.name));
            keyColumns = key.columns;
        }
        const QByteArray name =
            key.name.isEmpty() ? QByteArray() : "CONSTRAINT " + quotedName(key.name) + ' ';
        constraints +=
            ",\n  " + name + (key.primary ? "PRIMARY KEY (" : "UNIQUE (") + joinedNames(key.columns) + ')';
    }
    QByteArray text = "CREATE TABLE " + quotedName(statement.name) + " (";
    for (size_t i = 0; i < statement.columns.size(); ++i) {
        const ColumnDefinition& column = statement.columns[i];
        for (size_t k = 0; k < i; ++k) {
            if (sameName(statement.columns[k].name, column.name))
                serverError(2705,
                            u"Column names in each table must be unique. Column name '%1' in table '%2' is "
                            "specified more than once."_s.arg(column.name, statement.name));
        }
        const bool key = std::any_of(keyColumns.begin(), keyColumns.end(),
                                     [&](const QString& name) { return sameName(name, column.name); });
        text += (i > 0 ? ",\n  " : "\n  ") + columnDefinition(column, key && keyColumns.size() == 1, key);
    }
    return text + constraints + "\n)";
}

QByteArray Emitter::addColumns(const Statement& statement) {
    const TableInfo& table = knownTable(statement.name);
    QByteArray text;
    for (const ColumnDefinition& column : statement.columns) {
        for (const TableColumn& other : table.columns) {
            if (sameName(other.name, column.name))
                serverError(2705,
                            u"Column names in each table must be unique. Column name '%1' in table '%2' is "
                            "specified more than once."_s.arg(column.name, table.name));
        }
        if (column.notNull && !column.defaultValue)
            refuse(column.offset, u"An added column must take NULL or have a default."_s);
        if (!text.isEmpty()) text += ";\n";
        text +=
            "ALTER TABLE " + quotedName(table.name) + " ADD COLUMN " + columnDefinition(column, false, false);
    }
    return text;
}

QByteArray Emitter::createIndex(const Statement& statement) const {
    const TableInfo& table = knownTable(statement.table);
    QByteArray text = (statement.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                      quotedName(statement.name) + " ON " + quotedName(table.name) + " (";
    for (size_t i = 0; i < statement.columnNames.size(); ++i) {
        const QString& name = statement.columnNames[i].first;
        const auto column = std::find_if(table.columns.begin(), table.columns.end(),
                                         [&](const TableColumn& c) { return sameName(c.name, name); });
        if (column == table.columns.end())
            serverError(1911, u"Column name '%1' does not exist in the target table or view."_s.arg(name));
        text += (i > 0 ? ", " : "") + quotedName(column->name) + (statement.descending[i] ? " DESC" : "");
    }
    return text + ')';
}

QByteArray Emitter::createView(Statement& statement) {
    refuseExisting(catalog, statement.name);
    Prepared prepared = prepare(*statement.select, nullptr, true);
    if (!statement.columnNames.empty() && statement.columnNames.size() != prepared.columns.size())
        serverError(8158,
                    u"'%1' has more columns than were specified in the column list."_s.arg(statement.name));
    QByteArray names;
    std::vector<ValueType> types;
    for (size_t i = 0; i < prepared.columns.size(); ++i) {
        QString& name = prepared.columns[i].name;
        if (!statement.columnNames.empty()) name = statement.columnNames[i].first;
        if (name.isEmpty())
            serverError(
                4511,
                u"Create View or Function failed because no column name was specified for column %1."_s.arg(
                    i + 1));
        for (size_t k = 0; k < i; ++k) {
            if (sameName(prepared.columns[k].name, name))
                serverError(
                    4506,
                    u"Column names in each view or function must be unique. Column name '%1' in view or "
                    "function '%2' is specified more than once."_s.arg(name, statement.name));
        }
        names += (i > 0 ? ", " : "") + quotedName(name);
        types.push_back(prepared.columns[i].type);
    }
    return "CREATE VIEW " + quotedName(statement.name) + " (" + names + ") AS " + viewTypesComment(types) +
           ' ' + finish(prepared, {});
}

QByteArray Emitter::drop(const Statement& statement) const {
    const bool index = statement.kind == Statement::Kind::DropIndex;
    const TableInfo* table = index ? nullptr : catalog.table(statement.name);
    const bool view = statement.kind == Statement::Kind::DropView;
    if (!index && !statement.ifExists && (!table || table->view != view))
        serverError(
            3701, u"Cannot drop the %1 '%2', because it does not exist or you do not have permission."_s.arg(
                      view ? u"view"_s : u"table"_s, statement.name));
    const QByteArray kind = index ? "INDEX " : view ? "VIEW " : "TABLE ";
    return "DROP " + kind + (statement.ifExists ? "IF EXISTS " : "") + quotedName(statement.name);
}

} // namespace liaowu::dialect
