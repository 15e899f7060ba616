#include "common/phrases.h"
#include "plant_session.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

TEST(Phrases, ListsOfACell) {
    const PhraseCache cache{
        {u"AB-單位"_s, u"kg"_s, u"資材"_s},       {u"AB-單位"_s, u"張"_s, u"耗材類"_s},
        {u"AB-單位"_s, u"片"_s, u"資材"_s},       {u"EB-楞別"_s, u"B"_s, u""_s},
        {u"EB-楞別"_s, u"BC"_s, u""_s},           {u"BD-印刷內容"_s, u"四色輪轉"_s, u""_s},
        {u"BD-印刷內容"_s, u"平版四色"_s, u""_s}, {u"資材"_s, u"怪"_s, u"資材"_s}};
    struct Case {
        QString category, kind, cell;
        QStringList items;
    };
    const Case cases[] = {
        {u"數字"_s, u"數字"_s, u""_s, {u""_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"0"_s}},
        {u"x"_s, u"用紙類別"_s, u"面紙"_s, {u"面紙"_s, u"面紙"_s, u"紙板"_s, u"說明書"_s}},
        {u"x"_s,
         u"加工別"_s,
         u" 印刷 "_s,
         {u"印刷"_s, u"印前"_s, u"製版"_s, u"印刷"_s, u"上光"_s, u"裱紙"_s, u"軋型"_s, u"糊盒"_s, u"裝訂"_s,
          u"品檢"_s}},
        {u"x"_s,
         u"加工別1"_s,
         u""_s,
         {u""_s, u"印前"_s, u"製版"_s, u"印刷"_s, u"上光"_s, u"裱紙"_s, u"軋型"_s, u"糊盒"_s, u"裝訂"_s,
          u"紙板"_s}},
        {u"x"_s, u"工序"_s, u""_s, {u""_s, u"印刷"_s, u"裝訂"_s, u"上光"_s, u"裱浪"_s, u"軋型"_s, u"糊盒"_s}},
        {u"x"_s, u"幣別"_s, u"歐元"_s, {u"歐元"_s, u"人民幣"_s, u"台幣"_s, u"美金"_s, u"港幣"_s}},
        {u"x"_s, u"資材類別"_s, u""_s, {u""_s, u"紙品"_s, u"紙板"_s, u"物料"_s}},
        {u"x"_s, u"類型"_s, u""_s, {u""_s, u"說明書"_s, u"封面"_s, u"內頁"_s, u"面紙"_s, u"紙板"_s}},
        {u"x"_s, u"紙品類別"_s, u"平板紙"_s, {u"平板紙"_s, u"卷筒紙"_s}},
        {u"x"_s, u"紙品類別"_s, u"別的"_s, {u"別的"_s, u"平板紙"_s, u"卷筒紙"_s}},
        {u"x"_s, u"張令"_s, u"令"_s, {u"令"_s, u"張"_s}},
        {u"x"_s, u"kg㎡"_s, u""_s, {u""_s, u"kg"_s, u"㎡"_s}},
        {u"x"_s, u"YN"_s, u"Y"_s, {u"Y"_s, u"N"_s}},
        {u"x"_s, u"YN"_s, u"N"_s, {u"N"_s, u"Y"_s}},
        {u"x"_s, u"YN"_s, u""_s, {u""_s, u"N"_s, u"Y"_s}},
        {u"x"_s, u"CH"_s, u"耗材"_s, {u"耗材"_s, u"成品"_s}},
        {u"x"_s, u"CH"_s, u""_s, {u""_s, u"成品"_s, u"耗材"_s}},
        {u"x"_s, u"YNH"_s, u"Y"_s, {u"Y"_s, u"N"_s, u"H"_s}},
        {u"x"_s, u"YNH"_s, u"N"_s, {u"N"_s, u"Y"_s, u"H"_s}},
        {u"x"_s, u"YNH"_s, u"H"_s, {u"H"_s, u"Y"_s, u"N"_s}},
        {u"x"_s, u"YNH"_s, u"C"_s, {u"C"_s, u"Y"_s, u"N"_s, u"H"_s}},
        {u"x"_s, u"YNH"_s, u""_s, {u""_s, u"Y"_s, u"N"_s, u"H"_s}},
        {u"x"_s, u"版別"_s, u"新版"_s, {u"新版"_s, u"舊版"_s, u"改版"_s, u" "_s}},
        {u"x"_s, u"版別"_s, u""_s, {u""_s, u"新版"_s, u"舊版"_s, u"改版"_s, u" "_s}},
        {u"BD-印刷內容"_s, u"輪轉"_s, u""_s, {u""_s, u"四色輪轉"_s}},
        {u"AB-單位"_s, u"資材"_s, u"kg"_s, {u"kg"_s, u"片"_s, u"怪"_s}},
        {u"AB-單位"_s, u" 耗 材類"_s, u"箱"_s, {u"箱"_s, u"張"_s}},
        {u"EB-楞別"_s, u"EB-楞別"_s, u"B "_s, {u"B"_s, u"BC"_s}},
        {u"沒有"_s, u"沒有"_s, u"x"_s, {u"x"_s}}};
    for (const Case& c : cases)
        EXPECT_EQ(cellList(c.category, c.kind, c.cell, cache), c.items)
            << c.kind.toStdString() << " on " << c.cell.toStdString();
    EXPECT_EQ(cellList(u"x"_s, u"YN"_s, u"Y"_s, {}), QStringList(u"Y"_s))
        << "without phrases at hand there is no list";
}

TEST(Phrases, CombosAreFilledByCategory) {
    PlantSession plant;
    plant.run({u"insert into 片語資料 (代號,類別,內容,分類) values ('2','BB-異動類別','領料 "
               u"','出庫'),('1','BB-異動類別','入庫','入庫'),('3','BB-異動類別',' "
               u"補料','出庫'),('1','AA-部門','倉儲部','')"});
    EXPECT_EQ(phrases(plant.session, u"BB-異動類別"_s), QStringList({u"入庫"_s, u"領料"_s, u"補料"_s}))
        << "by code, trimmed";
    EXPECT_EQ(phrases(plant.session, u"沒有"_s), QStringList());
    EXPECT_EQ(phrasesOf(plant.session, u"出庫"_s, u"BB-異動類別"_s), QStringList({u"領料"_s, u"補料"_s}));
    EXPECT_EQ(phrasesOf(plant.session, u"報廢"_s, u"BB-異動類別"_s).size(), 3)
        << "none of that 分類: the whole category";
    EXPECT_EQ(loadPhrases(plant.session, u"AA-部門"_s).size(), 1u);
    EXPECT_EQ(loadPhrases(plant.session).size(), 4u);
    EXPECT_TRUE(plant.messages.told.isEmpty());
    plant.pool.failAt(1);
    EXPECT_EQ(phrases(plant.session, u"AA-部門"_s), QStringList());
    ASSERT_EQ(plant.messages.told.size(), 1);
    EXPECT_TRUE(plant.messages.told.first().startsWith(u"取得輔助資料錯誤: "));
}

TEST(Phrases, MaterialCodesInTheVendorsWords) {
    PlantSession plant;
    plant.run(
        {u"insert into 片語資料 (代號,類別,內容,廠商代號,尺寸大小) values ('1','EN-材質編碼','K','V1','牛 "
         u"'),('2','EN-材質編碼','A','V1','甲'),('3','EN-材質編碼','K','V2','王'),('4','EN-材質編碼','''','"
         u"V1','撇')"});
    struct Case {
        QString code, vendor, words;
    };
    const Case cases[] = {{u"KAK"_s, u"V1"_s, u"牛甲牛"_s}, {u"KxA"_s, u"V1"_s, u"牛甲"_s},
                          {u"KAK"_s, u"V2"_s, u"王王"_s},   {u"xyz"_s, u"V1"_s, u"xyz"_s},
                          {u""_s, u"V1"_s, u""_s},          {u"K"_s, u"V3"_s, u"K"_s},
                          {u"ka"_s, u"V1"_s, u"牛甲"_s},    {u"'"_s, u"V1"_s, u"撇"_s}};
    for (const Case& c : cases)
        EXPECT_EQ(materialSizes(plant.session, c.code, c.vendor), c.words) << c.code.toStdString();
    plant.pool.failAt(2);
    EXPECT_EQ(materialSizes(plant.session, u"K"_s, u"V1"_s), u"K"_s) << "a failure leaves the code";
    EXPECT_EQ(plant.messages.told.size(), 1);
}
