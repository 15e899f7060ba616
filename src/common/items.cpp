#include "common/items.h"

namespace liaowu {

using namespace Qt::StringLiterals;

const ItemFamily* itemFamily(const QString& word) {
    static const ItemFamily families[] = {{u"紙板"_s, u"浪紙資料"_s, u"浪紙代號"_s, u"浪紙名稱"_s},
                                          {u"物料"_s, u"物料資料"_s, u"物料代號"_s, u"物料名稱"_s},
                                          {u"紙品"_s, u"紙品資料"_s, u"紙品代號"_s, u"紙品名稱"_s},
                                          {u"凸版"_s, u"凸版主料資料"_s, u"主料代號"_s, u"主料名稱"_s}};
    for (const ItemFamily& family : families)
        if (family.word == word) return &family;
    return nullptr;
}

} // namespace liaowu
