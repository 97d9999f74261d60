#pragma once

#include "Platform/Values/Value.h"

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace vantix {

/// Takes the batches of reported events that a back end is sent. Usable from any thread.
class ReportIntake {
public:
    /// `onReport` is told of each event, as JSON, with `"repeated": true` for an identity that came before; one call at
    /// a time, on the thread that took the batch.
    explicit ReportIntake(std::function<void(const std::string& event)> onReport) : onReport_(std::move(onReport)) {}

    /// Throws BadInput when the text is no batch.
    void take(std::string_view batch);

private:
    void takeOne(Dictionary event);

    std::mutex mutex_;
    std::function<void(const std::string&)> onReport_;
    std::set<std::string> known_;
};

}  // namespace vantix
