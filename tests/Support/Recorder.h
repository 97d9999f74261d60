#pragma once

#include "VantixCore/Vantix.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace vantix {

/// Keeps what the libraries write to the log and tell their host. Usable from any thread.
class Recorder {
public:
    /// A host that tells this recorder everything.
    VantixHost host(std::filesystem::path dataDirectory) {
        VantixHost host;
        host.dataDirectory = std::move(dataDirectory);
        host.logSink = [this](const LogLine& line) { add(lines_, line); };
        host.onReport = [this](const char* kind, std::string_view name, const Dictionary& attributes) {
            tell(std::string(kind) + " " + std::string(name) + " " + *attributes.text("scope"));
        };
        host.onCallToAction = [this](const CTA& cta, const Dictionary& payload) {
            tell("cta " + cta.type + " " + cta.action + " " + *payload.text("scope"));
        };
        host.openURL = [this](const std::string& url) { tell("open " + url); };
        host.handleDeepLink = [this](const std::string& link) { tell("link " + link); };
        return host;
    }

    void tell(std::string what) { add(told_, std::move(what)); }

    /// Reports ("delivery inAppMessageShown SCOPE"), calls to action, opened URLs and links, in their order, since the
    /// last call.
    std::vector<std::string> takeTold() { return take(told_); }
    /// The log lines of a level since the last call for any level, as "FILE FUNCTION: MESSAGE".
    std::vector<std::string> takeLog(LogLevel level) {
        std::vector<std::string> texts;
        for (const LogLine& line : take(lines_)) {
            if (line.level == level) texts.push_back(line.file + " " + line.function + ": " + line.message);
        }
        return texts;
    }
    std::vector<std::string> takeErrors() { return takeLog(LogLevel::error); }

private:
    template <typename T>
    void add(std::vector<T>& list, T entry) {
        std::lock_guard lock(mutex_);
        list.push_back(std::move(entry));
    }

    template <typename T>
    std::vector<T> take(std::vector<T>& list) {
        std::lock_guard lock(mutex_);
        return std::exchange(list, {});
    }

    std::mutex mutex_;
    std::vector<LogLine> lines_;
    std::vector<std::string> told_;
};

}  // namespace vantix
