#pragma once
#include "common/session.h"
#include "frame/batch_spec.h"

namespace liaowu {

/// The batch approval page of orders: everything of the user's scope and category that is marked other than "Y".
BatchSpec orderBatch(Session& session, bool canSeePrice);

/// Approves one order by SQL, whatever was done to it since it was listed, and copies it to the second database when it
/// bears 轉稅 "1". A copy that fails leaves the approval standing and throws `DatabaseError`.
void approveOrder(Session& session, const QString& number);

/// Copies header and lines of an order to the database of `Session::otherParam`, field by field by position, in one
/// transaction there. Does nothing when the order is not marked 轉稅 "1" or stands there already.
void copyToSecondDatabase(Session& session, const QString& number);

} // namespace liaowu
