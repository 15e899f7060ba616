#pragma once
#include "common/text_values.h"
#include "plant_session.h"
#include "purchasing/order_store.h"

namespace liaowu {

/// Vendors, items, rates and one approved requisition of each family: what orders lean on.
class OrderPlant : public PlantSession {
public:
    OrderPlant() {
        run({uR"(insert into 廠商資料 (廠商代號,廠商簡稱,幣別,經驗傳承,分數,付款天數) values
                 ('V1','甲商','台幣','小心','95','30'),('V2','乙商','美金','','',''))",
             uR"(insert into 物料資料 (物料代號,物料名稱,規格,進價,幣別,單位,進料單位,庫存,安全庫存) values
                 ('M1','油墨','桶','10','台幣','kg','kg','100','20'),('M2','膠水','袋','4','美金','kg','桶','0',''))",
             uR"(insert into 浪紙資料 (浪紙代號,浪紙名稱,進價,幣別,單位,進料單位) values
                 ('B1','K200','5','台幣','pcs','㎡'),('B2','K200','5','台幣','pcs','㎡'),('B3','K300','7','台幣','pcs','㎡'))",
             u"insert into 凸版主料資料 (主料代號,主料名稱,進價,幣別,單位,進料單位) values "
             u"('P1','樹脂版','90','台幣','片','片')",
             u"insert into 匯率檔 (幣別,匯率,默認幣別) values ('台幣','1','Y'),('美金','32','N')",
             u"insert into 匯率修改記錄 (幣別,匯率,修改日期) values "
             u"('美金','30','20240101'),('美金','31','20250101'),('台幣','1','20240101')",
             u"insert into 原料申購資料 (申購單號,類別,審單) values ('R1','物料','Y')",
             uR"(insert into 原料申購明細 (申購單號,序,原料代號,原料名稱,規格,數量,單位,已采購數,需求日期) values
                 ('R1',1,'M1','油墨','桶','100','kg','5','20250301'),('R1',2,'M2','膠水','袋','50','kg','',''))"});
    }

    /// A line of `quantity` at `price`, ready to be saved.
    static OrderLine line(const QString& code, double quantity, double price,
                          const QString& requisition = {}) {
        OrderLine made;
        made.請購單號 = requisition;
        made.原料代號 = made.原料名稱 = made.廠商名稱 = code;
        made.單位 = QStringLiteral("kg");
        made.數量 = made.未交數 = numberText(quantity);
        made.單價 = made.原單價 = numberText(price);
        made.小計 = made.原小計 = numberText(quantity * price);
        made.寬剖 = QStringLiteral("1");
        made.小紙數 = made.數量;
        made.送清 = QStringLiteral("N");
        return made;
    }

    static OrderSave newOrder(const QString& number, OrderLines lines,
                              const QString& category = QStringLiteral("物料")) {
        OrderSave save;
        save.header.採購單號 = number;
        save.header.類別 = category;
        save.header.採購日期 = QStringLiteral("20250115");
        save.header.廠商代號 = QStringLiteral("V1");
        save.header.廠商簡稱 = QStringLiteral("甲商");
        save.header.幣別 = QStringLiteral("台幣");
        save.header.採購類別 = QStringLiteral("庫存");
        save.header.審單 = QStringLiteral("N");
        save.header.合計 = QStringLiteral("100");
        save.lines = std::move(lines);
        save.isNew = true;
        save.canSeePrice = true;
        return save;
    }

    /// The stored order as a screen that has just loaded it would save it.
    OrderSave loaded(const QString& number, bool canSeePrice = true) {
        Connection connection(pool, target);
        const auto order = loadOrder(connection, number, canSeePrice).value();
        OrderSave save;
        save.header = order.header;
        save.lines = save.loaded = order.lines;
        save.lastDocumentNumber = number;
        save.loadedStamp = stampOf(order.header);
        save.canSeePrice = canSeePrice;
        return save;
    }

    /// Saves an order and loads it.
    OrderSave saved(OrderSave order) {
        saveOrder(session, order);
        return loaded(order.header.採購單號, order.canSeePrice);
    }

    QStringList everything() {
        return contents({u"採購資料", u"採購明細資料", u"原料申購明細", u"歷史單價記錄", u"物料資料",
                         u"浪紙資料", u"凸版主料資料", u"詢價明細資料", u"詢價單價記錄", u"採購資料報表2"});
    }
};

} // namespace liaowu
