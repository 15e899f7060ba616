#pragma once
#include <QStringList>
#include <QTextStream>

namespace liaowu {

enum ExitCode { Done = 0, Failed = 1, Misused = 2 };

/// Runs the tool on its arguments, the program's name left out. Speaks on `out`, complains on `err`.
ExitCode runTool(const QStringList& arguments, QTextStream& out, QTextStream& err);

} // namespace liaowu
