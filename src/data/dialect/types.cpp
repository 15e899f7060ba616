#include "data/dialect/types.h"
#include "data/dialect/lexer.h"
#include <array>
#include <utility>

namespace liaowu::dialect {

std::optional<ValueType> typeByName(QStringView name) {
    static constexpr std::array<std::pair<QStringView, ValueType>, 11> types = {{
        {u"nvarchar", ValueType::Text},
        {u"varchar", ValueType::Text},
        {u"ntext", ValueType::Text},
        {u"text", ValueType::Text},
        {u"float", ValueType::Float},
        {u"real", ValueType::Float},
        {u"int", ValueType::Integer},
        {u"smallint", ValueType::Integer},
        {u"tinyint", ValueType::Integer},
        {u"bigint", ValueType::Integer},
        {u"datetime", ValueType::DateTime},
    }};
    for (const auto& [known, type] : types) {
        if (sameName(known, name)) return type;
    }
    return std::nullopt;
}

Type publicType(ValueType type) {
    switch (type) {
    case ValueType::Text:
        return Type::Text;
    case ValueType::Integer:
        return Type::Integer;
    case ValueType::Numeric:
    case ValueType::Float:
        return Type::Float;
    case ValueType::DateTime:
        return Type::DateTime;
    case ValueType::Null:
    case ValueType::Boolean:
        break;
    }
    return Type::Unknown;
}

ValueType valueType(Type type) {
    switch (type) {
    case Type::Text:
        return ValueType::Text;
    case Type::Float:
        return ValueType::Float;
    case Type::Integer:
        return ValueType::Integer;
    case Type::DateTime:
        return ValueType::DateTime;
    case Type::Unknown:
        break;
    }
    return ValueType::Null;
}

QString serverName(ValueType type) {
    switch (type) {
    case ValueType::Text:
        return QStringLiteral("nvarchar");
    case ValueType::Integer:
        return QStringLiteral("int");
    case ValueType::Numeric:
        return QStringLiteral("numeric");
    case ValueType::Float:
        return QStringLiteral("float");
    case ValueType::DateTime:
        return QStringLiteral("datetime");
    case ValueType::Null:
        return QStringLiteral("NULL");
    case ValueType::Boolean:
        break;
    }
    return QStringLiteral("bit");
}

QByteArray converted(const QByteArray& sql, ValueType from, ValueType to) {
    if (from == to || from == ValueType::Null || to == ValueType::Null) return sql;
    const bool toNumber = to == ValueType::Numeric || to == ValueType::Float;
    if (from == ValueType::DateTime) {
        if (to == ValueType::Text) return "ts_datetext(" + sql + ")";
        return (toNumber ? "ts_datenumber(" : "ts_dateint(") + sql + ")";
    }
    switch (to) {
    case ValueType::Text:
        return "ts_text(" + sql + ")";
    case ValueType::Integer:
        return "ts_int(" + sql + ")";
    case ValueType::Numeric:
        return from == ValueType::Text      ? "ts_numeric(" + sql + ")"
               : from == ValueType::Integer ? "CAST(" + sql + " AS REAL)"
                                            : sql;
    case ValueType::Float:
        return from == ValueType::Text      ? "ts_float(" + sql + ")"
               : from == ValueType::Integer ? "CAST(" + sql + " AS REAL)"
                                            : sql;
    case ValueType::DateTime:
        return "ts_datetime(" + sql + ")";
    default:
        return sql;
    }
}

} // namespace liaowu::dialect
