// Which layer a source belongs to is told by its name; what it may mention follows from that.
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Ban {
    const char* what;
    bool (*holdsFor)(const QString& name);
    QRegularExpression pattern; ///< against one line
};

bool isScreen(const QString& name) {
    static const QRegularExpression ending(u"_(screen|page|window|dialog|view|grid)\\.(cpp|h)$"_s);
    return ending.match(name).hasMatch();
}
/// The programs beside the client and the painters of paper show things by design; a precompiled header shows nothing.
bool isRule(const QString& name) {
    static const QRegularExpression other(u"_(paper|pch)\\.(cpp|h)$"_s);
    return !isScreen(name) && !other.match(name).hasMatch() && !name.startsWith(u"launchpad/") &&
           !name.startsWith(u"robot/") && !name.endsWith(u"main.cpp");
}

const std::vector<Ban>& bans() {
    static const std::vector<Ban> all{
        {"a widget in a rule", isRule,
         QRegularExpression(
             u"^\\s*#include [<\"](Qt(Widgets|Gui|PrintSupport)\\b|Q(Widget|Application|GuiApplication|"
             "Dialog|\\w+Dialog|MessageBox|MainWindow|Label|\\w+Button|CheckBox|ComboBox|\\w*SpinBox|"
             "LineEdit|\\w*TextEdit|(?!\\w*(String|ByteArray)View)\\w+View|\\w+Widget|"
             "\\w+ItemDelegate|Scroll\\w+|Menu\\w*|Action\\w*|Tool\\w+|\\w+Bar|\\w+Layout|Frame|"
             "GroupBox|Splitter|Style\\w*|Painter\\w*|Pixmap|Image|Icon|Color|Font\\w*|Palette|"
             "Clipboard|Screen|Cursor|\\w+Event|Print\\w*|\\w*Validator|Shortcut|Window)>|"
             "[\\w/]+_(screen|page|window|dialog|view|grid)\\.h\")"_s)},
        {"SQL in a screen", isScreen,
         QRegularExpression(
             u"(?i)\"\\s*(select|insert\\s+into|update|delete\\s+from|create\\s+table)\\s|\\b(sql|"
             "readyMadeSql)\\("_s)},
        {"a message box or file dialog that does not go through the desktop",
         [](const QString& name) {
             return !name.endsWith(u"frame/message_box_view.cpp") && !name.startsWith(u"launchpad/");
         },
         QRegularExpression(u"\\bQ(MessageBox|FileDialog|InputDialog|ErrorMessage)\\b"_s)},
        {"mutable static state", [](const QString&) { return true; },
         QRegularExpression(
             u"^\\s*(inline\\s+)?(static|thread_local)\\s+(?!const\\b|constexpr\\b|"
             "constinit const\\b)[^()]*?\\w\\s*(=|;|\\{|\\[)|^(?!using|namespace|struct|class|enum|"
             "template|typedef|return|extern|friend|public|private|protected|union|Q_|"
             "go\\b)(?!.*\\b(const|"
             "constexpr)\\b)[A-Za-z_][\\w:<>,*& ]*\\s[*&]?\\w+(\\[\\w*\\])?\\s*(=[^=(]*;|;|"
             "\\{[^(]*\\};)$|\\bQ_GLOBAL_STATIC\\b"_s)},
        {"the machine's clock", [](const QString& name) { return !name.startsWith(u"data/"); },
         QRegularExpression(u"\\bcurrent(DateTime|DateTimeUtc|Date|Time|SecsSinceEpoch|MSecsSinceEpoch)\\(|"
                            "\\bsystem_clock\\b|\\btime\\((nullptr|NULL|0)\\)|\\blocaltime"_s)}};
    return all;
}

QStringList faultsOf(const QString& name, const QString& text) {
    QStringList faults;
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        ++number;
        if (line.trimmed().startsWith(u"//")) continue;
        for (const Ban& ban : bans())
            if (ban.holdsFor(name) && ban.pattern.match(line).hasMatch())
                faults << u"%1:%2: %3: %4"_s.arg(name).arg(number).arg(QString::fromUtf8(ban.what),
                                                                       line.trimmed());
    }
    return faults;
}

} // namespace

TEST(Layers, SourcesMentionOnlyWhatTheirLayerMay) {
    const QString root = QStringLiteral(LIAOWU_SOURCE_DIR) + u"/src/"_s;
    int rules = 0, screens = 0;
    QDirIterator files(root, {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString name = file.fileName().mid(root.size());
        rules += isRule(name);
        screens += isScreen(name);
        for (const QString& fault : faultsOf(name, QString::fromUtf8(file.readAll())))
            ADD_FAILURE() << fault;
    }
    std::printf("scanned: %d rules, %d screens\n", rules, screens);
    EXPECT_GT(rules, 100);
    EXPECT_GT(screens, 30);
}

TEST(Layers, TheScanSeesFaults) {
    for (const auto& [name, line] :
         casesOf<2>({u"common/a.cpp|#include <QWidget>", u"common/a.h|#include <QtGui/QColor>",
                     u"frame/a.h|#include \"frame/line_grid.h\"", u"data/a.h|#include <QTableView>",
                     u"purchasing/a_screen.cpp|    x = u\"Select 採購單號 from 採購資料\"_s;",
                     u"purchasing/a_dialog.cpp|    x = sql(u\" and 1=1\");",
                     u"purchasing/a_screen.cpp|    QMessageBox::warning(this, a, b);",
                     u"common/a.cpp|    const auto f = QFileDialog::getSaveFileName();",
                     u"common/a.cpp|    static QHash<QString, int> cache;",
                     u"common/a.cpp|    static std::vector<QString> seen{u\"a\"};",
                     u"common/a.cpp|thread_local int depth = 0;", u"common/a.cpp|QString lastNumber;",
                     u"common/a.cpp|int calls = 0;", u"common/a.h|inline bool verbose = false;",
                     u"frame/a_view.cpp|    const auto now = QDateTime::currentDateTime();"}))
        EXPECT_FALSE(faultsOf(name, line).isEmpty()) << name << ": " << line;
    for (const auto& [name, line] : casesOf<2>(
             {u"frame/a_grid.h|#include \"frame/line_grid.h\"", u"data/a.h|#include <QStringView>",
              u"reports/a_paper.cpp|#include <QPainter>", u"purchasing/a.cpp|    x = sql(u\"select 1\");",
              u"purchasing/a_screen.cpp|    select(1, u\"代號\"_s);",
              u"frame/message_box_view.cpp|    QMessageBox box;",
              u"common/a.cpp|// QMessageBox is not used here.",
              u"common/a.cpp|    static const QHash<QString, int> table{",
              u"common/a.cpp|    static constexpr int limit = 3;",
              u"common/a.h|    static int Precedence(const QString& token);",
              u"common/a.h|inline constexpr int Failed = 9;", u"common/a.h|    QString member;",
              u"common/a.cpp|using Row = std::vector<QString>;",
              u"common/a.cpp|QString textOf(const Row& row);",
              u"common/clock.cpp|    const QDate today = session.pool.clock().date();",
              u"data/a.cpp|    return QDateTime::currentDateTime();"}))
        EXPECT_EQ(faultsOf(name, line), QStringList());
}
