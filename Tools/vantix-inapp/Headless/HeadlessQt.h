#pragma once

namespace vantix {

/// Makes the QGuiApplication that fonts, texts and pictures need, without a display, unless there is one already, and
/// keeps Qt's warnings off standard error, where they would mix with the program's own lines; the environment variable
/// QT_LOGGING_RULES brings them back. It lives until the process ends. Main thread only.
void startHeadlessQt();

}  // namespace vantix
