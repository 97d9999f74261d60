#pragma once

namespace vantix {

/// What Qt needs before it works. The parts of this host call these functions themselves, at first use, so that a
/// program that neither measures text nor paints never pays for Qt.
class QtEnvironment {
public:
    /// Makes the one QGuiApplication, without a display, unless the program has made its own. It lives until the
    /// process ends. Main thread only.
    static void start();

    /// Keeps Qt's warnings off standard error, where they would mix with a program's own lines; the environment
    /// variable QT_LOGGING_RULES brings them back. Any thread; does not start Qt.
    static void silenceWarnings();
};

}  // namespace vantix
