#pragma once

#include "Platform/Values/Export.h"
#include "Platform/Values/WordTable.h"

#include <functional>
#include <string>
#include <string_view>
#include <type_traits>
#include <version>
#if defined(__cpp_lib_source_location)
#include <source_location>
#endif

namespace vantix {

enum class LogLevel { debug, info, error, none };

inline constexpr WordTable<LogLevel, 4> logLevelWords{
    {{LogLevel::debug, "debug"}, {LogLevel::info, "info"}, {LogLevel::error, "error"}, {LogLevel::none, "none"}}};

/// The place in the code that writes a log line; as a default argument, the place of the call.
struct SourceLocation {
    const char* file;
    unsigned line;
    unsigned column;

#if defined(__cpp_lib_source_location)
    static constexpr SourceLocation current(const std::source_location& place = std::source_location::current()) {
        return {place.file_name(), place.line(), place.column()};
    }
#else  // Clang 14 lacks the library's type, but has what it stands on.
    static constexpr SourceLocation current(const char* file = __builtin_FILE(), unsigned line = __builtin_LINE(),
                                            unsigned column = __builtin_COLUMN()) {
        return {file, line, column};
    }
#endif
};

/// A line of the log, with where it comes from.
struct LogLine {
    LogLevel level = LogLevel::debug;
    /// A sink gets it in one line of valid UTF-8: line ends, controls of a terminal or of the reading direction, and
    /// broken bytes, which a campaign could bring, are written as escapes ("\n", "\u202e", "\xff").
    std::string message;
    std::string file;
    std::string function;
    SourceLocation location;
};

/// The one log of all Vantix libraries. Usable from any thread; lines below the console level are dropped before their
/// text is made. Without a sink lines go to standard error.
class VANTIX_EXPORT VantixLogger {
public:
    /// Where lines go from now on; called on the thread that writes, for several lines at a time. An empty one is none.
    static void setSink(std::function<void(const LogLine&)> sink);
    /// Default: debug, everything is written. LogLevel::none silences the log.
    static void setConsoleLogLevel(LogLevel level);
    static bool isEnabled(LogLevel level);

    /// Hands the line on, unless its level is dropped. Lines are written through a LogSource.
    static void write(const LogLine& line);
};

/// The source file of log lines; one constant a file, named `log`:
///
///     constexpr LogSource log{"Manager/InAppRepoHelper"};
///     log.error("insert(message:completion:)", [&] { return "Failed with " + message.description(); });
///
/// A message is a text, or a block that makes one and runs only when the line is written.
class LogSource {
public:
    /// The path below the library's folder, without its ending.
    constexpr explicit LogSource(std::string_view file) : file_(file) {}

    /// `function` is the signature text of the operation, every label with a colon ("insert(message:completion:)").
    template <typename Message>
    void debug(std::string_view function, const Message& message,
               SourceLocation location = SourceLocation::current()) const {
        write(LogLevel::debug, function, message, location);
    }
    template <typename Message>
    void info(std::string_view function, const Message& message,
              SourceLocation location = SourceLocation::current()) const {
        write(LogLevel::info, function, message, location);
    }
    template <typename Message>
    void error(std::string_view function, const Message& message,
               SourceLocation location = SourceLocation::current()) const {
        write(LogLevel::error, function, message, location);
    }

private:
    template <typename Message>
    void write(LogLevel level, std::string_view function, const Message& message, SourceLocation location) const {
        if (!VantixLogger::isEnabled(level)) return;
        if constexpr (std::is_invocable_v<const Message&>) {
            VantixLogger::write({level, message(), std::string(file_), std::string(function), location});
        } else {
            VantixLogger::write({level, std::string(message), std::string(file_), std::string(function), location});
        }
    }

    std::string_view file_;
};

}  // namespace vantix
