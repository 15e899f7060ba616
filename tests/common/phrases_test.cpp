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
    // Category, kind of the list and what the cell holds; the list.
    const auto cases = casesOf<4>(
        {u"數字|數字||,1,2,3,4,5,0", u"x|用紙類別|面紙|面紙,面紙,紙板,說明書",
         u"x|加工別| 印刷 |印刷,印前,製版,印刷,上光,裱紙,軋型,糊盒,裝訂,品檢",
         u"x|加工別1||,印前,製版,印刷,上光,裱紙,軋型,糊盒,裝訂,紙板",
         u"x|工序||,印刷,裝訂,上光,裱浪,軋型,糊盒", u"x|幣別|歐元|歐元,人民幣,台幣,美金,港幣",
         u"x|資材類別||,紙品,紙板,物料", u"x|類型||,說明書,封面,內頁,面紙,紙板",
         // Small sets hold what the cell does not show.
         u"x|紙品類別|平板紙|平板紙,卷筒紙", u"x|紙品類別|別的|別的,平板紙,卷筒紙", u"x|張令|令|令,張",
         u"x|kg㎡||,kg,㎡", u"x|YN|Y|Y,N", u"x|YN|N|N,Y", u"x|YN||,N,Y", u"x|CH|耗材|耗材,成品",
         u"x|CH||,成品,耗材", u"x|YNH|Y|Y,N,H", u"x|YNH|N|N,Y,H", u"x|YNH|H|H,Y,N", u"x|YNH|C|C,Y,N,H",
         u"x|YNH||,Y,N,H", u"x|版別|新版|新版,舊版,改版, ", u"x|版別||,新版,舊版,改版, ",
         // Phrases.
         u"BD-印刷內容|輪轉||,四色輪轉", u"AB-單位|資材|kg|kg,片,怪", u"AB-單位| 耗 材類|箱|箱,張",
         u"EB-楞別|EB-楞別|B |B,BC", u"沒有|沒有|x|x"});
    for (const auto& [category, kind, cell, items] : cases)
        EXPECT_EQ(cellList(category, kind, cell, cache).join(u','), items) << kind << " on " << cell;
    EXPECT_EQ(cellList(u"x"_s, u"YN"_s, u"Y"_s, {}), QStringList(u"Y"_s))
        << "without phrases at hand there is no list";
}

TEST(Phrases, CombosAreFilledByCategory) {
    PlantSession plant;
    plant.run({uR"(insert into 片語資料 (代號,類別,內容,分類) values ('2','BB-異動類別','領料 ','出庫'),
                   ('1','BB-異動類別','入庫','入庫'),('3','BB-異動類別',' 補料','出庫'),('1','AA-部門','倉儲部',''))"});
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
    plant.run({uR"(insert into 片語資料 (代號,類別,內容,廠商代號,尺寸大小) values
                   ('1','EN-材質編碼','K','V1','牛 '),('2','EN-材質編碼','A','V1','甲'),
                   ('3','EN-材質編碼','K','V2','王'),('4','EN-材質編碼','''','V1','撇'))"});
    for (const auto& [code, vendor, words] :
         casesOf<3>({u"KAK|V1|牛甲牛", u"KxA|V1|牛甲", u"KAK|V2|王王", u"xyz|V1|xyz", u"|V1|", u"K|V3|K",
                     u"ka|V1|牛甲", u"'|V1|撇"}))
        EXPECT_EQ(materialSizes(plant.session, code, vendor), words) << code << " of " << vendor;
    plant.pool.failAt(2);
    EXPECT_EQ(materialSizes(plant.session, u"K"_s, u"V1"_s), u"K"_s) << "a failure leaves the code";
    EXPECT_EQ(plant.messages.told.size(), 1);
}
