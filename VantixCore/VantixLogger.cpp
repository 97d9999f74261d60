#include "VantixCore/VantixLogger.h"

#include "Platform/Values/AtomicPointer.h"
#include "Platform/Values/ControlCharacters.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <atomic>
#include <memory>
#include <utility>

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

using Sink = std::function<void(const LogLine&)>;

/// Never destroyed, like the logger. Replaced as a whole, so that a thread that writes meanwhile keeps what it has
/// read.
AtomicPointer<const Sink>& installedSink() {
    static auto* sink = new AtomicPointer<const Sink>;
    return *sink;
}

}  // namespace

void VantixLogger::write(const LogLine& given) {
    if (!isEnabled(given.level)) return;
    LogLine line = given;
    line.message = withEscapedControlCharacters(given.message);
    if (auto sink = installedSink().load()) {
        (*sink)(line);
    } else {
        standardError().info("{} {} {}: {}", logLevelWords.word(line.level), line.file, line.function, line.message);
    }
}

void VantixLogger::setSink(std::function<void(const LogLine&)> sink) {
    installedSink().store(sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr);
}

void VantixLogger::setConsoleLogLevel(LogLevel level) { consoleLogLevel.store(level, std::memory_order_relaxed); }

bool VantixLogger::isEnabled(LogLevel level) {
    return level != LogLevel::none && level >= consoleLogLevel.load(std::memory_order_relaxed);
}

}  // namespace vantix
