#pragma once

#include "VantixCore/VantixLogger.h"

#include <QLoggingCategory>

namespace vantix::qt {

/// "vantix.inapp": every line of the libraries' log; errors alone unless logging rules that stand when a host is made
/// ask for more ("vantix.inapp.info=true").
Q_DECLARE_LOGGING_CATEGORY(hostLog)

/// Any thread.
void writeToLog(const LogLine& line);

/// The level below which the category drops every line.
LogLevel lowestWrittenLevel();

}  // namespace vantix::qt
