#pragma once
#include "common/people.h"
#include "common/session.h"
#include "frame/search_spec.h"
#include "purchasing/order_lines.h"
#include <optional>

namespace liaowu {

class Connection;

/// Numbers of a category's orders within the user's scope, by 製單時間, 採購日期, 採購單號: the last is the latest.
SqlText orderBrowseStatement(const Session& session);

/// A vendor as the look-up hands it to a document.
struct VendorRow {
    QString 廠商代號, 廠商簡稱, 發票稅率, 聯絡電話, 聯絡人, 傳真號碼, 幣別, 付款天數, 經驗傳承, 分數,
        業務員代號, 業務員名稱;
};
/// A vendor by exact code or short name, not scrapped and within the user's scope.
std::optional<VendorRow> findVendor(Session& session, Connection& connection, const QString& codeOrName);

/// The lines of a requisition as order lines: full quantity, the master's price unconverted. Of an approved requisition only.
OrderLines requisitionLines(Connection& connection, const QString& number, const QString& category,
                            bool canSeePrice);

/// Stock figures of an item for the panel below the grid, in the item's stock unit.
struct StockFigures {
    bool known = false; ///< the item has a master row
    QString unit;
    double actual = 0;    ///< 實際庫存
    QString safety;       ///< 安全庫存 as stored, empty when not set
    double requested = 0; ///< 申購量
    double issuing = 0;   ///< 在領量
    double ordered = 0;   ///< 在單量
    double available = 0; ///< 可用庫存 by the company's formula
    bool formulaFailed = false;
};
StockFigures stockFigures(Session& session, Connection& connection, const QString& category,
                          const QString& code);
/// Available stock by the company's formula over the five figures, each rounded to a whole number; nothing when it cannot
/// be computed, 0 for an empty formula.
std::optional<double> availableStock(const QString& formula, const StockFigures& figures);

/// The search page of orders.
SearchSpec orderSearch(Session& session, bool canSeePrice);
/// The statement of a search; `today` is YYYYMMDD.
SqlText orderSearchStatement(const Session& session, const SearchInput& input, bool canSeePrice,
                             const QString& today);

} // namespace liaowu
