#pragma once
#include "data/dialect/emit.h"

namespace liaowu::dialect {

/// Equal expressions once their names are resolved: what order by and group by look for.
bool sameExpression(const Expr& left, const Expr& right);

/// Whether a column of this very scope occurs in it.
bool readsColumnOf(const Expr& expr, const Scope& scope);

/// Throws 8120 when a grouped select reads a column that is neither grouped by nor aggregated.
void checkGrouped(const SelectArm& arm, const Scope& scope);
void checkGrouped(const Expr& expr, const SelectArm& arm, const Scope& scope, const QString& where);

} // namespace liaowu::dialect
