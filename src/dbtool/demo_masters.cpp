#include "dbtool/demo_plant.h"
#include <QStringList>
#include <cmath>

namespace liaowu::demo {

using namespace Qt::StringLiterals;

namespace {

/// Firms that do not exist: two syllables that no register would put side by side.
QString firm(int number) {
    static const QString first = u"翎岱沐棠玥曜澄霖葦樺筠硯朔祈"_s;
    static const QString second = u"穗禾楓璟瀚蓁昀峻珩嵐"_s;
    return QString(first[number % first.size()]) + second[(number * 7 + number / 14) % second.size()];
}

void addPeople(Plant& plant) {
    plant.people = {
        {u"S01"_s, u"林佩珊"_s, u"資材部"_s, {}},           {u"S02"_s, u"陳柏宇"_s, u"資材部"_s, {}},
        {u"S03"_s, u"黃雅筑"_s, u"資材部"_s, {}},           {u"S04"_s, u"張家豪"_s, u"資材部"_s, {}},
        {u"S05"_s, u"吳國棟"_s, u"管理部"_s, {}},           {u"S06"_s, u"周美惠"_s, u"倉儲部"_s, {}},
        {u"S07"_s, u"鄭文龍"_s, u"倉儲部"_s, {}},           {u"S08"_s, u"何淑芬"_s, u"倉儲部"_s, {}},
        {u"S09"_s, u"許志偉"_s, u"印刷課"_s, {}},           {u"S10"_s, u"蔡依玲"_s, u"印刷課"_s, {}},
        {u"S11"_s, u"謝明哲"_s, u"糊箱課"_s, {}},           {u"S12"_s, u"羅秀蘭"_s, u"品管課"_s, {}},
        {u"S13"_s, u"潘俊宏"_s, u"生管課"_s, {}},           {u"S14"_s, u"彭素貞"_s, u"業務部"_s, {}},
        {u"S15"_s, u"施建成"_s, u"倉儲部"_s, u"20240531"_s}};
    plant.currencies = {{u"台幣"_s, 1}, {u"美金"_s, 32.5}, {u"人民幣"_s, 4.48}, {u"港幣"_s, 4.17}};
    plant.bins = {u"A區01"_s, u"A區02"_s, u"A區03"_s, u"B區01"_s, u"B區02"_s,
                  u"B區03"_s, u"C區01"_s, u"C區02"_s, u"待驗區"_s};
    plant.departments = {u"印刷課"_s, u"糊箱課"_s, u"軋型課"_s, u"生管課"_s,
                         u"品管課"_s, u"倉儲部"_s, u"總務課"_s};
    plant.machines = {u"水墨三色機"_s, u"水墨五色機"_s,   u"平版四色機"_s,
                      u"自動軋盒機"_s, u"全自動糊盒機"_s, u"裱紙機"_s};
    plant.plateMachines = {u"凸版一號機"_s, u"凸版二號機"_s};
}

void addVendors(Plant& plant, Dice& dice) {
    struct Kind {
        Family family;
        int count;
        QString kind, suffix;
        QStringList trades;
    };
    const std::vector<Kind> kinds{
        {Family::Board, 12, u"紙板商"_s, u"股份有限公司"_s, {u"紙板"_s, u"紙器"_s, u"紙業"_s}},
        {Family::Material,
         18,
         u"物料商"_s,
         u"有限公司"_s,
         {u"實業"_s, u"企業"_s, u"材料"_s, u"興業"_s, u"工業"_s, u"貿易"_s}},
        {Family::Paper, 6, u"紙品商"_s, u"股份有限公司"_s, {u"洋紙"_s, u"紙業"_s}},
        {Family::Plate, 4, u"凸版商"_s, u"有限公司"_s, {u"製版"_s, u"版材"_s}}};
    const std::vector<QString> surnames{u"王"_s, u"李"_s, u"劉"_s, u"曾"_s,
                                        u"賴"_s, u"邱"_s, u"江"_s, u"葉"_s};
    const std::vector<QString> closings{u"25日結帳"_s, u"月底結帳"_s};
    const std::vector<QString> notes{
        u"交期常延誤二至三日,下單請提前。"_s, u"每批附出廠檢驗報告,無報告者退回。"_s,
        u"週六不送貨,急件先電話確認。\n棧板需回收。"_s, u"潮濕季節含水率偏高,入庫加驗。"_s};
    for (const Kind& kind : kinds) {
        for (int i = 0; i < kind.count; ++i) {
            const int number = sizeOf(plant.vendors) + 1;
            Vendor vendor;
            vendor.family = kind.family;
            vendor.code = u"V"_s + padded(number, 3);
            vendor.shortName = firm(number) + kind.trades[i % kind.trades.size()];
            vendor.fullName = vendor.shortName + kind.suffix;
            vendor.kind = kind.kind;
            if (kind.family != Family::Board && i % 5 == 4) vendor.currency = 1 + dice.below(3);
            vendor.tax = vendor.currency == 0 ? u"5"_s : u"0"_s;
            // No exchange begins with two zeros: nobody is called by mistake.
            vendor.phone = u"0%1-00%2"_s.arg(dice.between(2, 7)).arg(padded(dice.below(100000), 5));
            vendor.fax = vendor.phone.chopped(1) + QString::number(dice.below(10));
            vendor.contact = dice.pick(surnames) + (dice.chance(0.5) ? u"先生"_s : u"小姐"_s);
            vendor.payment = dice.chance(0.1) ? u"現金"_s : u"月結"_s;
            vendor.days = vendor.payment == u"現金" ? u"0"_s : QString::number(30 * dice.between(1, 3));
            vendor.closing = dice.pick(closings);
            if (i % 3 == 0) vendor.notes = dice.pick(notes);
            vendor.buyer = kind.family == Family::Material ? 2 + i % 2 : i % 2;
            vendor.factor = 0.96 + 0.01 * dice.below(10);
            // One that is no longer bought from, in the largest group.
            vendor.scrapped = kind.family == Family::Material && i == kind.count - 1;
            plant.vendors.push_back(vendor);
        }
    }
}

/// A vendor of the family that is still bought from.
int someVendor(const Plant& plant, Dice& dice, Family family) {
    for (;;) {
        const int vendor = dice.below(sizeOf(plant.vendors));
        if (plant.vendor(vendor).family == family && !plant.vendor(vendor).scrapped) return vendor;
    }
}

void addItem(Plant& plant, Dice& dice, Item item, int vendor) {
    const int index = sizeOf(plant.items);
    item.vendor = vendor;
    item.currency = plant.vendor(vendor).currency;
    const double rate = plant.currencies[static_cast<std::size_t>(item.currency)].rate;
    item.price = std::round(item.usualPrice / rate * 100) / 100;
    const QDate created = QDate(2021, 3, 1).addDays(index / 2);
    item.created = created.toString(u"yyyy-MM-dd"_s) +
                   u" 09:%1:%2"_s.arg(padded(index % 60, 2), padded(index * 7 % 60, 2));
    item.moved = OpeningClosed;
    if (dice.chance(0.9)) item.opening = item.lot * dice.between(1, 40);
    item.stock = item.opening;
    plant.vendor(vendor).items.push_back(index);
    Plant::Range& range = plant.ranges[item.family];
    if (range.count++ == 0) range.first = index;
    plant.items.push_back(std::move(item));
}

void addBoards(Plant& plant, Dice& dice) {
    const std::vector<QString> grades{u"KMK"_s, u"KAK"_s, u"AMA"_s, u"BMB"_s, u"CMC"_s,
                                      u"WMK"_s, u"TMT"_s, u"KMA"_s, u"KWK"_s, u"BAB"_s};
    const std::vector<QString> flutes{u"B"_s, u"C"_s, u"E"_s, u"AB"_s, u"BC"_s, u"A"_s};
    const std::vector<QString> brands{u"山嵐"_s, u"青禾"_s, u"海穗"_s};
    int group = 0;
    for (std::size_t g = 0; g < grades.size(); ++g) {
        for (std::size_t f = 0; f < flutes.size(); ++f, ++group) {
            const int weight = 300 + 50 * dice.below(9);
            const int vendor = someVendor(plant, dice, Family::Board);
            // Most board is bought by area, some grades by weight.
            const bool byWeight = group % 6 == 5;
            for (int size = 0; size < 5; ++size) {
                Item item;
                item.family = Family::Board;
                item.group = group;
                item.name = grades[g] + QString::number(weight);
                item.code = grades[g] + flutes[f] + u'-' + padded(size + 1, 2);
                item.name += flutes[f];
                item.flute = flutes[f];
                item.brand = brands[g % brands.size()];
                item.weight = weight;
                item.first = 60 + 10 * dice.below(17);
                item.second = 50 + 5 * dice.below(21);
                const QString unit = size == 4 && group % 10 == 0 ? u"CM"_s : QString();
                item.spec = QString::number(item.first) + unit + u'*' + QString::number(item.second) + unit;
                item.unit = u"pcs"_s;
                item.buyUnit = byWeight ? u"kg"_s : u"㎡"_s;
                item.usualPrice = byWeight ? 18 + static_cast<double>(g % 5)
                                           : 6 + 0.02 * weight + 0.1 * static_cast<double>(f);
                item.lot = 50;
                addItem(plant, dice, item, vendor);
            }
        }
    }
}

void addMaterials(Plant& plant, Dice& dice) {
    struct Class {
        QString prefix, kind, unit;
        double low, high, lot;
        QStringList names, specs;
    };
    const std::vector<Class> classes{{u"IN"_s,
                                      u"油墨"_s,
                                      u"kg"_s,
                                      120,
                                      380,
                                      5,
                                      {u"水性油墨紅"_s, u"水性油墨藍"_s, u"水性油墨黑"_s, u"水性油墨綠"_s,
                                       u"平版油墨黃"_s, u"平版油墨洋紅"_s, u"特白油墨"_s},
                                      {u"20kg桶"_s, u"5kg桶"_s, u"1kg罐"_s}},
                                     {u"GL"_s,
                                      u"膠水"_s,
                                      u"kg"_s,
                                      25,
                                      90,
                                      25,
                                      {u"糊盒膠"_s, u"裱紙膠"_s, u"白膠"_s, u"熱熔膠條"_s},
                                      {u"25kg桶"_s, u"50kg桶"_s, u"20kg袋"_s}},
                                     {u"WR"_s,
                                      u"扁線"_s,
                                      u"卷"_s,
                                      260,
                                      420,
                                      4,
                                      {u"釘箱扁線"_s, u"鍍銅扁線"_s},
                                      {u"2.0*0.6"_s, u"2.2*0.7"_s, u"1.8*0.6"_s}},
                                     {u"TP"_s,
                                      u"膠帶"_s,
                                      u"卷"_s,
                                      12,
                                      60,
                                      36,
                                      {u"封箱膠帶"_s, u"雙面膠帶"_s, u"美紋膠帶"_s, u"水膠帶"_s},
                                      {u"48mm*90M"_s, u"12mm*50M"_s, u"24mm*50M"_s}},
                                     {u"ST"_s,
                                      u"打包帶"_s,
                                      u"卷"_s,
                                      240,
                                      520,
                                      5,
                                      {u"PP打包帶"_s, u"PET打包帶"_s},
                                      {u"12mm"_s, u"15.5mm"_s, u"9mm"_s}},
                                     {u"PL"_s,
                                      u"棧板"_s,
                                      u"個"_s,
                                      180,
                                      450,
                                      10,
                                      {u"木棧板"_s, u"塑膠棧板"_s, u"紙棧板"_s},
                                      {u"110*110"_s, u"120*100"_s, u"120*80"_s}},
                                     {u"DC"_s,
                                      u"刀模材料"_s,
                                      u"片"_s,
                                      35,
                                      160,
                                      10,
                                      {u"刀模板"_s, u"軋型刀片"_s, u"壓線片"_s, u"退料海棉"_s},
                                      {u"18mm"_s, u"23.8mm"_s, u"7*7mm"_s}},
                                     {u"FM"_s,
                                      u"包裝膜"_s,
                                      u"kg"_s,
                                      48,
                                      95,
                                      20,
                                      {u"PE收縮膜"_s, u"棧板纏繞膜"_s, u"PE袋"_s},
                                      {u"50cm"_s, u"60cm"_s, u"120cm"_s}},
                                     {u"MC"_s,
                                      u"機械零件"_s,
                                      u"個"_s,
                                      30,
                                      900,
                                      2,
                                      {u"軸承"_s, u"三角皮帶"_s, u"氣壓接頭"_s, u"感應器"_s, u"膠輥"_s},
                                      {u"6204"_s, u"A42"_s, u"10mm"_s, u"M12"_s}},
                                     {u"CL"_s,
                                      u"清潔用品"_s,
                                      u"個"_s,
                                      15,
                                      120,
                                      12,
                                      {u"擦拭布"_s, u"洗車水"_s, u"手套"_s, u"潤版液"_s},
                                      {u"大"_s, u"中"_s, u"小"_s}}};
    for (int i = 0; i < 600; ++i) {
        const Class& kind = classes[static_cast<std::size_t>(i % 10)];
        const int number = i / 10 + 1;
        Item item;
        item.family = Family::Material;
        item.code = kind.prefix + padded(number, 4);
        item.kind = kind.kind;
        item.name = kind.names[number % kind.names.size()] + u'-' + QString(QChar(u'A' + number % 26));
        item.spec = kind.specs[number % kind.specs.size()];
        item.unit = item.buyUnit = kind.unit;
        item.usualPrice = std::round((kind.low + (kind.high - kind.low) * dice.unit()) * 10) / 10;
        item.lot = kind.lot;
        // Bonded materials have codes of the customs' own and must carry a weight.
        if (i % 60 == 59) {
            item.code = u"6007"_s + padded(number, 3);
            item.weight = 0.25 * dice.between(1, 20);
        }
        addItem(plant, dice, item, someVendor(plant, dice, Family::Material));
    }
}

void addPapers(Plant& plant, Dice& dice) {
    struct Grade {
        QString letter, name;
        std::vector<int> weights;
    };
    const std::vector<Grade> grades{{u"W"_s, u"白板紙"_s, {230, 250, 270, 300, 350}},
                                    {u"C"_s, u"銅版紙"_s, {105, 128, 157, 200, 250}},
                                    {u"K"_s, u"牛皮紙"_s, {80, 100, 120, 150, 175}},
                                    {u"M"_s, u"模造紙"_s, {60, 70, 80, 100, 120}},
                                    {u"G"_s, u"灰銅紙"_s, {230, 250, 300, 350, 400}}};
    const std::vector<std::pair<int, int>> sheets{{787, 1092}, {889, 1194}, {640, 900},
                                                  {720, 1020}, {770, 1040}, {650, 950}};
    const std::vector<std::pair<int, int>> rolls{{6000, 787}, {6000, 889}};
    const std::vector<QString> brands{u"雪嶺"_s, u"松濤"_s, u"晨曦"_s};
    for (std::size_t g = 0; g < grades.size(); ++g) {
        for (const int weight : grades[g].weights) {
            for (std::size_t s = 0; s < sheets.size() + rolls.size(); ++s) {
                const bool roll = s >= sheets.size();
                const auto [first, second] = roll ? rolls[s - sheets.size()] : sheets[s];
                Item item;
                item.family = Family::Paper;
                item.code = grades[g].letter + padded(weight, 3) + (roll ? u"R"_s : u"S"_s) +
                            padded(static_cast<int>(s) + 1, 2);
                item.name = QString::number(weight) + u'G' + grades[g].name;
                item.kind = roll ? u"卷筒紙"_s : u"平板紙"_s;
                item.first = first;
                item.second = second;
                item.spec = u"%1*%2"_s.arg(first).arg(second);
                item.weight = weight;
                item.unit = u"kg"_s;
                item.buyUnit = roll ? u"kg"_s : u"令"_s;
                item.brand = brands[g % brands.size()];
                item.usualPrice = 24 + 4 * static_cast<double>(g) + 0.5 * dice.below(6);
                item.lot = roll ? 500 : 10;
                addItem(plant, dice, item, someVendor(plant, dice, Family::Paper));
            }
        }
    }
}

void addPlates(Plant& plant, Dice& dice) {
    const std::vector<QString> names{u"感光樹脂版"_s, u"PS版"_s, u"CTP版"_s, u"雙面膠版墊"_s};
    const std::vector<std::pair<int, int>> sizes{
        {1030, 800}, {745, 605}, {920, 1200}, {610, 762}, {1270, 2032}};
    for (int i = 0; i < 40; ++i) {
        const auto [first, second] = sizes[static_cast<std::size_t>(i % 5)];
        Item item;
        item.family = Family::Plate;
        item.code = u"P"_s + padded(i + 1, 3);
        item.name = names[static_cast<std::size_t>(i / 10)] + (i % 10 < 5 ? u"-厚"_s : u"-薄"_s);
        item.first = first;
        item.second = second;
        item.spec = u"%1*%2"_s.arg(first).arg(second);
        item.unit = item.buyUnit = u"片"_s;
        item.usualPrice = 90 + 10 * dice.below(40);
        item.lot = 10;
        addItem(plant, dice, item, someVendor(plant, dice, Family::Plate));
    }
}

void addCustomers(Plant& plant) {
    const QStringList trades{u"電子"_s, u"食品"_s, u"家電"_s, u"玩具"_s, u"五金"_s, u"生技"_s};
    for (int i = 1; i <= 30; ++i)
        plant.customers.push_back({u"C"_s + padded(i, 3), firm(i * 5 + 3) + trades[i % trades.size()]});
}

} // namespace

Plant plantWithMasters(Dice& dice) {
    Plant plant;
    addPeople(plant);
    addVendors(plant, dice);
    addBoards(plant, dice);
    addMaterials(plant, dice);
    addPapers(plant, dice);
    addPlates(plant, dice);
    addCustomers(plant);
    return plant;
}

} // namespace liaowu::demo
