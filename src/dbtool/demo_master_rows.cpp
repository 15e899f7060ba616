#include "dbtool/bulk_table.h"
#include "dbtool/demo_rows.h"
#include <QSet>
#include <cmath>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

double rateOf(const Plant& plant, int currency) {
    return plant.currencies[static_cast<std::size_t>(currency)].rate;
}
QString currencyName(const Plant& plant, int currency) {
    return plant.currencies[static_cast<std::size_t>(currency)].name;
}

/// Price of one stock unit in the base currency.
double unitCost(const Plant& plant, const Item& item) {
    const double price = item.price * rateOf(plant, item.currency);
    double stockUnit = price;
    if (item.family == Family::Board) stockUnit = price * item.first * item.second / 10000;
    if (item.family == Family::Board && item.buyUnit == u"kg") stockUnit *= item.weight / 1000;
    return std::round(stockUnit * 10000) / 10000;
}

QString quoted(double price) {
    return numberText(std::round(price * 1.15 * 10000) / 10000);
}

void writeVendors(Connection& connection, const Plant& plant) {
    BulkTable rows(
        connection, u"廠商資料"_s,
        u"廠商代號 廠商簡稱 廠商全銜 廠商類別 發票稅率 電話1 聯絡人 傳真號碼 幣別 付款天數 付款方式 結帳日 "
        u"經驗傳承 分數 業務員代號 業務員名稱 報廢與否"_s);
    BulkTable weights(connection, u"廠商浪紙度數明細"_s, u"廠商代號 浪紙度數"_s);
    int boardVendors = 0;
    for (const Vendor& vendor : plant.vendors) {
        const Person& buyer = plant.person(vendor.buyer);
        rows.add({vendor.code, vendor.shortName, vendor.fullName, vendor.kind, vendor.tax, vendor.phone,
                  vendor.contact, vendor.fax, currencyName(plant, vendor.currency), vendor.days,
                  vendor.payment, vendor.closing, vendor.notes, 100 - vendor.penalty, buyer.code, buyer.name,
                  vendor.scrapped ? u"Y" : u"N"});
        if (vendor.family != Family::Board || ++boardVendors > 3) continue;
        for (int weight = 300; weight <= 700; weight += 50)
            weights.add({vendor.code, weight});
    }
    rows.flush();
    weights.flush();
}

QString safety(const Item& item, int index) {
    return index % 7 == 6 ? QString() : numberText(item.lot * 2);
}
QString binFlag(const Item& item) {
    return item.bins.empty() ? u"N"_s : u"Y"_s;
}

void writeItems(Connection& connection, const Plant& plant) {
    const QString core = u" 規格 庫存 單位 進料單位 進價 單價 幣別 安全庫存 異動日期 盤點日期 "_s;
    const QString extra = u"儲位 最小訂量 單重 報關名稱 海關編號 報關類別 建檔人 建檔時間 "_s;
    BulkTable boards(connection, u"浪紙資料"_s,
                     u"浪紙代號 浪紙名稱"_s + core + extra + u"報價 浪紙名稱1 規格1 楞別 紙張類別 廠牌"_s);
    BulkTable materials(connection, u"物料資料"_s,
                        u"物料代號 物料名稱"_s + core + extra +
                            u"報價 廠商代號 廠商簡稱 類別 包裝方式 品檢"_s);
    BulkTable papers(connection, u"紙品資料"_s,
                     u"紙品代號 紙品名稱"_s + core + extra + u"材質 條數 廠牌 卷筒紙 外加工"_s);
    BulkTable plates(connection, u"凸版主料資料"_s, u"主料代號 主料名稱"_s + core + u"廠商代號 廠商簡稱"_s);
    const std::vector<QString> packings{u"箱裝"_s, u"桶裝"_s, u"袋裝"_s, u"卷裝"_s, u"散裝"_s};

    for (std::size_t i = 0; i < plant.items.size(); ++i) {
        const Item& item = plant.items[i];
        const int index = static_cast<int>(i);
        const Vendor& vendor = plant.vendor(item.vendor);
        std::vector<Cell> cells{item.code,
                                item.name,
                                item.spec,
                                item.stock,
                                item.unit,
                                item.buyUnit,
                                item.price,
                                unitCost(plant, item),
                                currencyName(plant, item.currency),
                                safety(item, index),
                                date8(item.moved),
                                date8(LastClosed)};
        const auto add = [&](std::initializer_list<Cell> more) { cells.insert(cells.end(), more); };
        const double weight = item.family == Family::Board ? item.weight / 1000 : item.weight;
        if (item.family != Family::Plate)
            add({binFlag(item), item.lot, weight, u"", u"", u"", plant.person(4).name, item.created});
        switch (item.family) {
        case Family::Board:
            add({quoted(item.price), item.flute + u"楞紙板"_s, u"", item.flute,
                 QString(QChar(u'A' + item.group % 7)) + u"級"_s, item.brand});
            boards.add(cells);
            break;
        case Family::Material:
            add({quoted(item.price), vendor.code, vendor.shortName, item.kind, packings[i % packings.size()],
                 index % 25 == 0 ? u"Y" : u"N"});
            materials.add(cells);
            break;
        case Family::Paper:
            add({u"", u"", item.brand, item.kind, index % 40 == 7 ? u"Y" : u"N"});
            papers.add(cells);
            break;
        case Family::Plate:
            add({vendor.code, vendor.shortName});
            plates.add(cells);
            break;
        }
    }
    for (BulkTable* table : {&boards, &materials, &papers, &plates})
        table->flush();
}

void writePrices(Connection& connection, const Plant& plant) {
    BulkTable rows(connection, u"歷史單價記錄"_s,
                   u"類別 貨品代號 添加日期 單價 數量 幣別 廠商代號 廠商簡稱 作業員"_s);
    QSet<int> changed;
    for (const PriceRow& row : plant.prices) {
        const Item& item = plant.item(row.item);
        const Vendor& vendor = plant.vendor(row.vendor);
        changed.insert(row.item);
        rows.add({familyWord(item.family), item.code, date8(row.date), row.price, row.quantity,
                  currencyName(plant, row.currency), vendor.code, vendor.shortName, row.user});
    }
    // An item that was never ordered still has the price it was entered with.
    for (int i = 0; i < static_cast<int>(plant.items.size()); ++i) {
        const Item& item = plant.item(i);
        if (!changed.contains(i))
            rows.add({familyWord(item.family), item.code, QString(item.created).remove(u'-').left(8),
                      item.price, u"", currencyName(plant, item.currency), u"", u"", u"admin"});
    }
    rows.flush();

    BulkTable heads(connection, u"詢價資料"_s, u"詢價單號 詢價日期 廠商代號 廠商簡稱 幣別 類別"_s);
    BulkTable lines(connection, u"詢價明細資料"_s, u"詢價單號 序 原料代號 原料名稱 規格 數量 單價 小計"_s);
    BulkTable quotes(connection, u"詢價單價記錄"_s,
                     u"類別 貨品代號 添加日期 單價 數量 幣別 廠商代號 廠商簡稱 詢價單號"_s);
    for (int i = 0; i < 30; ++i) {
        const QDate date = FirstDay.addDays(13 * i);
        const QString number = u"Q"_s + date.toString(u"yyMMdd"_s) + u"01"_s;
        const Item& first = plant.item(i * 31);
        const Vendor& vendor = plant.vendor(first.vendor);
        const QString currency = currencyName(plant, vendor.currency);
        heads.add({number, date8(date), vendor.code, vendor.shortName, currency, familyWord(first.family)});
        for (int line = 0; line < 3; ++line) {
            const Item& item = plant.item(i * 31 + line);
            const double quantity = item.lot * 10;
            const double price = std::round(item.usualPrice / rateOf(plant, vendor.currency) * 98) / 100;
            const double amount = amountOf(item, quantity, price).amount;
            lines.add({number, line + 1, item.code, item.name, item.spec, quantity, price, amount});
            quotes.add({familyWord(item.family), item.code, date8(date), price, quantity, currency,
                        vendor.code, vendor.shortName, number});
        }
    }
    for (BulkTable* table : {&heads, &lines, &quotes})
        table->flush();
}

} // namespace

void writeMasters(Connection& connection, const Plant& plant) {
    writeVendors(connection, plant);
    writeItems(connection, plant);
    writePrices(connection, plant);
}

} // namespace liaowu::demo
