#include "VantixCore/VantixLogger.h"

#include "VantixCore/Vantix.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <atomic>
#include <memory>

namespace vantix {

namespace {

std::atomic<LogLevel> consoleLogLevel{LogLevel::debug};

/// Never destroyed, so that threads may log until the very end of the process.
spdlog::logger& standardError() {
    static auto* logger = [] {
        auto* made = new spdlog::logger("vantix", std::make_shared<spdlog::sinks::stderr_sink_mt>());
        made->set_level(spdlog::level::trace);
        made->set_pattern("%Y-%m-%d %H:%M:%S.%e %v");
        return made;
    }();
    return *logger;
}

void log(LogLevel level, std::string_view message, LogSource source, SourceLocation location) {
    if (!VantixLogger::isEnabled(level)) return;
    if (const auto& sink = Vantix::host().logSink) {
        sink({level, std::string(message), std::string(source.file), std::string(source.function), location});
    } else {
        standardError().info("{} {} {}: {}", logLevelName(level), source.file, source.function, message);
    }
}

}  // namespace

const char* logLevelName(LogLevel level) {
    switch (level) {
        case LogLevel::debug:
            return "debug";
        case LogLevel::info:
            return "info";
        case LogLevel::error:
            return "error";
        case LogLevel::none:
            return "none";
    }
    return "";
}

void VantixLogger::debug(std::string_view message, LogSource source, SourceLocation location) {
    log(LogLevel::debug, message, source, location);
}

void VantixLogger::info(std::string_view message, LogSource source, SourceLocation location) {
    log(LogLevel::info, message, source, location);
}

void VantixLogger::error(std::string_view message, LogSource source, SourceLocation location) {
    log(LogLevel::error, message, source, location);
}

void VantixLogger::setConsoleLogLevel(LogLevel level) { consoleLogLevel.store(level, std::memory_order_relaxed); }

bool VantixLogger::isEnabled(LogLevel level) {
    return level != LogLevel::none && level >= consoleLogLevel.load(std::memory_order_relaxed);
}

}  // namespace vantix
