#include "plant_bench.h"
#include "common/text_values.h"
#include "data/connection_string.h"
#include "data/recordset.h"
#include <QFile>
#include <cstdio>

namespace liaowu {

using namespace Qt::StringLiterals;

void Silent::show(Icon, const QString& title, const QString& text) {
    std::fprintf(stderr, "[%s] %s\n", qPrintable(title), qPrintable(text));
    std::exit(1);
}

int PlantBench::open(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s PLANT.db [ROUNDS]\n", argv[0]);
        return 2;
    }
    if (argc > 2) rounds = std::max(3, std::atoi(argv[2]));
    if (!QFile::copy(QString::fromLocal8Bit(argv[1]), file)) {
        std::fputs("the plant cannot be copied\n", stderr);
        return 1;
    }
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
    session.connectionString = connectionStringFor(file);
    session.userName = u"admin"_s;
    session.salesmanName = u"甲"_s;
    pool.setClock(QDateTime(QDate(2025, 3, 3), QTime(8, 30)));
    std::printf("%-44s %15s %15s\n", "median of rounds", "ours", "limit");
    return 0;
}

OrderSave PlantBench::orderOf(int lines) {
    Connection connection(pool, session.connectionString);
    Recordset items =
        select(connection,
               sql(u"select top {} 物料代號,物料名稱,規格,進料單位,進價,幣別 from 物料資料 where 幣別='台幣' "
                   u"order by 物料代號",
                   lines));
    OrderSave save;
    save.header.類別 = u"物料"_s;
    save.header.採購日期 = u"20250303"_s;
    save.header.廠商代號 = u"V001"_s;
    save.header.廠商簡稱 = u"廠商"_s;
    save.header.幣別 = u"台幣"_s;
    save.header.採購類別 = u"庫存"_s;
    save.header.審單 = u"N"_s;
    save.canSeePrice = save.mayApprove = true;
    for (int i = 0; i < lines; ++i) {
        OrderLine line;
        line.原料代號 = items.text(0);
        line.廠商名稱 = line.原料名稱 = items.text(1);
        line.規格 = items.text(2);
        line.單位 = items.text(3);
        line.單價 = line.原單價 = items.text(4);
        line.數量 = line.未交數 = QString::number(10 + i);
        line.小計 = line.原小計 = numberText(val(line.單價) * val(line.數量));
        line.交貨日期 = u"20250320"_s;
        line.寬剖 = u"1"_s;
        line.送清 = u"N"_s;
        save.lines.push_back(line);
        items.MoveNext();
        if (items.EOF_()) items.MoveFirst();
    }
    return save;
}

} // namespace liaowu
