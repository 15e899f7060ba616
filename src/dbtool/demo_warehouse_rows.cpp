#include "dbtool/bulk_table.h"
#include "dbtool/demo_rows.h"
#include <cmath>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

const QString& approver(const Plant& plant) {
    return plant.person(4).name;
}
QString binName(const Plant& plant, int bin) {
    return bin < 0 ? QString() : plant.bins[static_cast<std::size_t>(bin)];
}

struct Months {
    QString reconciled, paid;
};

Months paymentMonths(const Vendor& vendor, const QDate& date) {
    if (vendor.payment == u"現金") return {date.toString(u"yyyyMM"_s), date.toString(u"yyyyMM"_s)};
    const bool next = vendor.closing == u"25日結帳" && date.day() > 25;
    const QDate month = QDate(date.year(), date.month(), 1).addMonths(next ? 1 : 0);
    return {month.toString(u"yyyyMM"_s), month.addDays(vendor.days.toInt()).toString(u"yyyyMM"_s)};
}

/// The receipt screen prices materials by price and quantity, whatever the order screen used.
QString receiptFormula(const Order& order, const Item& item, double quantity, double price) {
    if (order.family == Family::Material)
        return u"計價公式: "_s + numberText(price) + u'*' + numberText(quantity);
    return amountOf(item, quantity, price).formula;
}

void writeReceipts(Connection& connection, const Plant& plant) {
    BulkTable heads(connection, u"原料入庫資料"_s,
                    u"入庫單號 類別 入庫日期 經辦代號 經辦名稱 廠商代號 採購單號 單別 幣別 廠商單號 付款年月 "
                    u"倉別 對帳日期 檢驗單號 "
                    u"合計 審核 審核人 審核日期 製單人 製單時間"_s);
    BulkTable lines(connection, u"原料入庫明細"_s,
                    u"採購單號 原料代號 原料名稱 規格 數量 備品 單價 單位 小計 走紙才 入庫單位 入庫數量 "
                    u"剖切尺寸 檢驗 計價公式 採購序 "
                    u"入庫單號 序"_s);
    BulkTable inspections(connection, u"進料檢驗資料"_s, u"檢驗單號 入庫確認 領料確認"_s);
    for (const Receipt& receipt : plant.receipts) {
        const Order& order = plant.order(receipt.order);
        const Vendor& vendor = plant.vendor(order.vendor);
        const Person& clerk = plant.person(receipt.clerk);
        const Months months = paymentMonths(vendor, receipt.date);
        double total = 0;
        for (const ReceiptLine& line : receipt.lines)
            total += line.amount;
        heads.add({receipt.number,
                   familyWord(order.family),
                   date8(receipt.date),
                   clerk.code,
                   clerk.name,
                   vendor.code,
                   order.number,
                   receipt.kind,
                   plant.currencies[static_cast<std::size_t>(order.currency)].name,
                   u"DN"_s + receipt.number.right(7),
                   months.paid,
                   binName(plant, receipt.bin),
                   months.reconciled,
                   receipt.inspection,
                   std::round(total * 100) / 100,
                   receipt.approved ? u"Y" : u"N",
                   receipt.approved ? approver(plant) : QString(),
                   receipt.approved ? date8(receipt.date) : QString(),
                   clerk.name,
                   receipt.created});
        if (!receipt.inspection.isEmpty())
            inspections.add({receipt.inspection, receipt.approved ? u"Y" : u"N", u"N"});
        int number = 0;
        for (const ReceiptLine& arrived : receipt.lines) {
            const OrderLine& line = order.lines[static_cast<std::size_t>(arrived.orderLine)];
            const Item& item = plant.item(line.item);
            lines.add({order.number, item.code, item.name, item.spec, arrived.quantity, arrived.spare,
                       line.price, item.buyUnit, arrived.amount, line.cuts, item.unit,
                       line.cuts * arrived.quantity, u"", u"N",
                       receiptFormula(order, item, arrived.quantity, line.price), arrived.orderLine + 1,
                       receipt.number, ++number});
        }
    }
    for (BulkTable* table : {&heads, &lines, &inspections})
        table->flush();
}

void writeIssues(Connection& connection, const Plant& plant) {
    BulkTable heads(connection, u"原料領料資料"_s,
                    u"領料單號 領料日期 經辦代號 經辦名稱 領料人代號 領料人名稱 單別 類別 領料部門 工單單號 "
                    u"機台 倉別 審單 審單人 "
                    u"審單日期 製單人 製單時間"_s);
    BulkTable lines(
        connection, u"原料領料明細"_s,
        u"原料代號 原料名稱 規格 楞別 數量 放數 實領數 單位 重量 儲位 入庫單號 備注 序 領料單號"_s);
    BulkTable deducted(connection, u"料務_扣庫存"_s, u"領料單號 序"_s);
    BulkTable moves(connection, u"料務_板位異動"_s, u"領料單號 序 入庫單號 儲位 數量"_s);
    for (const Issue& issue : plant.issues) {
        const Person& storekeeper = plant.person(issue.storekeeper);
        const Person& taker = plant.person(issue.taker);
        const bool board = issue.family == Family::Board;
        heads.add({issue.number, date8(issue.date), storekeeper.code, storekeeper.name, taker.code,
                   taker.name, issue.kind, familyWord(issue.family), issue.department, issue.workOrder,
                   issue.machine, board ? u"紙板倉" : u"物料倉", issue.approved ? u"Y" : u"N",
                   issue.approved ? approver(plant) : QString(),
                   issue.approved ? date8(issue.date) : QString(), storekeeper.name, issue.created});
        int number = 0;
        for (const IssueLine& line : issue.lines) {
            const Item& item = plant.item(line.item);
            const double area = board ? item.first * item.second / 10000 : 1;
            const double weight = board ? area * item.weight / 1000 * line.quantity : 0;
            const QString bin = binName(plant, line.bin);
            lines.add({item.code, item.name, item.spec, item.flute, line.quantity, 0, line.quantity,
                       item.unit, std::round(weight * 100) / 100, bin,
                       line.takes.empty() ? QString() : line.takes.front().receipt, u"", ++number,
                       issue.number});
            if (issue.posted) deducted.add({issue.number, number});
            for (const BinTake& take : line.takes)
                moves.add({issue.number, number, take.receipt, bin, take.quantity});
        }
    }
    for (BulkTable* table : {&heads, &lines, &deducted, &moves})
        table->flush();
}

void writeBins(Connection& connection, const Plant& plant) {
    BulkTable rows(connection, u"原料板位明細"_s, u"類別 原料代號 儲位 入庫單號 入庫數 領料數 入庫時間"_s);
    for (const Item& item : plant.items)
        for (const BinRow& row : item.bins)
            rows.add({familyWord(item.family), item.code, binName(plant, row.bin), row.receipt, row.left,
                      row.taken, row.arrived});
    rows.flush();
}

void writeClosings(Connection& connection, const Plant& plant) {
    const auto balances = [&](Family family, const QString& closings, const QString& counts) {
        BulkTable closed(connection, closings, u"代號 結轉月份 數量 結存 結存金額"_s);
        BulkTable counted(connection, counts, u"代號 盤點日期 數量"_s);
        for (const Item& item : plant.items) {
            if (item.family != family) continue;
            const double rate = plant.currencies[static_cast<std::size_t>(item.currency)].rate;
            for (const auto& [month, stock] :
                 {std::pair(OpeningClosed, item.opening), std::pair(LastClosed, item.closing)}) {
                const double value = amountOf(item, stock, item.price).amount * rate;
                closed.add(
                    {item.code, month.toString(u"yyyyMM"_s), stock, stock, std::round(value * 100) / 100});
                counted.add({item.code, month.toString(u"yyyy-MM-dd"_s), stock});
            }
        }
        closed.flush();
        counted.flush();
    };
    balances(Family::Board, u"盤點結轉_浪紙"_s, u"盤點資料_浪紙"_s);
    balances(Family::Material, u"盤點結轉_物料"_s, u"盤點資料_物料"_s);
}

} // namespace

void writeWarehouse(Connection& connection, const Plant& plant) {
    writeReceipts(connection, plant);
    writeIssues(connection, plant);
    writeBins(connection, plant);
    writeClosings(connection, plant);
}

} // namespace liaowu::demo
