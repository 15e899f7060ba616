#include "data/test_database.h"
#include "dbtool/tool.h"

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

struct Outcome {
    ExitCode code;
    QString out, err;
};

Outcome run(const QStringList& arguments) {
    Outcome result;
    QTextStream out(&result.out), err(&result.err);
    result.code = runTool(arguments, out, err);
    return result;
}

} // namespace

TEST(Tool, WrongArgumentsAreExplained) {
    QTemporaryDir folder;
    const QString file = folder.filePath(u"plant.db"_s);
    for (const auto& [line, complaint] :
         casesOf<2>({u"|請指定命令", u"drop %1|不認得的命令「drop」", u"create|請指定資料庫",
                     u"create |請指定資料庫", u"create %1 more|多餘的參數「more」",
                     u"check --fast|不認得的選項「--fast」", u"create %1 --scale 2|只有 demo",
                     u"demo %1 --scale|--scale 之後", u"demo %1 --scale 0|--scale 之後",
                     u"demo %1 --scale 151|--scale 之後", u"demo %1 --scale many|--scale 之後",
                     u"check Provider=Unheard|「Provider」"})) {
        const Outcome result =
            run(line.isEmpty() ? QStringList() : QString(line).replace(u"%1"_s, file).split(u' '));
        EXPECT_EQ(result.code, Misused) << line;
        EXPECT_TRUE(result.err.contains(complaint)) << result.err;
        EXPECT_TRUE(result.err.contains(u"用法"_s));
        EXPECT_TRUE(result.out.isEmpty());
    }
    EXPECT_FALSE(QFile::exists(file));
}

TEST(Tool, HelpIsNoFault) {
    const Outcome result = run({u"--help"_s});
    EXPECT_EQ(result.code, Done);
    for (const QString& user : {u"admin"_s, u"採購乙"_s, u"訪客"_s})
        EXPECT_TRUE(result.out.contains(user));
}

TEST(Tool, CreatesOnceAndSaysSo) {
    QTemporaryDir folder;
    const QString file = folder.filePath(u"plant.db"_s);
    EXPECT_TRUE(run({u"create"_s, file}).out.contains(u"已建立資料庫"_s));
    const Outcome again = run({u"create"_s, u"Provider=SQLite;Data Source="_s + file});
    EXPECT_EQ(again.code, Done);
    EXPECT_TRUE(again.out.contains(u"已齊備"_s));
    EXPECT_TRUE(run({u"upgrade"_s, file}).out.contains(u"不需升級"_s));
    EXPECT_EQ(run({u"check"_s, file}).code, Done);
}

TEST(Tool, MissingAndForeignFilesFail) {
    QTemporaryDir folder;
    const QString missing = folder.filePath(u"none.db"_s), text = folder.filePath(u"letter.txt"_s);
    QFile letter(text);
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray(2000, 'x'));
    letter.close();
    const QString nowhere = folder.filePath(u"no/such/folder/plant.db"_s);
    for (const QStringList& arguments : {QStringList{u"check"_s, missing},
                                         {u"upgrade"_s, missing},
                                         {u"check"_s, text},
                                         {u"create"_s, text},
                                         {u"create"_s, nowhere},
                                         {u"demo"_s, nowhere}}) {
        const Outcome result = run(arguments);
        EXPECT_EQ(result.code, Failed) << arguments.join(u' ');
        EXPECT_FALSE(result.err.trimmed().isEmpty());
    }
    EXPECT_FALSE(QFile::exists(missing));
    EXPECT_EQ(letter.size(), 2000);
}

TEST(Tool, CheckPrintsEveryDifferenceAndCountsThem) {
    TestDatabase plant;
    ASSERT_EQ(run({u"create"_s, plant.file}).code, Done);
    plant.run({u"insert into 物料資料 (物料代號, 庫存) values ('IN1', '5')",
               u"insert into 浪紙資料 (浪紙代號, 庫存) values ('K1', '-2')"});
    const Outcome result = run({u"check"_s, plant.file});
    EXPECT_EQ(result.code, Failed);
    EXPECT_TRUE(result.out.contains(u"物料資料 IN1 庫存:資料庫為 5,依單據應為 0"_s)) << result.out;
    EXPECT_TRUE(result.out.contains(u"浪紙資料 K1 庫存:資料庫為 -2"_s));
    EXPECT_TRUE(result.out.contains(u"差異 2 項"_s));
}

TEST(Tool, DemoNeverMixesWithAPlantInUse) {
    TestDatabase plant;
    ASSERT_EQ(run({u"create"_s, plant.file}).code, Done);
    plant.run({u"insert into 物料資料 (物料代號) values ('IN1')"});
    const Outcome result = run({u"demo"_s, plant.file});
    EXPECT_EQ(result.code, Failed);
    EXPECT_TRUE(result.err.contains(u"物料資料"_s));
    EXPECT_EQ(plant.value(u"select count(*) from 片語資料"), u"0");
}
