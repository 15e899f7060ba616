#pragma once
#include "common/items.h"
#include "data/number_text.h"
#include "plant_session.h"
#include "warehouse/check_plant.h"
#include "warehouse/receipt_store.h"

namespace liaowu {

/// What contradicts the documents.
inline QStringList faultsOf(Connection& connection) {
    QStringList lines;
    for (const Difference& difference : checkPlant(connection).differences)
        lines << difference.text();
    return lines;
}

/// Items of each family, and an approved order of each with two open lines of 10 and 20.
class ReceiptPlant : public PlantSession {
public:
    ReceiptPlant() {
        run({u"insert into 浪紙資料 (浪紙代號, 浪紙名稱, 庫存, 單位) values ('KMK', 'K200', '0', 'PCS')",
             u"insert into 物料資料 (物料代號, 物料名稱, 庫存, 單位) values ('IN1', '墨', '0', 'KG'), "
             u"('IN2', '膠', '0', 'KG')",
             u"insert into 紙品資料 (紙品代號, 紙品名稱, 庫存, 單位) values ('W1', 'W80', '5', '張')",
             u"insert into 凸版主料資料 (主料代號, 主料名稱, 庫存, 單位) values ('PL1', '版', '6', '塊')",
             uR"(insert into 採購資料 (採購單號, 類別, 審單, 廠商代號, 幣別) values
                 ('P1', '物料', 'Y', 'V1', '台幣'), ('P2', '紙板', 'Y', 'V1', '台幣'),
                 ('P3', '紙品', 'Y', 'V1', '台幣'), ('P4', '凸版', 'Y', 'V1', '台幣'))",
             uR"(insert into 採購明細資料 (採購單號, 序, 原料代號, 數量, 已入庫數, 未交數, 送清, 寬剖, 單價) values
                 ('P1', 1, 'IN1', '10', '0', '10', 'N', '4', '2'), ('P1', 2, 'IN1', '20', '0', '20', 'N', '4', '2'),
                 ('P2', 1, 'KMK', '10', '0', '10', 'N', '4', '2'), ('P2', 2, 'KMK', '20', '0', '20', 'N', '4', '2'),
                 ('P3', 1, 'W1', '10', '0', '10', 'N', '4', '2'), ('P3', 2, 'W1', '20', '0', '20', 'N', '4', '2'),
                 ('P4', 1, 'PL1', '10', '0', '10', 'N', '4', '2'), ('P4', 2, 'PL1', '20', '0', '20', 'N', '4', '2'))"});
    }

    static ReceiptLine line(const QString& order, const QString& orderLine, const QString& code,
                            const QString& quantity, const QString& spare = {}, const QString& pieces = {}) {
        ReceiptLine made;
        made.採購單號 = order;
        made.採購序 = orderLine;
        made.原料代號 = code;
        made.數量 = quantity;
        made.備品 = spare;
        made.走紙才 = QStringLiteral("1");
        made.入庫數量 = pieces;
        made.原單價 = made.單價 = QStringLiteral("2");
        made.原小計 = made.小計 = numberText(2 * val(quantity));
        return made;
    }

    static ReceiptSave newReceipt(const QString& category, ReceiptLines lines,
                                  const QString& bin = QStringLiteral("A區")) {
        ReceiptSave save;
        save.header.入庫單號 = QStringLiteral("2501150001");
        save.header.類別 = category;
        save.header.入庫日期 = QStringLiteral("20250115");
        save.header.單別 = QStringLiteral("采購入庫");
        save.header.倉別 = bin;
        save.header.審核 = QStringLiteral("N");
        save.lines = std::move(lines);
        save.isNew = true;
        save.canSeePrice = true;
        return save;
    }

    /// The document as a screen would save it again after loading it.
    ReceiptSave again(const QString& number = QStringLiteral("2501150001")) {
        Connection connection(pool, target);
        const auto document = loadReceipt(connection, number, true);
        ReceiptSave save;
        save.header = document->header;
        save.lines = save.saved = document->lines;
        save.savedNumber = number;
        save.loadedStamp = document->stamp;
        save.canSeePrice = true;
        return save;
    }

    /// Saves a receipt and loads it.
    ReceiptSave saved(ReceiptSave receipt) {
        saveReceipt(session, receipt);
        return again(receipt.header.入庫單號);
    }
    /// The same for one of materials, on the first line of their order.
    ReceiptSave saved(const QString& quantity) {
        return saved(newReceipt(QStringLiteral("物料"), {line(QStringLiteral("P1"), QStringLiteral("1"),
                                                              QStringLiteral("IN1"), quantity)}));
    }

    /// 庫存 and 異動日期 of an item.
    QString stock(const QString& category, const QString& code) {
        const ItemFamily* family = itemFamily(category);
        return rowsOf(QStringLiteral("select 庫存, 異動日期 from %1 where %2 = '%3'")
                          .arg(family->table, family->code, code))
            .value(0);
    }
    QString orderLine(const QString& number, int line) {
        return rowsOf(QStringLiteral("select 已入庫數, 未交數, 送清 from 採購明細資料 where 採購單號 = N'%1' "
                                     "and 序 = %2")
                          .arg(number)
                          .arg(line))
            .value(0);
    }
    QStringList bins() {
        return rows(u"select 原料代號, 儲位, 入庫單號, 入庫數, 領料數 from 原料板位明細 order by 原料代號, "
                    u"儲位, 入庫單號");
    }
    QStringList faults() {
        Connection connection(pool, target);
        return faultsOf(connection);
    }

    /// Every row of every table that a receipt may touch.
    QString everything() {
        return contents({u"原料入庫資料", u"原料入庫明細", u"採購明細資料", u"浪紙資料", u"物料資料",
                         u"紙品資料", u"凸版主料資料", u"原料板位明細", u"料務_板位異動", u"進料檢驗資料",
                         u"原料入庫明細報表"})
            .join(u'\n');
    }
};

} // namespace liaowu
