#pragma once
#include "common/session.h"
#include "purchasing/order_store.h"

namespace liaowu {

/// Writes the prices of saved lines back: a price that differs from the item's 進價, or its currency, changes the item row
/// (of board: all boards of the same name) and adds a row to 歷史單價記錄 for each item changed. Lines with price 0,
/// without an item row, and re-saved lines whose price, unit, currency and vendor equal the stored ones feed nothing back.
/// Runs inside the save's transaction; `today` is YYYYMMDD.
void feedPricesBack(Session& session, Connection& connection, const OrderHeader& header,
                    const OrderLines& lines, const std::optional<OrderDocument>& stored,
                    const QString& today);

} // namespace liaowu
