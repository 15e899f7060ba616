#include "data/dialect/emit.h"
#include "data/dialect/lexer.h"
#include "data/dialect/refuse.h"
#include <algorithm>

namespace liaowu::dialect {

namespace {

/// A function that is written as a call of ours. `arguments` has a letter for each: t text, i integer, n number.
struct Function {
    QStringView name;
    const char* arguments;
    size_t required;
    ValueType result; ///< Null: the type of the first argument
};

constexpr std::array functions = {
    Function{u"left", "ti", 2, ValueType::Text},
    Function{u"right", "ti", 2, ValueType::Text},
    Function{u"substring", "tii", 3, ValueType::Text},
    Function{u"len", "t", 1, ValueType::Integer},
    Function{u"ltrim", "t", 1, ValueType::Text},
    Function{u"rtrim", "t", 1, ValueType::Text},
    Function{u"trim", "t", 1, ValueType::Text},
    Function{u"upper", "t", 1, ValueType::Text},
    Function{u"lower", "t", 1, ValueType::Text},
    Function{u"replace", "ttt", 3, ValueType::Text},
    Function{u"charindex", "tti", 2, ValueType::Integer},
    Function{u"replicate", "ti", 2, ValueType::Text},
    Function{u"space", "i", 1, ValueType::Text},
    Function{u"str", "nii", 1, ValueType::Text},
    Function{u"isnumeric", "t", 1, ValueType::Integer},
    Function{u"isdate", "t", 1, ValueType::Integer},
    Function{u"abs", "n", 1, ValueType::Null},
    Function{u"round", "ni", 2, ValueType::Null},
    Function{u"floor", "n", 1, ValueType::Null},
    Function{u"ceiling", "n", 1, ValueType::Null},
    Function{u"power", "nn", 2, ValueType::Null},
};

[[noreturn]] void argumentCount(const QString& name, size_t count) {
    serverError(174, u"The %1 function requires %2 argument(s)."_s.arg(name).arg(count));
}

/// The one spelling of a date part that our functions know.
QByteArray datePart(const Expr& expr) {
    static constexpr std::array<std::pair<QStringView, const char*>, 29> parts = {{
        {u"year", "yy"},   {u"yyyy", "yy"},  {u"yy", "yy"},     {u"quarter", "qq"},     {u"qq", "qq"},
        {u"q", "qq"},      {u"month", "mm"}, {u"mm", "mm"},     {u"m", "mm"},           {u"dayofyear", "dy"},
        {u"dy", "dy"},     {u"y", "dy"},     {u"day", "dd"},    {u"dd", "dd"},          {u"d", "dd"},
        {u"week", "ww"},   {u"wk", "ww"},    {u"ww", "ww"},     {u"weekday", "dw"},     {u"dw", "dw"},
        {u"hour", "hh"},   {u"hh", "hh"},    {u"minute", "mi"}, {u"mi", "mi"},          {u"n", "mi"},
        {u"second", "ss"}, {u"ss", "ss"},    {u"s", "ss"},      {u"millisecond", "ms"},
    }};
    if (expr.kind == Expr::Kind::Column && expr.qualifier.isEmpty()) {
        for (const auto& [written, meant] : parts) {
            if (sameName(written, expr.name)) return '\'' + QByteArray(meant) + '\'';
        }
    }
    serverError(155, u"'%1' is not a recognized datepart option."_s.arg(expr.name));
}

} // namespace

Sql Emitter::call(Expr& expr) {
    if (!expr.qualifier.isEmpty()) {
        if (!sameName(expr.qualifier, u"dbo") || !sameName(expr.name, u"dt"))
            serverError(
                4121,
                u"Cannot find either column \"%1\" or the user-defined function or aggregate \"%1.%2\", "
                "or the name is ambiguous."_s.arg(expr.qualifier, expr.name));
        if (expr.items.size() != 1)
            serverError(313,
                        u"An insufficient number of arguments were supplied for the procedure or function "
                        "dbo.DT."_s);
        return {"ts_dt(" + value(*expr.items[0]).text + ')', ValueType::Text, RankAtom};
    }
    if (expr.name == u"isnull") return isNullCall(expr);
    if (expr.name == u"coalesce") return coalesceCall(expr);
    if (expr.name == u"nullif") return nullIfCall(expr);
    if (expr.name == u"getdate") {
        if (!expr.items.empty()) argumentCount(expr.name, 0);
        return {"ts_getdate()", ValueType::DateTime, RankAtom};
    }
    static constexpr std::array<QStringView, 6> dates = {u"datediff", u"dateadd", u"datepart",
                                                         u"year",     u"month",   u"day"};
    if (std::find(dates.begin(), dates.end(), expr.name) != dates.end()) return dateCall(expr);

    const auto known = std::find_if(functions.begin(), functions.end(),
                                    [&](const Function& function) { return function.name == expr.name; });
    if (known == functions.end())
        serverError(195, u"'%1' is not a recognized built-in function name."_s.arg(expr.written));
    const size_t most = qstrlen(known->arguments);
    if (expr.items.size() < known->required || expr.items.size() > most)
        argumentCount(expr.name, known->required);
    QByteArray text = "ts_" + known->name.toLatin1() + '(';
    ValueType firstType = ValueType::Null;
    for (size_t i = 0; i < expr.items.size(); ++i) {
        Sql argument = value(*expr.items[i]);
        const char kind = known->arguments[i];
        if (kind == 't') argument = convertedTo(*expr.items[i], argument, ValueType::Text);
        if (kind == 'i') argument = convertedTo(*expr.items[i], argument, ValueType::Integer);
        if (kind == 'n' && (argument.type == ValueType::Text || argument.type == ValueType::DateTime))
            argument = convertedTo(*expr.items[i], argument, ValueType::Float);
        if (i == 0) firstType = argument.type;
        text += (i > 0 ? ", " : "") + argument.text;
    }
    return {text + ')', known->result == ValueType::Null ? firstType : known->result, RankAtom};
}

Sql Emitter::isNullCall(Expr& expr) {
    if (expr.items.size() != 2) argumentCount(expr.name, 2);
    const Sql first = value(*expr.items[0]);
    const Sql second = value(*expr.items[1]);
    const ValueType type = first.type == ValueType::Null ? second.type : first.type;
    QByteArray other = convertedTo(*expr.items[1], second, type).text;
    // The first one's type holds with its length, as far as a cast tells it.
    const TypeName& cast = expr.items[0]->type;
    if (cast.type == ValueType::Text && cast.length)
        other = "ts_cut(" + other + ", " + QByteArray::number(*cast.length) + ')';
    return {"coalesce(" + first.text + ", " + other + ')', type, RankAtom};
}

Sql Emitter::coalesceCall(Expr& expr) {
    if (expr.items.size() < 2) argumentCount(expr.name, 2);
    std::vector<Sql> values;
    ValueType type = ValueType::Null;
    for (const ExprPtr& item : expr.items) {
        values.push_back(value(*item));
        type = std::max(type, values.back().type);
    }
    QByteArray text = "coalesce(";
    for (size_t i = 0; i < values.size(); ++i)
        text += (i > 0 ? ", " : "") + convertedTo(*expr.items[i], values[i], type).text;
    return {text + ')', type, RankAtom};
}

Sql Emitter::nullIfCall(Expr& expr) {
    if (expr.items.size() != 2) argumentCount(expr.name, 2);
    const Sql first = value(*expr.items[0]);
    const Sql equal = comparison(*expr.items[0], first, *expr.items[1], value(*expr.items[1]), u"="_s);
    return {"CASE WHEN " + equal.text + " THEN NULL ELSE " + first.text + " END", first.type, RankAtom};
}

/// A date, or a text or number that the date functions read themselves.
QByteArray Emitter::dateArgument(Expr& expr) {
    const Sql sql = value(expr);
    return sql.type == ValueType::Text || sql.type == ValueType::Null
               ? sql.text
               : convertedTo(expr, sql, ValueType::DateTime).text;
}

Sql Emitter::dateCall(Expr& expr) {
    const bool shortForm = expr.name == u"year" || expr.name == u"month" || expr.name == u"day";
    const size_t count = shortForm ? 1 : expr.name == u"datepart" ? 2 : 3;
    if (expr.items.size() != count) argumentCount(expr.name, count);
    if (shortForm) {
        const QByteArray part = expr.name == u"year" ? "'yy'" : expr.name == u"month" ? "'mm'" : "'dd'";
        return {"ts_datepart(" + part + ", " + dateArgument(*expr.items[0]) + ')', ValueType::Integer,
                RankAtom};
    }
    const QByteArray part = datePart(*expr.items[0]);
    if (expr.name == u"datepart")
        return {"ts_datepart(" + part + ", " + dateArgument(*expr.items[1]) + ')', ValueType::Integer,
                RankAtom};
    if (expr.name == u"dateadd") {
        const QByteArray number = valueAs(*expr.items[1], ValueType::Integer).text;
        return {"ts_dateadd(" + part + ", " + number + ", " + dateArgument(*expr.items[2]) + ')',
                ValueType::DateTime, RankAtom};
    }
    const QByteArray from = dateArgument(*expr.items[1]);
    return {"ts_datediff(" + part + ", " + from + ", " + dateArgument(*expr.items[2]) + ')',
            ValueType::Integer, RankAtom};
}

} // namespace liaowu::dialect
