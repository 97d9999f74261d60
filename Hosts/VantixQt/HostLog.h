#pragma once

#include "VantixCore/VantixLogger.h"

#include <QLoggingCategory>

namespace vantix::qt {

/// "vantix.inapp": every line of the libraries' log; information and errors unless logging rules say otherwise.
Q_DECLARE_LOGGING_CATEGORY(hostLog)

/// Any thread.
void writeToLog(const LogLine& line);

/// The level below which the category drops every line.
LogLevel lowestWrittenLevel();

}  // namespace vantix::qt
