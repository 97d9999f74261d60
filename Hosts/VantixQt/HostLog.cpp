#include "VantixQt/HostLog.h"

namespace vantix::qt {

Q_LOGGING_CATEGORY(hostLog, "vantix.inapp", QtWarningMsg)

void writeToLog(const LogLine& line) {
    auto text = QString::fromStdString(line.file + " " + line.function + ": " + line.message);
    switch (line.level) {
        case LogLevel::debug:
            qCDebug(hostLog).noquote() << text;
            break;
        case LogLevel::info:
            qCInfo(hostLog).noquote() << text;
            break;
        case LogLevel::error:
        case LogLevel::none:
            qCWarning(hostLog).noquote() << text;
            break;
    }
}

LogLevel lowestWrittenLevel() {
    if (hostLog().isDebugEnabled()) return LogLevel::debug;
    if (hostLog().isInfoEnabled()) return LogLevel::info;
    return hostLog().isWarningEnabled() ? LogLevel::error : LogLevel::none;
}

}  // namespace vantix::qt
