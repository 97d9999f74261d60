#pragma once

#include "Tools/vantix-inapp/Headless/Configuration.h"
#include "VantixCore/Vantix.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <atomic>
#include <mutex>
#include <thread>

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

    /// While it lives, what the thread that made it does is not told in log lines: the tool's own work. One at a time.
    class Silence {
    public:
        explicit Silence(EventLines& events) : events_(events) { events_.silencedThread_ = std::this_thread::get_id(); }
        ~Silence() { events_.silencedThread_ = std::thread::id(); }
        Silence(const Silence&) = delete;
        Silence& operator=(const Silence&) = delete;

    private:
        EventLines& events_;
    };

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
    std::atomic<std::thread::id> silencedThread_{};
    mutable std::mutex mutex_;
    VantixInAppMessagePayload shownLast_;
};

}  // namespace vantix
