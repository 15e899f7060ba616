#include "dbtool/bulk_table.h"
#include "dbtool/demo_rows.h"
#include <cmath>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

const QString& approver(const Plant& plant) {
    return plant.person(4).name;
}

void writeRequisitions(Connection& connection, const Plant& plant) {
    BulkTable heads(
        connection, u"原料申購資料"_s,
        u"申購單號 類別 申購日期 經辦代號 經辦名稱 申購單位 需求日期 請購原因 庫別 審單 審單人 審單日期 製單人 製單時間"_s);
    BulkTable lines(connection, u"原料申購明細"_s,
                    u"申購單號 原料代號 原料名稱 規格 數量 單位 印件編號 需求日期 備注 序 已采購數 楞別"_s);
    for (const Requisition& requisition : plant.requisitions) {
        const Person& clerk = plant.person(requisition.clerk);
        const bool board = requisition.family == Family::Board;
        heads.add({requisition.number, familyWord(requisition.family), date8(requisition.date), clerk.code,
                   clerk.name, clerk.department, date8(requisition.date.addDays(10)),
                   board ? u"生產用料" : u"安全庫存補充", board ? u"紙板倉" : u"物料倉",
                   requisition.approved ? u"Y" : u"N", requisition.approved ? approver(plant) : QString(),
                   requisition.approved ? date8(requisition.date) : QString(), clerk.name,
                   requisition.date.toString(u"yyyy-MM-dd"_s) + u" 08:15:00"_s});
        int number = 0;
        for (const RequisitionLine& line : requisition.lines) {
            const Item& item = plant.item(line.item);
            lines.add({requisition.number, item.code, item.name, item.spec, line.quantity,
                       board ? u"PC"_s : item.unit, u"", date8(line.need), u"", ++number, line.ordered,
                       item.flute});
        }
    }
    heads.flush();
    lines.flush();
}

QString cutSize(const Item& item, const OrderLine& line) {
    return line.workOrder < 0
               ? QString()
               : numberText(std::floor(item.first / line.cuts)) + u'*' + numberText(item.second);
}

QString creases(const WorkOrder& order) {
    QStringList parts;
    for (const int crease : order.creases)
        if (crease > 0) parts << QString::number(crease);
    return parts.join(u'*');
}

bool isDone(const OrderLine& line) {
    return line.closed || (line.received > 0 && line.open() <= 0);
}

void addOrderLine(BulkTable& lines, const Plant& plant, const Order& order, const OrderLine& line,
                  int number) {
    const Item& item = plant.item(line.item);
    const bool board = order.family == Family::Board;
    WorkOrder job;
    Customer customer;
    if (line.workOrder >= 0) {
        job = plant.workOrder(line.workOrder);
        customer = plant.customers[static_cast<std::size_t>(job.customer)];
    }
    const QString requisition = line.requisition < 0
                                    ? QString()
                                    : plant.requisitions[static_cast<std::size_t>(line.requisition)].number;
    lines.add({number,
               requisition,
               job.number,
               customer.code,
               customer.name,
               job.carton,
               job.part,
               item.code,
               board ? vendorMaterial(plant, item.code, order.vendor) : item.name,
               item.name,
               item.spec,
               line.quantity,
               line.price,
               item.buyUnit,
               line.amount,
               date8(line.delivery),
               item.flute,
               cutSize(item, line),
               job.creaseKind,
               creases(job),
               line.cuts,
               line.cuts * line.quantity,
               line.received,
               line.open(),
               isDone(line) ? u"Y" : u"N",
               amountOf(item, line.quantity, line.price).formula,
               job.note,
               order.number});
}

void writeOrders(Connection& connection, const Plant& plant) {
    BulkTable heads(connection, u"採購資料"_s,
                    u"採購單號 類別 採購日期 廠商代號 廠商簡稱 業務員代號 業務員名稱 幣別 採購類別 合計 "
                    u"申購單位 審單 審單人 "
                    u"審單日期 品質要求 製單人 製單時間"_s);
    BulkTable lines(
        connection, u"採購明細資料"_s,
        u"序 請購單號 印件編號 客戶代號 客戶簡稱 紙箱代號 料號 原料代號 廠商名稱 原料名稱 規格 數量 單價 "
        u"單位 小計 "
        u"交貨日期 楞別 剖切尺寸 壓線種類 壓線尺寸 寬剖 小紙數 已入庫數 未交數 送清 計價公式 備註 採購單號"_s);
    for (const Order& order : plant.orders) {
        const Vendor& vendor = plant.vendor(order.vendor);
        const Person& buyer = plant.person(order.buyer);
        double total = 0;
        for (const OrderLine& line : order.lines)
            total += line.amount;
        const OrderLine& first = order.lines.front();
        heads.add({order.number, familyWord(order.family), date8(order.date), vendor.code, vendor.shortName,
                   buyer.code, buyer.name, plant.currencies[static_cast<std::size_t>(order.currency)].name,
                   first.workOrder >= 0 ? u"生產" : u"庫存", std::round(total * 100) / 100,
                   first.requisition < 0
                       ? QString()
                       : plant.requisitions[static_cast<std::size_t>(first.requisition)].number,
                   order.approved ? u"Y" : u"N", order.approved ? approver(plant) : QString(),
                   order.approved ? date8(order.date) : QString(),
                   order.family == Family::Board ? u"含水率8%~12%,壓線不得爆裂。" : u"", buyer.name,
                   order.created});
        int number = 0;
        for (const OrderLine& line : order.lines)
            addOrderLine(lines, plant, order, line, ++number);
    }
    heads.flush();
    lines.flush();
}

void writeTracking(Connection& connection, const Plant& plant) {
    BulkTable heads(connection, u"採購未到料資料"_s,
                    u"單號 日期 經辦代號 經辦名稱 採購日期起 採購日期末 類別 製單人 製單時間"_s);
    BulkTable lines(
        connection, u"採購未到料明細"_s,
        u"廠商代號 廠商簡稱 類別 採購單號 原料代號 原料名稱 規格 應入數 未到數 單位 採購日期 交貨日期 天數 扣分 經辦 結案 單號 序"_s);
    BulkTable penalties(connection, u"廠商扣分記錄"_s,
                        u"日期 內容 扣分 經辦 經辦代號 序 廠商代號 未到料單號"_s);
    for (const Tracking& tracking : plant.tracking) {
        const Person& clerk = plant.person(0);
        const QDate month(tracking.date.year(), tracking.date.month(), 1);
        heads.add({tracking.number, date8(tracking.date), clerk.code, clerk.name, date8(month),
                   date8(tracking.date), familyWord(tracking.family), clerk.name,
                   tracking.date.toString(u"yyyy-MM-dd"_s) + u" 16:30:00"_s});
        int number = 0;
        for (const TrackedLine& tracked : tracking.lines) {
            const Order& order = plant.order(tracked.order);
            const OrderLine& line = order.lines[static_cast<std::size_t>(tracked.orderLine)];
            const Item& item = plant.item(line.item);
            const Vendor& vendor = plant.vendor(order.vendor);
            lines.add({vendor.code, vendor.shortName, familyWord(order.family), order.number, item.code,
                       item.name, item.spec, line.quantity, line.open(), item.buyUnit, date8(order.date),
                       date8(line.delivery), tracked.days, tracked.penalty, clerk.name, u"N", tracking.number,
                       ++number});
            penalties.add(
                {date8(tracking.date),
                 familyWord(order.family) + u" 採購遲交 %1天! 單號:%2"_s.arg(tracked.days).arg(order.number),
                 tracked.penalty, clerk.name, clerk.code, number, vendor.code, tracking.number});
        }
    }
    heads.flush();
    lines.flush();
    penalties.flush();
}

} // namespace

void writePurchasing(Connection& connection, const Plant& plant) {
    writeRequisitions(connection, plant);
    writeOrders(connection, plant);
    writeTracking(connection, plant);
}

} // namespace liaowu::demo
