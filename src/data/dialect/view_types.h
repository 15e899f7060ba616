#pragma once
#include "data/dialect/types.h"

namespace liaowu::dialect {

/// The engine keeps no types of a view's columns, only its text: they are noted there in a comment.
QByteArray viewTypesComment(const std::vector<ValueType>& types);
/// Reads them back; empty when the view was not made by us.
std::vector<ValueType> viewTypes(const QByteArray& viewText);

} // namespace liaowu::dialect
