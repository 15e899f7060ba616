#pragma once
#include "common/session.h"
#include <optional>

namespace liaowu {

/// The five values of a launch string "&&連結&&=…&&種類&&=…&&用戶&&=…&&審單&&=…&&其它&&=…".
struct LaunchValues {
    QString connection, function, user, approval, other;
};

/// A launch string is refused when it is shorter than this after trimming.
inline constexpr int ShortestLaunch = 30;
inline constexpr int LongestLaunch = 32767;

/// Cuts the string. A value runs from behind its marker to the next marker; a marker that is missing or out of order
/// leaves its field empty, and so does one beyond the longest string.
LaunchValues parseLaunch(const QString& commandLine);
/// The string that gives these values.
QString composeLaunch(const LaunchValues& values);

/// One row of the dispatch table.
struct LaunchTarget {
    QString function, screen;
    bool keepsFunction = false; ///< `Session::screenFunction` takes the function name
    QString category, formulaMode;
    QString group; ///< where the launchpad lists it
};
const std::vector<LaunchTarget>& launchTable();
const LaunchTarget* launchTarget(const QString& function);

} // namespace liaowu
