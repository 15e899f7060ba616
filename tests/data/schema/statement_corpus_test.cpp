#include "data/schema/plant_database.h"
#include "dbtool/demo.h"
#include <QHash>

using namespace liaowu;
using namespace Qt::StringLiterals;

namespace {

struct Statement {
    QString name, text;
};

/// Blocks of "## name" and a statement, parted by an empty line.
std::vector<Statement> corpus() {
    QFile file(QStringLiteral(LIAOWU_SOURCE_DIR "/tests/data/schema/statements.txt"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    std::vector<Statement> statements;
    for (const QString& block : QString::fromUtf8(file.readAll()).split(u"\n\n"_s, Qt::SkipEmptyParts)) {
        const qsizetype end = block.indexOf(u'\n');
        statements.push_back({block.left(end).mid(3), block.mid(end + 1).trimmed()});
    }
    return statements;
}

/// Statements that name what was settled otherwise, and what a database answers.
const QHash<QString, int>& impossible() {
    static const QHash<QString, int> all{
        // The column is 材質名稱; the other spelling was a slip.
        {u"net weight of one material"_s, DatabaseError::InvalidColumn},
        // One table keeps the settings: they are written to where they are read from.
        {u"net weight rows for writing"_s, DatabaseError::InvalidObject}};
    return all;
}

bool reads(const Statement& statement) {
    return statement.text.startsWith(u"select", Qt::CaseInsensitive);
}

void run(Connection& connection, const Statement& statement) {
    const SqlText text = readyMadeSql(statement.text);
    reads(statement) ? void(select(connection, text)) : void(connection.Execute(text));
}

} // namespace

TEST(StatementCorpus, EveryStatementRunsOnTheSchema) {
    PlantDatabase plant;
    Connection connection(plant.pool, plant.target);
    int refused = 0;
    const std::vector<Statement> statements = corpus();
    for (const Statement& statement : statements) {
        QString text;
        const int number = errorOf([&] { run(connection, statement); }, &text);
        EXPECT_EQ(number, impossible().value(statement.name))
            << qPrintable(statement.name) << ": " << qPrintable(text) << "\n  " << qPrintable(statement.text);
        if (number != 0) ++refused;
    }
    EXPECT_GT(statements.size(), 500u);
    EXPECT_EQ(refused, impossible().size());
    std::cout << "statements of the screens: " << statements.size()
              << ", refused as they must be: " << refused << "\n";
}

// Casts and dates fail on values, not on preparation: the reading statements also run over a plant at work.
TEST(StatementCorpus, ReadingStatementsRunOnAPlantAtWork) {
    TestDatabase plant;
    createDemo(plant.pool, plant.target, 0.05);
    Connection connection(plant.pool, plant.target);
    for (const Statement& statement : corpus()) {
        if (!reads(statement) || impossible().contains(statement.name)) continue;
        QString text;
        EXPECT_EQ(errorOf([&] { run(connection, statement); }, &text), 0) << statement.name << ": " << text;
    }
}
