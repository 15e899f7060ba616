#include "purchasing/order_price_feedback.h"
#include "common/items.h"
#include "common/text_values.h"
#include "data/recordset.h"
#include <QHash>

namespace liaowu {

using namespace Qt::StringLiterals;

namespace {

struct Feedback {
    Session& session;
    Connection& connection;
    const OrderHeader& header;
    const QString& today;

    void addHistory(const QString& code, const OrderLine& line) const {
        Recordset history;
        history.Open(sql(u"select * from 歷史單價記錄 WHERE 貨品代號=''"), connection, Cursor::Optimistic);
        history.AddNew();
        history.set(u"類別", header.類別);
        history.set(u"貨品代號", code);
        history.set(u"幣別", header.幣別);
        history.set(u"單價", val(line.單價));
        history.set(u"數量", val(line.數量));
        history.set(u"廠商代號", header.廠商代號);
        history.set(u"廠商簡稱", header.廠商簡稱);
        history.set(u"添加日期", today);
        history.set(u"作業員", session.userName);
        history.Update();
    }

    /// All boards of one name share one price.
    void changeBoards(const QString& name, const OrderLine& line) const {
        connection.Execute(
            sql(u"Update 浪紙資料 set 進價 ='{}', 幣別 ='{}',進料單位='{}' where 浪紙名稱 ='{}' ",
                numberText(val(line.單價)), header.幣別, line.單位, name));
        Recordset boards = select(
            connection,
            sql(u"select 浪紙代號,浪紙名稱 from 浪紙資料 where 浪紙名稱 = '{}' order by 浪紙代號 ", name));
        for (; !boards.EOF_(); boards.MoveNext())
            addHistory(boards.text(u"浪紙代號").trimmed(), line);
    }

    void feed(const OrderLine& line) const {
        const ItemFamily* family = itemFamily(header.類別);
        if (!family) return;
        Recordset item;
        item.Open(sql(u"select * from [{}] where [{}] = '{}'", family->table, family->code, line.原料代號),
                  connection, Cursor::Optimistic);
        if (item.RecordCount() == 0) return;
        const bool changed = val(line.單價) != val(item.text(u"進價")) ||
                             item.text(u"幣別").trimmed() != header.幣別.trimmed();
        if (!changed) return;
        if (family->word == u"紙板") {
            changeBoards(item.text(family->name), line);
            return;
        }
        item.set(u"進價", val(line.單價));
        item.set(u"進料單位", line.單位);
        item.set(u"幣別", header.幣別);
        item.Update();
        addHistory(line.原料代號, line);
    }
};

/// A line saved again as it stands tells nothing new of the price.
bool sameAsStored(const OrderLine& line, const OrderLine* before) {
    return before && val(before->單價) == val(line.單價) && before->單位.trimmed() == line.單位.trimmed() &&
           before->原料代號.trimmed() == line.原料代號.trimmed();
}

} // namespace

void feedPricesBack(Session& session, Connection& connection, const OrderHeader& header,
                    const OrderLines& lines, const std::optional<OrderDocument>& stored,
                    const QString& today) {
    const Feedback feedback{session, connection, header, today};
    QHash<double, const OrderLine*> before;
    if (stored && stored->header.幣別 == header.幣別 && stored->header.廠商代號 == header.廠商代號)
        for (const OrderLine& line : stored->lines)
            before.insert(val(line.序), &line);
    for (const OrderLine& line : lines)
        if (val(line.單價) != 0 && !sameAsStored(line, before.value(val(line.序)))) feedback.feed(line);
}

} // namespace liaowu
