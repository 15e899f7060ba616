#include "data/dialect/emit.h"
#include "data/dialect/engine_limits.h"
#include "data/dialect/lexer.h"
#include "data/dialect/parser.h"
#include "data/dialect/refuse.h"
#include <algorithm>

namespace liaowu::dialect {

namespace {

const TableColumn& knownColumn(const TableInfo& table, const QString& name) {
    for (const TableColumn& column : table.columns) {
        if (sameName(column.name, name)) return column;
    }
    serverError(DatabaseError::InvalidColumn, u"Invalid column name '%1'."_s.arg(name));
}

Translation::Kind kindOf(Statement::Kind kind) {
    switch (kind) {
    case Statement::Kind::Select:
        return Translation::Kind::Select;
    case Statement::Kind::Insert:
        return Translation::Kind::Insert;
    case Statement::Kind::Update:
        return Translation::Kind::Update;
    case Statement::Kind::Delete:
        return Translation::Kind::Delete;
    default:
        return Translation::Kind::Schema;
    }
}

void refuseView(const TableInfo& table) {
    if (table.view)
        serverError(
            4406,
            u"Update or insert of view or function '%1' failed because it contains a derived or constant "
            "field."_s.arg(table.name));
}

} // namespace

void Emitter::run(std::vector<Statement>& statements) {
    const bool only = statements.size() == 1;
    translation.kind = only ? kindOf(statements[0].kind) : Translation::Kind::Batch;
    for (size_t i = 0; i < statements.size(); ++i) {
        if (i > 0) translation.native += ";\n";
        scope = nullptr;
        aliases.clear();
        translation.native += statement(statements[i], i + 1 == statements.size(), only);
    }
    if (!fitsParserStack(translation.native)) refuse(0, u"The statement is nested too deeply."_s);
    if (translation.parameters.size() > 30000)
        refuse(0, u"A statement of so many literals is not covered."_s);
}

QByteArray Emitter::statement(Statement& statement, bool last, bool only) {
    switch (statement.kind) {
    case Statement::Kind::Select: {
        if (!last) refuse(statement.offset, u"A SELECT followed by another statement is not covered."_s);
        Prepared prepared = prepare(*statement.select, nullptr, false);
        for (const OutputColumn& column : prepared.columns) {
            const bool writable = prepared.baseTable && !prepared.baseTable->view;
            translation.columns.push_back(
                {column.name, publicType(column.type), writable ? column.baseColumn : QString()});
        }
        if (prepared.baseTable && !prepared.baseTable->view) translation.baseTable = prepared.baseTable->name;
        return finish(prepared, {});
    }
    case Statement::Kind::Insert:
        return insert(statement);
    case Statement::Kind::Update:
        return update(statement);
    case Statement::Kind::Delete:
        return deletion(statement);
    default:
        break;
    }
    // What a batch creates is not known to its later statements.
    if (!only) refuse(statement.offset, u"A change of the schema must stand alone."_s);
    switch (statement.kind) {
    case Statement::Kind::CreateTable:
        return createTable(statement);
    case Statement::Kind::CreateIndex:
        return createIndex(statement);
    case Statement::Kind::CreateView:
        return createView(statement);
    case Statement::Kind::AddColumns:
        return addColumns(statement);
    default:
        return drop(statement);
    }
}

QByteArray Emitter::insert(Statement& statement) {
    const TableInfo& table = knownTable(statement.name);
    refuseView(table);
    std::vector<const TableColumn*> targets;
    for (const auto& [name, offset] : statement.columnNames) {
        const TableColumn& column = knownColumn(table, name);
        if (std::find(targets.begin(), targets.end(), &column) != targets.end())
            serverError(
                264,
                u"The column name '%1' is specified more than once in the SET clause or column list of an "
                "INSERT."_s.arg(name));
        targets.push_back(&column);
    }
    if (targets.empty()) {
        for (const TableColumn& column : table.columns)
            targets.push_back(&column);
    }
    const auto requireCount = [&](size_t count) {
        if (count == targets.size()) return;
        if (statement.columnNames.empty())
            serverError(213, u"Column name or number of supplied values does not match table definition."_s);
        if (count > targets.size())
            serverError(
                110, u"There are fewer columns in the INSERT statement than values specified in the VALUES "
                     "clause. The number of values in the VALUES clause must match the number of columns "
                     "specified in the INSERT statement."_s);
        serverError(
            109,
            u"There are more columns in the INSERT statement than values specified in the VALUES clause. "
            "The number of values in the VALUES clause must match the number of columns specified in the "
            "INSERT statement."_s);
    };
    QByteArray text = "INSERT INTO " + quotedName(table.name) + " (";
    std::vector<ValueType> types;
    for (size_t i = 0; i < targets.size(); ++i) {
        text += (i > 0 ? ", " : "") + quotedName(targets[i]->name);
        types.push_back(valueType(targets[i]->type));
    }
    text += ')';
    if (statement.select) {
        Prepared prepared = prepare(*statement.select, nullptr, false);
        requireCount(prepared.columns.size());
        return text + ' ' + finish(prepared, {types, false, false});
    }
    text += " VALUES ";
    for (size_t r = 0; r < statement.rows.size(); ++r) {
        requireCount(statement.rows[r].size());
        text += r > 0 ? ", (" : "(";
        for (size_t i = 0; i < types.size(); ++i)
            text += (i > 0 ? ", " : "") + valueAs(*statement.rows[r][i], types[i]).text;
        text += ')';
    }
    return text;
}

QByteArray Emitter::update(Statement& statement) {
    TableRef target;
    target.name = statement.name;
    target.offset = statement.nameOffset;
    scope = newScope(nullptr);
    scope->clause = Clause::Where;
    QByteArray text = "UPDATE " + tableSource(target) + " SET ";
    const TableInfo& table = *scope->sources[0]->table;
    refuseView(table);
    std::vector<const TableColumn*> assigned;
    for (const auto& [name, value] : statement.assignments) {
        const TableColumn& column = knownColumn(table, name->name);
        if (!name->qualifier.isEmpty() && !sameName(name->qualifier, table.name))
            serverError(4104, u"The multi-part identifier \"%1.%2\" could not be bound."_s.arg(
                                  name->qualifier, name->name));
        if (std::find(assigned.begin(), assigned.end(), &column) != assigned.end())
            serverError(
                264,
                u"The column name '%1' is specified more than once in the SET clause or column list of an "
                "INSERT."_s.arg(name->name));
        if (!assigned.empty()) text += ", ";
        text += quotedName(column.name) + " = " + valueAs(*value, valueType(column.type)).text;
        assigned.push_back(&column);
    }
    if (statement.where) text += " WHERE " + condition(*statement.where).text;
    return text;
}

QByteArray Emitter::deletion(Statement& statement) {
    TableRef target;
    target.name = statement.name;
    target.offset = statement.nameOffset;
    scope = newScope(nullptr);
    scope->clause = Clause::Where;
    QByteArray text = "DELETE FROM " + tableSource(target);
    refuseView(*scope->sources[0]->table);
    if (statement.where) text += " WHERE " + condition(*statement.where).text;
    return text;
}

Translation translate(const Lifted& statement, const Catalog& catalog) {
    std::vector<Statement> statements = Parser(statement).parse();
    Translation result;
    Emitter(catalog, result).run(statements);
    return result;
}

} // namespace liaowu::dialect
