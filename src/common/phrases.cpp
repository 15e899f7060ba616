#include "common/phrases.h"
#include "common/guard.h"
#include "data/recordset.h"

namespace liaowu {

using namespace Qt::StringLiterals;

PhraseCache loadPhrases(Session& session, const QString& category) {
    Connection connection(session.pool, session.connectionString);
    const SqlText statement =
        category.isEmpty() ? sql(u"select * from [片語資料] order by 類別,代號")
                           : sql(u"select * from [片語資料] where 類別 = '{}' order by 代號", category);
    Recordset rows = select(connection, statement);
    PhraseCache cache;
    for (; !rows.EOF_(); rows.MoveNext())
        cache.push_back(
            {rows.text(u"類別").trimmed(), rows.text(u"內容").trimmed(), rows.text(u"分類").trimmed()});
    return cache;
}

namespace {

QStringList phraseTexts(Connection& connection, const SqlText& statement) {
    QStringList texts;
    for (Recordset rows = select(connection, statement); !rows.EOF_(); rows.MoveNext())
        texts << rows.text(u"內容").trimmed();
    return texts;
}

} // namespace

QStringList phrases(Session& session, const QString& category) {
    QStringList texts;
    guarded(session, u"取得輔助資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        texts = phraseTexts(connection,
                            sql(u"select * from [片語資料] where 類別 = '{}' order by 代號", category));
    });
    return texts;
}

QStringList phrasesOf(Session& session, const QString& subCategory, const QString& category) {
    QStringList texts;
    guarded(session, u"取得輔助資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        texts = phraseTexts(connection,
                            sql(u"select * from [片語資料] where 類別 = '{}' and 分類='{}' order by 代號",
                                category, subCategory));
        if (texts.isEmpty())
            texts = phraseTexts(connection,
                                sql(u"select * from [片語資料] where 類別 = '{}'  order by 代號", category));
    });
    return texts;
}

namespace {

/// The members of a small set that the cell does not show; all of them, in their order, when it shows none.
QStringList others(const QStringList& set, const QString& own) {
    QStringList rest = set;
    rest.removeAll(own);
    return rest;
}

std::optional<QStringList> fixedItems(const QString& kind, const QString& own) {
    static const QHash<QString, QStringList> fixed{
        {u"數字"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"0"_s}},
        {u"用紙類別"_s, {u"面紙"_s, u"紙板"_s, u"說明書"_s}},
        {u"加工別"_s,
         {u"印前"_s, u"製版"_s, u"印刷"_s, u"上光"_s, u"裱紙"_s, u"軋型"_s, u"糊盒"_s, u"裝訂"_s, u"品檢"_s}},
        {u"加工別1"_s,
         {u"印前"_s, u"製版"_s, u"印刷"_s, u"上光"_s, u"裱紙"_s, u"軋型"_s, u"糊盒"_s, u"裝訂"_s, u"紙板"_s}},
        {u"工序"_s, {u"印刷"_s, u"裝訂"_s, u"上光"_s, u"裱浪"_s, u"軋型"_s, u"糊盒"_s}},
        {u"幣別"_s, {u"人民幣"_s, u"台幣"_s, u"美金"_s, u"港幣"_s}},
        {u"資材類別"_s, {u"紙品"_s, u"紙板"_s, u"物料"_s}},
        {u"類型"_s, {u"說明書"_s, u"封面"_s, u"內頁"_s, u"面紙"_s, u"紙板"_s}}};
    if (const auto found = fixed.constFind(kind); found != fixed.constEnd()) return *found;
    // Small sets list what the cell does not show.
    static const QHash<QString, QStringList> rest{{u"紙品類別"_s, {u"平板紙"_s, u"卷筒紙"_s}},
                                                  {u"張令"_s, {u"張"_s, u"令"_s}},
                                                  {u"kg㎡"_s, {u"kg"_s, u"㎡"_s}},
                                                  {u"YN"_s, {u"N"_s, u"Y"_s}},
                                                  {u"CH"_s, {u"成品"_s, u"耗材"_s}}};
    if (const auto found = rest.constFind(kind); found != rest.constEnd()) return others(*found, own);
    if (kind == u"YNH") return others({u"Y"_s, u"N"_s, u"H"_s}, own);
    if (kind == u"版別") return others({u"新版"_s, u"舊版"_s, u"改版"_s}, own) << u" "_s;
    return std::nullopt;
}

} // namespace

QStringList cellList(const QString& category, const QString& listKind, const QString& cellText,
                     const PhraseCache& cache) {
    const QString own = cellText.trimmed();
    QStringList items{own};
    if (cache.empty()) return items;
    if (const auto fixed = fixedItems(listKind, own)) return items + *fixed;
    const QString group = QString(listKind).remove(u' ');
    for (const Phrase& phrase : cache) {
        if (listKind == u"輪轉") {
            if (phrase.category == u"BD-印刷內容" && phrase.text.contains(u"輪")) items << phrase.text;
            continue;
        }
        if (phrase.text == own || (phrase.category != listKind && phrase.category != category)) continue;
        if (category == u"AB-單位" && phrase.group != group) continue;
        items << phrase.text;
    }
    return items;
}

QString materialSizes(Connection& connection, const QString& code, const QString& vendor) {
    QString result;
    for (const QChar letter : code) {
        const Recordset row =
            select(connection,
                   sql(u"select * from 片語資料 where 類別='EN-材質編碼' and 內容='{}' and 廠商代號='{}' ",
                       QString(letter), vendor));
        if (row.RecordCount() > 0) result += row.text(u"尺寸大小").trimmed();
    }
    return result.isEmpty() ? code : result;
}

QString materialSizes(Session& session, const QString& code, const QString& vendor) {
    QString result = code;
    guarded(session, u"取得輔助資料錯誤"_s, [&] {
        Connection connection(session.pool, session.connectionString);
        result = materialSizes(connection, code, vendor);
    });
    return result;
}

} // namespace liaowu
