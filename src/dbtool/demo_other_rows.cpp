#include "dbtool/bulk_table.h"
#include "dbtool/demo_rows.h"
#include <cmath>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

void writeWorkOrders(Connection& connection, const Plant& plant) {
    BulkTable customers(connection, u"客戶資料"_s, u"客戶代號 客戶簡稱"_s);
    for (const Customer& customer : plant.customers)
        customers.add({customer.code, customer.name});
    customers.flush();
    BulkTable orders(connection, u"紙箱生產資料"_s,
                     u"工單單號 工單日期 客戶單號 客戶代號 紙箱代號 客戶料號 紙質代號 紙質名稱 備料尺寸寬 "
                     u"備料尺寸長 楞別 備紙數 "
                     u"平版剖切寬 平版剖切長 寬壓線0 寬壓線1 寬壓線2 壓線種類 採購備注 寬剖 交貨日期 完工"_s);
    for (const WorkOrder& order : plant.workOrders) {
        const Item& item = plant.item(order.item);
        const QString customer = plant.customers[static_cast<std::size_t>(order.customer)].code;
        orders.add({order.number,
                    date8(order.date),
                    u"PO"_s + order.number.mid(1),
                    customer,
                    order.carton,
                    order.part,
                    item.code,
                    item.name,
                    item.first,
                    item.second,
                    item.flute,
                    order.sheets,
                    std::floor(item.first / order.cuts),
                    item.second,
                    order.creases[0],
                    order.creases[1],
                    order.creases[2],
                    order.creaseKind,
                    order.note,
                    order.cuts,
                    date8(order.delivery),
                    order.finished ? u"Y" : u"N"});
    }
    orders.flush();
}

/// Half-made goods that a processor finishes: what each needs, and the orders that are open with processors.
void writeOutsourcing(Connection& connection, const Plant& plant) {
    BulkTable needs(connection, u"半成品物料明細"_s,
                    u"材料代號 類別 物料代號 物料名稱 物料規格 單位用量 單位 扣庫存 說明"_s);
    BulkTable heads(connection, u"半成品委外資料"_s, u"委外單號 客戶單號 合計 幣別 審單"_s);
    BulkTable lines(connection, u"半成品委外明細"_s,
                    u"委外單號 序 工單單號 材料代號 材料名稱 材料規格 數量 單位 單價 小計 回廠數 完工"_s);
    int number = 0;
    for (int i = 0; i < static_cast<int>(plant.items.size()); ++i) {
        const Item& goods = plant.item(i);
        // The same papers that the master marks as made outside.
        if (goods.family != Family::Paper || i % 40 != 7) continue;
        const Item& board = plant.item(number * 11);
        const Item& glue = plant.item(300 + number * 10 + 1);
        needs.add({goods.code, u"紙板", board.code, board.name, board.spec, u"1", board.unit, u"Y", u""});
        needs.add({goods.code, u"物料", glue.code, glue.name, glue.spec, u"0.02", glue.unit, u"Y", u""});
        const QDate date = Today.addDays(-9 - 3 * number);
        const QString order = u"WO"_s + date.toString(u"yyMMdd"_s) + u"01"_s;
        const double quantity = 400 + 100 * number;
        const double returned = number % 2 == 0 ? 0 : 100;
        heads.add(
            {order, u"PO"_s + date.toString(u"yyMMdd"_s), quantity * 3, u"台幣", number == 4 ? u"N" : u"Y"});
        lines.add({order, 1, plant.workOrders[static_cast<std::size_t>(number)].number, goods.code,
                   goods.name, goods.spec, quantity, goods.unit, u"3", quantity * 3, returned, u"N"});
        ++number;
    }
    for (BulkTable* table : {&needs, &heads, &lines})
        table->flush();
}

/// Documents of the suite's other modules, so that the batch approval has something to approve.
void writeForeignDocuments(Connection& connection) {
    struct Foreign {
        QString table, number, date, mark;
        QString unmarked;
    };
    const QString n = u"N"_s, zero = u"0"_s;
    const std::vector<Foreign> tables{{u"訂單資料"_s, u"訂單單號"_s, u"訂單日期"_s, u"審單"_s, n},
                                      {u"紙箱報價資料"_s, u"報價單號"_s, u"報價日期"_s, u"審單"_s, n},
                                      {u"工單資料"_s, u"工單單號"_s, u"工單日期"_s, u"審單"_s, n},
                                      {u"送貨資料"_s, u"送貨單號"_s, u"送貨日期"_s, u"審單 審核"_s, n},
                                      {u"委外資料"_s, u"委外單號"_s, u"開單日期"_s, u"審單 審核"_s, n},
                                      {u"收款銷帳作業"_s, u"銷帳單號"_s, u"銷帳日期"_s, u"審單"_s, n},
                                      {u"付款銷帳作業"_s, u"付款單號"_s, u"日期"_s, u"審單"_s, n},
                                      {u"紙品採購"_s, u"採購單號"_s, u"採購日期"_s, u"審單"_s, zero},
                                      {u"坑紙作業"_s, u"採購單號"_s, u"採購日期"_s, u"審單"_s, zero},
                                      {u"物料入庫資料"_s, u"入庫單號"_s, u"入庫日期"_s, u"審核"_s, zero},
                                      {u"坑紙入庫資料"_s, u"入庫單號"_s, u"入庫日期"_s, u"審核"_s, zero},
                                      {u"紙品入庫資料"_s, u"入庫單號"_s, u"入庫日期"_s, u"審核"_s, zero}};
    for (const Foreign& foreign : tables) {
        BulkTable rows(connection, foreign.table, foreign.number + u' ' + foreign.date + u' ' + foreign.mark);
        for (int i = 0; i < 6; ++i) {
            const QDate date = Today.addDays(i - 8);
            std::vector<Cell> cells{date.toString(u"yyMMdd"_s) + u"0001"_s, date8(date)};
            for (qsizetype mark = 0; mark <= foreign.mark.count(u' '); ++mark)
                cells.emplace_back(foreign.unmarked);
            rows.add(cells);
        }
        rows.flush();
    }
    for (const auto& [table, received] :
         {std::pair(u"紙品採購明細"_s, u"驗收數"_s), std::pair(u"坑紙明細"_s, u"入庫數"_s)}) {
        BulkTable rows(connection, table, u"採購單號 序 數量 "_s + received);
        for (int i = 0; i < 6; ++i)
            rows.add({Today.addDays(i - 8).toString(u"yyMMdd"_s) + u"0001"_s, 1, 100, i % 2 == 0 ? 100 : 40});
        rows.flush();
    }
}

void writePaperMovements(Connection& connection, const Plant& plant) {
    BulkTable lines(connection, u"紙品入庫明細"_s, u"入庫單號 序 紙品代號 紙品名稱 規格 入庫數量 單位"_s);
    BulkTable heads(connection, u"紙品撥出資料"_s, u"出庫單號 出庫日期 領料人"_s);
    BulkTable given(connection, u"紙品撥出明細"_s, u"出庫單號 序 紙品代號 紙品名稱 紙品規格 出庫數量 單位"_s);
    for (int i = 0; i < 6; ++i) {
        const QDate date = Today.addDays(i - 8);
        const QString number = date.toString(u"yyMMdd"_s) + u"0001"_s;
        const Item& paper = plant.item(900 + i * 8);
        lines.add({number, 1, paper.code, paper.name, paper.spec, 500, paper.unit});
        heads.add({number, date8(date), plant.person(8).name});
        given.add({number, 1, paper.code, paper.name, paper.spec, 120, paper.unit});
    }
    for (BulkTable* table : {&lines, &heads, &given})
        table->flush();

    QString columns = u"月份 合計筆數 合計重量 月用量"_s;
    for (int day = 1; day <= 31; ++day)
        columns += u" 筆數%1 重量%1"_s.arg(day);
    BulkTable refills(connection, u"補紙狀況表"_s, columns);
    for (int month = 1; month <= 12; ++month) {
        int count = 0, weight = 0;
        std::vector<Cell> days;
        for (int day = 1; day <= 31; ++day) {
            const int cases =
                day % 7 == 0 || day > QDate(2024, month, 1).daysInMonth() ? 0 : (day * month) % 4;
            count += cases;
            weight += cases * 35;
            days.emplace_back(cases);
            days.emplace_back(cases * 35);
        }
        std::vector<Cell> cells{QDate(2024, month, 1).toString(u"yyyyMM"_s), count, weight,
                                60000 + month * 900};
        cells.insert(cells.end(), days.begin(), days.end());
        refills.add(cells);
    }
    refills.flush();

    BulkTable netWeights(connection, u"浪紙凈重設定資料"_s, u"材質名稱 數值"_s);
    for (const auto& [name, value] :
         {std::pair(u"KMK"_s, 0.542), std::pair(u"AMA"_s, 0.472), std::pair(u"BMB"_s, 0.432)})
        netWeights.add({name, value});
    netWeights.flush();
}

} // namespace

void writeOtherModules(Connection& connection, const Plant& plant) {
    writeWorkOrders(connection, plant);
    writeOutsourcing(connection, plant);
    writeForeignDocuments(connection);
    writePaperMovements(connection, plant);
}

} // namespace liaowu::demo
