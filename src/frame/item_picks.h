#pragma once
#include "common/items.h"
#include "frame/pick_spec.h"

namespace liaowu {

/// Pick windows on items and order lines that documents of several subjects open. Each reads `Session::pickParam` as its
/// filter, `formulaMode` as the item family and `pickVendor` as the document's vendor.
PickSpec itemPick();          ///< frm原料輔助視窗: one item, filtered at each key
PickSpec openOrderLinePick(); ///< frm採購輔助視窗: open order lines of a vendor
PickSpec receivedOrderLinePick(const QString& from, const QString& to); ///< frm採購輔助視窗_退貨

// What further windows of this kind are made of.
using PickStatements = decltype(PickSpec::statements);
PickSpec documentPick(const QString& name, const QString& title, PickStatements statements);
/// The family that `formulaMode` names; board for any other word.
const ItemFamily& pickFamily(const Session& session);
/// Code and name columns of an item list: board shows them under its own titles.
SqlText itemCodeAndName(const ItemFamily& family);
/// Code, name or 規格 that hold the filter.
SqlText itemCondition(const ItemFamily& family, const QString& filter);

} // namespace liaowu
