#pragma once
#include <QString>
#include <vector>

namespace liaowu {

/// Modes of a screen; the words are the system's own.
inline const QString ModeAdd = QStringLiteral("新增");
inline const QString ModeEdit = QStringLiteral("修改");
inline const QString ModeSearch = QStringLiteral("查詢");
inline const QString ModePrint = QStringLiteral("列印");
inline const QString ModeBatch = QStringLiteral("批審");

/// In which modes a toolbar key is on.
enum ModeBit : unsigned { InAdd = 1, InEdit = 2, InSearch = 4, InPrint = 8, InBatch = 16, Always = 31 };

/// A toolbar key.
struct Tool {
    QString key;      ///< command, such as "save"; "|" is a gap
    QString caption;  ///< word below the icon
    QString shortcut; ///< shown behind the word
    QString icon;     ///< name of a drawing
    unsigned enabledIn = Always;
};

/// The toolbar of a screen from its keys, in their order; captions, icons and modes come from the common table.
/// Throws std::logic_error for an unknown key.
std::vector<Tool> toolsOf(const std::vector<QString>& keys);

/// Which of these keys a function key stands for; empty for none.
QString toolOfFunctionKey(const std::vector<QString>& keys, int key);

ModeBit modeBit(const QString& mode);

} // namespace liaowu
