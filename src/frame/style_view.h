#pragma once

class QApplication;

namespace liaowu {

/// Gives the application its look: style, palette, a font with Traditional Chinese, the one style sheet, and Qt's own
/// words in Chinese.
void applyLook(QApplication& application);

} // namespace liaowu
