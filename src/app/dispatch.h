#pragma once
#include <QString>

namespace liaowu {

class Process;
class ScreenFrame;

/// Makes every screen and window of the program known to a process.
void registerEverything(Process& process);

/// Cuts the launch string into the session and opens its screen. Null when nothing opened: the string is too short
/// (which is told), or the function is unknown (which is not).
ScreenFrame* launch(Process& process, const QString& commandLine);

/// Fills the grid colours, loads the user's profile and opens the screen of `functionName`, non-modally.
ScreenFrame* dispatchScreen(Process& process);

} // namespace liaowu
