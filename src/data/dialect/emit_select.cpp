#include "data/dialect/emit.h"
#include "data/dialect/group_check.h"
#include "data/dialect/lexer.h"
#include "data/dialect/refuse.h"
#include <algorithm>

namespace liaowu::dialect {

Scope* Emitter::newScope(Scope* parent) {
    scopes.push_back(std::make_unique<Scope>());
    scopes.back()->parent = parent;
    return scopes.back().get();
}

void Emitter::addSource(std::unique_ptr<Source> source, qsizetype offset) {
    for (const auto& other : scope->sources) {
        if (sameName(other->name, source->name))
            refuse(offset, u"The name '%1' stands twice in the FROM clause."_s.arg(source->name));
    }
    // An inner table of the same name must not hide an outer one that it is joined to.
    const int uses = aliases[source->name.toLower()]++;
    source->alias = quotedName(uses == 0 ? source->name : u"%1#%2"_s.arg(source->name).arg(uses + 1));
    scope->sources.push_back(std::move(source));
}

const TableInfo& Emitter::knownTable(const QString& name) const {
    const TableInfo* table = catalog.table(name);
    if (!table) serverError(DatabaseError::InvalidObject, u"Invalid object name '%1'."_s.arg(name));
    return *table;
}

QByteArray Emitter::tableSource(TableRef& ref) {
    auto source = std::make_unique<Source>();
    QByteArray text;
    if (ref.kind == TableRef::Kind::Table) {
        const TableInfo& table = knownTable(ref.name);
        source->table = &table;
        source->name = ref.alias.isEmpty() ? table.name : ref.alias;
        for (const TableColumn& column : table.columns)
            source->columns.push_back({column.name, valueType(column.type)});
        text = quotedName(table.name);
    } else {
        Prepared inner = prepare(*ref.derived, scope->parent, true);
        text = '(' + finish(inner, {{}, true, false}) + ')';
        source->name = ref.alias;
        for (size_t i = 0; i < inner.columns.size(); ++i) {
            const OutputColumn& column = inner.columns[i];
            if (column.name.isEmpty())
                serverError(
                    8155, u"No column name was specified for column %1 of '%2'."_s.arg(i + 1).arg(ref.alias));
            for (const Source::Column& other : source->columns) {
                if (sameName(other.name, column.name))
                    serverError(8156, u"The column '%1' was specified multiple times for '%2'."_s.arg(
                                          column.name, ref.alias));
            }
            source->columns.push_back({column.name, column.type});
        }
    }
    addSource(std::move(source), ref.offset);
    const QByteArray& alias = scope->sources.back()->alias;
    return alias == text ? text : text + " AS " + alias;
}

QByteArray Emitter::from(TableRef& ref) {
    if (ref.kind != TableRef::Kind::Join) return tableSource(ref);
    const size_t first = scope->sources.size();
    QByteArray text = from(*ref.left);
    const QByteArray right = from(*ref.right);
    switch (ref.join) {
    case TableRef::Join::Inner:
        text += " JOIN ";
        break;
    case TableRef::Join::Cross:
        text += " CROSS JOIN ";
        break;
    case TableRef::Join::Left:
        text += " LEFT JOIN ";
        break;
    case TableRef::Join::Right:
        text += " RIGHT JOIN ";
        break;
    case TableRef::Join::Full:
        text += " FULL JOIN ";
        break;
    }
    text += ref.right->kind == TableRef::Kind::Join ? '(' + right + ')' : right;
    if (ref.on) {
        const Restored<Clause> clause(scope->clause, Clause::On);
        const Restored<size_t> visible(scope->firstVisible, first);
        text += " ON " + condition(*ref.on).text;
    }
    return text;
}

void Emitter::star(const SelectItem& item, Core& into) {
    bool found = false;
    for (const auto& source : scope->sources) {
        if (!item.starQualifier.isEmpty() && !sameName(item.starQualifier, source->name)) continue;
        found = true;
        for (const Source::Column& column : source->columns) {
            into.items.push_back({source->alias + '.' + quotedName(column.name), column.type, RankAtom});
            into.values.push_back(nullptr);
            into.columns.push_back({column.name, column.type, column.name});
        }
    }
    if (!found && !item.starQualifier.isEmpty())
        serverError(
            107,
            u"The column prefix '%1' does not match with a table name or alias name used in the query."_s.arg(
                item.starQualifier));
    if (!found) serverError(263, u"Must specify table to select from."_s);
}

void Emitter::items(SelectArm& arm, Core& into) {
    for (SelectItem& item : arm.items) {
        if (!item.value) {
            star(item, into);
            continue;
        }
        const Sql sql = value(*item.value);
        const bool plain = item.value->kind == Expr::Kind::Column;
        const QString name = !item.alias.isEmpty() ? item.alias : plain ? item.value->name : QString();
        QString base;
        if (plain) base = item.value->source->columns[static_cast<size_t>(item.value->column)].name;
        into.items.push_back(sql);
        into.values.push_back(item.value.get());
        into.columns.push_back({name, sql.type, base});
    }
    if (into.items.size() > 1900) refuse(arm.offset, u"A select of so many columns is not covered."_s);
}

Core Emitter::core(SelectArm& arm, Scope* parent) {
    if (arm.nested) return nestedCore(arm, parent);
    Core result;
    result.scope = newScope(parent);
    const Restored<Scope*> inside(scope, result.scope);
    result.distinct = arm.distinct;
    result.top = arm.top;
    QByteArray tail;
    size_t tables = 0;
    for (const auto& ref : arm.from) {
        const bool join = ref->kind == TableRef::Kind::Join && tables > 0;
        const QByteArray text = from(*ref);
        tail += (tables++ > 0 ? ", " : " FROM ") + (join ? '(' + text + ')' : text);
    }
    if (scope->sources.size() > 60) refuse(arm.offset, u"A select of so many tables is not covered."_s);
    if (arm.where) {
        scope->clause = Clause::Where;
        tail += " WHERE " + condition(*arm.where).text;
    }
    QByteArray groups;
    scope->clause = Clause::GroupBy;
    for (const ExprPtr& group : arm.groupBy) {
        const Sql sql = value(*group);
        if (!readsColumnOf(*group, *scope))
            serverError(164,
                        u"Each GROUP BY expression must contain at least one column that is not an outer "
                        "reference."_s);
        groups += (groups.isEmpty() ? " GROUP BY " : ", ") + collated(sql).text;
    }
    scope->clause = Clause::Select;
    items(arm, result);
    QByteArray having;
    if (arm.having) {
        scope->clause = Clause::Having;
        having = " HAVING " + condition(*arm.having).text;
    }
    result.grouped = !arm.groupBy.empty();
    result.aggregated = result.grouped || scope->aggregated;
    if (arm.having && !result.aggregated)
        refuse(arm.offset, u"HAVING without any aggregate is not covered."_s);
    if (result.aggregated) checkGrouped(arm, *scope);
    result.tail = tail + groups + having;
    if (scope->sources.size() == 1 && !arm.distinct && !result.aggregated)
        result.baseTable = scope->sources[0]->table;
    return result;
}

/// A select in parentheses as one arm of a union: its columns are those of a derived table.
Core Emitter::nestedCore(SelectArm& arm, Scope* parent) {
    Prepared inner = prepare(*arm.nested, parent, true);
    Core result;
    result.scope = newScope(parent);
    result.tail = " FROM (" + finish(inner, {{}, false, true}) + ')';
    for (size_t i = 0; i < inner.columns.size(); ++i) {
        result.items.push_back({'"' + QByteArray::number(i + 1) + '"', inner.columns[i].type, RankAtom});
        result.values.push_back(nullptr);
        result.columns.push_back(inner.columns[i]);
    }
    return result;
}

Prepared Emitter::prepare(Select& select, Scope* parent, bool nested) {
    Prepared result;
    result.select = &select;
    for (SelectArm& arm : select.arms)
        result.cores.push_back(core(arm, parent));
    const Core& first = result.cores.front();
    result.columns = first.columns;
    for (const Core& core : result.cores) {
        if (core.columns.size() != result.columns.size())
            serverError(
                205, u"All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal "
                     "number of expressions in their target lists."_s);
        for (size_t i = 0; i < result.columns.size(); ++i)
            result.columns[i].type = std::max(result.columns[i].type, core.columns[i].type);
    }
    const bool topped = result.cores.size() == 1 && first.top;
    if (nested && !select.orderBy.empty() && !topped)
        serverError(
            1033,
            u"The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and "
            "common table expressions, unless TOP, OFFSET or FOR XML is also specified."_s);
    if (result.cores.size() == 1) result.baseTable = first.baseTable;
    return result;
}

QByteArray Emitter::arm(const Core& core, const Prepared& prepared, const SelectWish& wish, bool first) {
    bool distinctUnion = false;
    for (const SelectArm& other : prepared.select->arms)
        distinctUnion = distinctUnion || (&other != &prepared.select->arms.front() && !other.unionAll);
    QByteArray text = core.distinct ? "SELECT DISTINCT " : "SELECT ";
    for (size_t i = 0; i < core.items.size(); ++i) {
        static const Expr starColumn = {};
        const Expr& value = core.values[i] ? *core.values[i] : starColumn;
        Sql sql = convertedTo(value, core.items[i], prepared.columns[i].type);
        if (!wish.types.empty()) sql = convertedTo(value, sql, wish.types[i]);
        // Equal rows are found by the collation of the columns.
        if (core.distinct || distinctUnion) sql = collated(sql);
        text += (i > 0 ? ", " : "") + sql.text;
        if (first && wish.numbered) text += " AS \"" + QByteArray::number(i + 1) + '"';
        if (first && wish.named) text += " AS " + quotedName(prepared.columns[i].name);
    }
    return text + core.tail;
}

QByteArray Emitter::finish(Prepared& prepared, const SelectWish& wish) {
    QByteArray text;
    const bool compound = prepared.cores.size() > 1;
    for (size_t i = 0; i < prepared.cores.size(); ++i) {
        const Core& core = prepared.cores[i];
        if (i > 0) text += prepared.select->arms[i].unionAll ? " UNION ALL " : " UNION ";
        const QByteArray one = arm(core, prepared, wish, i == 0);
        text += compound && core.top
                    ? "SELECT * FROM (" + one + " LIMIT " + QByteArray::number(*core.top) + ')'
                    : one;
    }
    text += orderBy(prepared);
    if (!compound && prepared.cores[0].top) text += " LIMIT " + QByteArray::number(*prepared.cores[0].top);
    return text;
}

} // namespace liaowu::dialect
