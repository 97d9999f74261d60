#pragma once

#include <string>
#include <string_view>

namespace vantix {

enum class LogLevel { debug, info, error, none };

/// The word for a level ("debug", …).
const char* logLevelName(LogLevel level);

/// The operation that writes a log line.
struct LogSource {
    /// The path below the library's folder, without its ending ("Manager/InAppRepoHelper").
    std::string_view file;
    /// The signature text, every label with a colon ("insert(message:completion:)").
    std::string_view function;
};

/// The place in the code that writes a log line. (Clang 14 has no std::source_location.)
struct SourceLocation {
    const char* file;
    int line;

    /// As a default argument: the place of the call.
    static constexpr SourceLocation current(const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
        return {file, line};
    }
};

struct LogLine {
    LogLevel level = LogLevel::debug;
    std::string message;
    std::string file;
    std::string function;
    SourceLocation location;
};

/// The one log of all Vantix libraries. Usable from any thread; lines below the console level are dropped before their
/// text is handed on. Without a sink (VantixHost::logSink) lines go to standard error.
class VantixLogger {
public:
    static void debug(std::string_view message, LogSource source, SourceLocation location = SourceLocation::current());
    static void info(std::string_view message, LogSource source, SourceLocation location = SourceLocation::current());
    static void error(std::string_view message, LogSource source, SourceLocation location = SourceLocation::current());

    /// Default: debug, everything is written. LogLevel::none silences the log.
    static void setConsoleLogLevel(LogLevel level);
    static bool isEnabled(LogLevel level);
};

}  // namespace vantix
