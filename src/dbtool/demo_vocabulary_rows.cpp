#include "dbtool/bulk_table.h"
#include "dbtool/demo_rows.h"

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

struct Phrases {
    QString category, group; ///< 分類
    QStringList contents;
};

QString code(int number) {
    return u"%1"_s.arg(number, 3, 10, QChar(u'0'));
}

const std::vector<Phrases>& plainPhrases() {
    static const std::vector<Phrases> all{
        {u"AA-部門"_s,
         {},
         {u"印刷課"_s, u"糊箱課"_s, u"軋型課"_s, u"生管課"_s, u"品管課"_s, u"倉儲部"_s, u"資材部"_s,
          u"總務課"_s}},
        {u"AB-單位"_s,
         u"耗材類"_s,
         {u"pcs"_s, u"kg"_s, u"㎡"_s, u"令"_s, u"張"_s, u"片"_s, u"個"_s, u"卷"_s, u"M"_s, u"吨"_s, u"CM"_s,
          u"桶"_s}},
        {u"AB-單位"_s, u"資材"_s, {u"pcs"_s, u"㎡"_s, u"kg"_s, u"令"_s, u"片"_s, u"個"_s, u"卷"_s, u"桶"_s}},
        {u"AE-機別"_s,
         {},
         {u"水墨三色機"_s, u"水墨五色機"_s, u"平版四色機"_s, u"自動軋盒機"_s, u"全自動糊盒機"_s,
          u"裱紙機"_s}},
        {u"AK-組別"_s, {}, {u"日班"_s, u"夜班"_s, u"支援組"_s}},
        {u"AX-報關類別"_s, {}, {u"保稅"_s, u"非保稅"_s, u"一般貿易"_s}},
        {u"BB-異動類別"_s, u"出庫"_s, {u"領料"_s, u"補料"_s, u"委外領料"_s, u"報廢"_s}},
        {u"BB-異動類別"_s, u"入庫"_s, {u"采購入庫"_s, u"檢驗入庫"_s, u"退貨"_s}},
        {u"BU-請購類別"_s, {}, {u"生產用料"_s, u"安全庫存補充"_s, u"設備維修"_s, u"樣品"_s, u"其他"_s}},
        {u"BV_庫別"_s, {}, {u"原料倉"_s, u"物料倉"_s, u"紙板倉"_s, u"保稅倉"_s}},
        {u"CA-法規要求"_s,
         {},
         {u"1.交貨須符合RoHS及REACH最新要求,並於送貨單註明。"_s, u"2.紙板含水率8%~12%,超出允收範圍得退貨。"_s,
          u"3.請於交期前一日電話確認送貨時段。"_s}},
        {u"CC-原料出庫"_s, {}, {u"領料"_s, u"補料"_s, u"委外"_s}},
        {u"CH-倉別"_s, {}, {u"原料倉"_s, u"物料倉"_s, u"紙板倉"_s, u"保稅倉"_s}},
        {u"CI-包裝方式"_s, {}, {u"箱裝"_s, u"桶裝"_s, u"袋裝"_s, u"卷裝"_s, u"散裝"_s}},
        {u"CL-補紙原因"_s, {}, {u"印刷不良"_s, u"軋型不良"_s, u"紙板翹曲"_s, u"數量不足"_s}},
        {u"CT-物料類別"_s,
         {},
         {u"油墨"_s, u"膠水"_s, u"扁線"_s, u"膠帶"_s, u"打包帶"_s, u"棧板"_s, u"刀模材料"_s, u"包裝膜"_s,
          u"機械零件"_s, u"清潔用品"_s}},
        {u"EB-楞別"_s, {}, {u"A"_s, u"B"_s, u"C"_s, u"E"_s, u"AB"_s, u"BC"_s}},
        {u"EL-壓線種類"_s, {}, {u"內壓"_s, u"外壓"_s, u"平壓"_s, u"無壓線"_s}},
        {u"TD_凸版機台"_s, {}, {u"凸版一號機"_s, u"凸版二號機"_s}}};
    return all;
}

/// How hard a grade of paper is to make; the unit weight of a board is the sum over the letters of its name.
constexpr std::array<std::pair<char16_t, double>, 7> Letters{
    {{u'K', 0.215}, {u'A', 0.18}, {u'B', 0.16}, {u'C', 0.14}, {u'M', 0.112}, {u'T', 0.105}, {u'W', 0.2}}};

void writePhrases(Connection& connection, const Plant& plant) {
    BulkTable rows(connection, u"片語資料"_s,
                   u"代號 類別 內容 備註 分類 合同品名 工序 廠商代號 尺寸大小 難度比"_s);
    const auto plain = [&](const QString& key, const QString& category, const QString& content,
                           const QString& group = {}) {
        rows.add({key, category, content, u"", group, u"", u"", u"", u"", u""});
    };
    for (const Phrases& phrases : plainPhrases()) {
        // Two classes of one category share its keys.
        int number = phrases.group == u"資材" || phrases.group == u"入庫" ? 100 : 0;
        for (const QString& content : phrases.contents)
            plain(code(++number), phrases.category, content, phrases.group);
    }
    int number = 0;
    for (const QString& bin : plant.bins)
        plain(code(++number), u"CS-儲位"_s, bin);
    for (const QString& print : {u"四色輪轉"_s, u"雙色輪轉"_s, u"水墨單色"_s, u"平版四色"_s, u"局部上光"_s})
        rows.add({code(++number), u"BD-印刷內容", print, u"", u"", u"", u"印刷", u"", u"", u""});

    // The last column but two gives the piece that a quickly made paper code takes from the word.
    const auto piece = [&](const QString& category, const QString& content, const QString& group,
                           const QString& text) {
        rows.add({code(++number), category, content, u"", group, u"", u"", u"", text, u""});
    };
    for (const QString& brand : {u"山嵐"_s, u"青禾"_s, u"海穗"_s})
        piece(u"CL-廠牌"_s, brand, u"坑紙"_s, {});
    piece(u"CL-廠牌"_s, u"雪嶺"_s, u"面紙"_s, u"X"_s);
    piece(u"CL-廠牌"_s, u"松濤"_s, u"面紙"_s, u"S"_s);
    piece(u"CL-廠牌"_s, u"晨曦"_s, u"面紙"_s, u"D"_s);
    piece(u"CN-紙張類別"_s, u"平板紙"_s, {}, u"P"_s);
    piece(u"CN-紙張類別"_s, u"卷筒紙"_s, {}, u"R"_s);

    const std::vector<std::pair<QString, QString>> customs{{u"4808100000"_s, u"瓦楞紙板"_s},
                                                           {u"4819100000"_s, u"瓦楞紙箱"_s},
                                                           {u"3215110000"_s, u"黑色印刷油墨"_s},
                                                           {u"3506910090"_s, u"糊盒膠"_s},
                                                           {u"3919100000"_s, u"封箱膠帶"_s}};
    for (const auto& [text, name] : customs)
        rows.add({code(++number), u"AZ-海關編號", text, u"", u"", name, u"", u"", u"", u""});

    number = 0;
    for (const auto& [letter, difficulty] : Letters)
        for (const Vendor& vendor : plant.vendors)
            if (const QString word = materialLetter(vendor, letter); !word.isEmpty())
                rows.add({code(++number), u"EN-材質編碼", QString(QChar(letter)), u"", u"", u"", u"",
                          vendor.code, word, difficulty});
    rows.flush();
}

void writeCurrencies(Connection& connection, const Plant& plant) {
    BulkTable rates(connection, u"匯率檔"_s, u"幣別 匯率 默認幣別"_s);
    BulkTable history(connection, u"匯率修改記錄"_s, u"幣別 匯率 修改日期"_s);
    for (std::size_t i = 0; i < plant.currencies.size(); ++i) {
        const Currency& currency = plant.currencies[i];
        rates.add({currency.name, currency.rate, i == 0 ? u"Y" : u"N"});
        // Rates drift up to today's by a little each month.
        for (int month = 0; month < 17; ++month) {
            const double change = i == 0 ? 0 : 0.002 * ((month * 5 + static_cast<int>(i) * 3) % 7 - 3);
            const double rate = month == 16 ? currency.rate : currency.rate * (1 + change);
            history.add({currency.name, QString::number(rate, 'f', 4).toDouble(),
                         date8(QDate(2023, 9, 1).addMonths(month))});
        }
    }
    rates.flush();
    history.flush();
}

void writeFormulas(Connection& connection) {
    struct Formula {
        QString first, second, base, target, text, kind;
    };
    const std::vector<Formula> formulas{
        {{}, {}, u"pcs"_s, u"㎡"_s, u"長*寬*單價*數量/10000"_s, u"紙板"_s},
        {{}, {}, u"pcs"_s, u"kg"_s, u"長*寬*基重*單價*數量/10000000"_s, u"紙板"_s},
        {u"CM"_s, u"CM"_s, u"pcs"_s, u"㎡"_s, u"長*寬*單價*數量/10000"_s, u"紙板"_s},
        {u"CM"_s, u"CM"_s, u"pcs"_s, u"kg"_s, u"長*寬*基重*單價*數量/10000000"_s, u"紙板"_s},
        {{}, {}, u"kg"_s, u"令"_s, u"長*寬*基重*單價*數量/2000000"_s, u"紙品"_s},
        {{}, {}, u"kg"_s, u"kg"_s, u"單價*數量"_s, u"紙品"_s},
        {{}, {}, u"kg"_s, u"令"_s, u"數量*2000000/(長*寬*基重)"_s, u"單位換算"_s},
        {{}, {}, u"kg"_s, u"kg"_s, u"數量"_s, u"單位換算"_s},
        {{}, {}, u"kg"_s, u"張"_s, u"數量*1000000000/(長*寬*基重)"_s, u"單位換算"_s},
        {{}, {}, u"kg"_s, u"M"_s, u"數量*1000000/(基重*寬)"_s, u"單位換算"_s},
        {{}, {}, u"kg"_s, u"吨"_s, u"數量/1000"_s, u"單位換算"_s}};
    BulkTable rows(connection, u"採購計價公式"_s, u"單位1 單位2 基本單位 計價單位 公式 序 類別"_s);
    QHash<QString, int> numbers;
    for (const Formula& formula : formulas)
        rows.add({formula.first, formula.second, formula.base, formula.target, formula.text,
                  ++numbers[formula.kind], formula.kind});
    rows.flush();
}

void writeCompany(Connection& connection) {
    BulkTable company(connection, u"公司基本資料"_s, u"公司名稱 公司地址 電話 傳真 公式1"_s);
    company.add({u"翎穗紙器工業股份有限公司", u"桃園市示範區料務路100號", u"03-0000100", u"03-0000101",
                 u"實際庫存+在單量-在領量-安全庫存"});
    company.flush();
    BulkTable settings(connection, u"報表設置"_s, u"報表名稱 頁腳 備注 ISO編號"_s);
    settings.add({u"採購單", u"核準:            審單:            採購:            廠商簽名:",
                  u"請於交貨時附送貨單並註明本單號,逾期交貨依合約扣款。", u"QP-07-03"});
    settings.add({u"申購單", u"核準:            審單:            申購:", u"", u"QP-07-01"});
    settings.add({u"領料單", u"核準:            倉管:            領料:", u"", u"QP-08-02"});
    settings.add({u"原料入庫單", u"核準:            復核:            驗收:", u"", u"QP-08-01"});
    settings.add({u"入庫單", u"核準:            復核:            驗收:", u"", u"QP-08-01"});
    settings.add({u"退貨單", u"核準:            復核:            廠商簽收:", u"", u"QP-08-04"});
    settings.flush();
}

} // namespace

void writeVocabulary(Connection& connection, const Plant& plant) {
    writeCompany(connection);
    writePhrases(connection, plant);
    writeCurrencies(connection, plant);
    writeFormulas(connection);
}

} // namespace liaowu::demo
