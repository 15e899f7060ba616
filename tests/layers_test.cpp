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
    int rules = 0;
    int screens = 0;
    QDirIterator files(root, {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString name = file.fileName().mid(root.size());
        rules += isRule(name);
        screens += isScreen(name);
        for (const QString& fault : faultsOf(name, QString::fromUtf8(file.readAll())))
            ADD_FAILURE() << fault.toStdString();
    }
    std::printf("scanned: %d rules, %d screens\n", rules, screens);
    EXPECT_GT(rules, 100);
    EXPECT_GT(screens, 30);
}

TEST(Layers, TheScanSeesFaults) {
    struct Case {
        QString name, line;
        bool fault;
    };
    const Case cases[] = {
        {u"common/a.cpp"_s, u"#include <QWidget>"_s, true},
        {u"common/a.h"_s, u"#include <QtGui/QColor>"_s, true},
        {u"frame/a.h"_s, u"#include \"frame/line_grid.h\""_s, true},
        {u"frame/a_grid.h"_s, u"#include \"frame/line_grid.h\""_s, false},
        {u"data/a.h"_s, u"#include <QStringView>"_s, false},
        {u"data/a.h"_s, u"#include <QTableView>"_s, true},
        {u"reports/a_paper.cpp"_s, u"#include <QPainter>"_s, false},
        {u"purchasing/a_screen.cpp"_s, u"    x = u\"Select 採購單號 from 採購資料\"_s;"_s, true},
        {u"purchasing/a_dialog.cpp"_s, u"    x = sql(u\" and 1=1\");"_s, true},
        {u"purchasing/a.cpp"_s, u"    x = sql(u\"select 1\");"_s, false},
        {u"purchasing/a_screen.cpp"_s, u"    select(1, u\"代號\"_s);"_s, false},
        {u"purchasing/a_screen.cpp"_s, u"    QMessageBox::warning(this, a, b);"_s, true},
        {u"common/a.cpp"_s, u"    const auto f = QFileDialog::getSaveFileName();"_s, true},
        {u"frame/message_box_view.cpp"_s, u"    QMessageBox box;"_s, false},
        {u"common/a.cpp"_s, u"// QMessageBox is not used here."_s, false},
        {u"common/a.cpp"_s, u"    static QHash<QString, int> cache;"_s, true},
        {u"common/a.cpp"_s, u"    static std::vector<QString> seen{u\"a\"};"_s, true},
        {u"common/a.cpp"_s, u"    static const QHash<QString, int> table{"_s, false},
        {u"common/a.cpp"_s, u"    static constexpr int limit = 3;"_s, false},
        {u"common/a.h"_s, u"    static int Precedence(const QString& token);"_s, false},
        {u"common/a.cpp"_s, u"thread_local int depth = 0;"_s, true},
        {u"common/a.cpp"_s, u"QString lastNumber;"_s, true},
        {u"common/a.cpp"_s, u"int calls = 0;"_s, true},
        {u"common/a.h"_s, u"inline bool verbose = false;"_s, true},
        {u"common/a.h"_s, u"inline constexpr int Failed = 9;"_s, false},
        {u"common/a.h"_s, u"    QString member;"_s, false},
        {u"common/a.cpp"_s, u"using Row = std::vector<QString>;"_s, false},
        {u"common/a.cpp"_s, u"QString textOf(const Row& row);"_s, false},
        {u"frame/a_view.cpp"_s, u"    const auto now = QDateTime::currentDateTime();"_s, true},
        {u"common/clock.cpp"_s, u"    const QDate today = session.pool.clock().date();"_s, false},
        {u"data/a.cpp"_s, u"    return QDateTime::currentDateTime();"_s, false}};
    for (const Case& c : cases)
        EXPECT_EQ(!faultsOf(c.name, c.line).isEmpty(), c.fault)
            << c.name.toStdString() << ": " << c.line.toStdString();
}
