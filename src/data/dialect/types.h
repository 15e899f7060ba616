#pragma once
#include "data/dialect/dialect.h"
#include <optional>

namespace liaowu::dialect {

/// Types of values in the order of the server's precedence: where two meet, the later one wins. Numeric is what a
/// literal with a decimal point has: stored like a float, but empty text does not convert to it.
enum class ValueType { Null, Text, Integer, Numeric, Float, DateTime, Boolean };

/// A type as a statement names it.
struct TypeName {
    ValueType type = ValueType::Null;
    QString name;
    std::optional<int> length; ///< of a text; none for (max)
};

/// Finds a type by its name (without length). Null when the subset does not know it.
std::optional<ValueType> typeByName(QStringView name);

Type publicType(ValueType type);
ValueType valueType(Type type);

/// Name of a type as the server's messages call it.
QString serverName(ValueType type);

/// SQL of a value converted to another type as the server does it when types meet.
QByteArray converted(const QByteArray& sql, ValueType from, ValueType to);

} // namespace liaowu::dialect
