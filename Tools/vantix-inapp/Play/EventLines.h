#pragma once

#include "Tools/vantix-inapp/Headless/Configuration.h"
#include "VantixCore/Vantix.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <mutex>

namespace vantix {

class LineWriter;
class OffscreenScene;

/// Prints what the module logs, reports, sends and shows, and remembers the message that was shown last. Outlives the
/// module and its threads.
class EventLines {
public:
    /// Log lines below the configured level are left out, and the attributes of reports, where they are not wanted.
    EventLines(LineWriter& lines, const Configuration& configuration)
        : lines_(lines),
          logLevel_(configuration.logLevel),
          printsReportAttributes_(configuration.reportAttributes),
          hasWindows_(configuration.environment == Env::dev) {}

    /// A host that prints what it is told.
    VantixHost host();
    /// Prints the windows that are put up in the scene and taken away.
    void observe(OffscreenScene& scene);

    /// The default payload when none was shown yet. In an environment without windows, only what the report of it
    /// tells.
    VantixInAppMessagePayload shownLast() const;

private:
    void printLog(const LogLine& line);
    void printReport(const char* kind, std::string_view name, const Dictionary& attributes);
    void printCallToAction(const CTA& cta, const Dictionary& payload);
    void printRequest(const SentRequest& request);
    void rememberShown(const VantixInAppMessagePayload& message);

    LineWriter& lines_;
    LogLevel logLevel_;
    bool printsReportAttributes_;
    bool hasWindows_;
    mutable std::mutex mutex_;
    VantixInAppMessagePayload shownLast_;
};

}  // namespace vantix
