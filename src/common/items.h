#pragma once
#include <QString>

namespace liaowu {

/// Names of an item family's table and columns. A document names an item by family word and code.
struct ItemFamily {
    QString word;  ///< 紙板, 物料, 紙品 or 凸版
    QString table; ///< 浪紙資料, 物料資料, 紙品資料 or 凸版主料資料
    QString code;  ///< 浪紙代號, 物料代號, 紙品代號 or 主料代號
    QString name;  ///< 浪紙名稱, 物料名稱, 紙品名稱 or 主料名稱
};

/// The family of a word; null for any other text.
const ItemFamily* itemFamily(const QString& word);

} // namespace liaowu
