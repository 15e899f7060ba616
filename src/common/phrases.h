#pragma once
#include "common/session.h"

namespace liaowu {

class Connection;

/// A row of 片語資料 as in-cell lists need it.
struct Phrase {
    QString category; ///< 類別
    QString text;     ///< 內容
    QString group;    ///< 分類
};
using PhraseCache = std::vector<Phrase>;

/// All phrases, or those of one category, by 代號. Throws `DatabaseError`.
PhraseCache loadPhrases(Session& session, const QString& category = {});

/// 內容 of a category's phrases in the order of 代號; a failure is shown under "取得輔助資料錯誤" and gives what was read.
QStringList phrases(Session& session, const QString& category);
/// The phrases of a category and 分類, or of the whole category when it has none of that 分類.
QStringList phrasesOf(Session& session, const QString& subCategory, const QString& category);

/// Items of the in-cell list of a kind: the cell's own text first, then a fixed set or phrases. `category` "AB-單位" takes
/// phrases whose 分類 is `listKind`; else those whose 類別 is `listKind` or `category`. Without phrases at hand the list
/// holds the own text only.
QStringList cellList(const QString& category, const QString& listKind, const QString& cellText,
                     const PhraseCache& cache);

/// Sizes that a vendor uses for the letters of a material code, from the phrases "EN-材質編碼". A letter without a phrase
/// is dropped; an empty result gives the code itself.
QString materialSizes(Session& session, const QString& code, const QString& vendor);
QString materialSizes(Connection& connection, const QString& code, const QString& vendor);

} // namespace liaowu
