#pragma once

#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/ImmutableSet.h"

#include <compare>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vantix {

/// Messages in the order in which they came. A plain value that is cheap to copy: a change shares with what was before
/// almost everything, however many wait, and each question is answered without looking at the others.
class InAppMessageQueue {
public:
    using Messages = std::vector<SharedPayload>;

    InAppMessageQueue() = default;
    explicit InAppMessageQueue(const Messages& messages);

    bool isEmpty() const { return byArrival_.isEmpty(); }
    /// All of them, in order.
    Messages messages() const;
    /// Null when the queue is empty.
    SharedPayload first() const;
    /// The first that this event triggers and that is wanted; null when there is none.
    SharedPayload first(const std::string& eventName,
                        const std::function<bool(const VantixInAppMessagePayload&)>& wanted) const;

    void append(const SharedPayload& message);
    /// Drops the first message of that scope, if there is one.
    void removeFirst(const std::string& scope);

private:
    struct Place {
        std::uint64_t number;
        SharedPayload message;
    };
    struct Arrival {
        std::strong_ordering operator()(const Place& a, const Place& b) const;
    };
    struct EventThenArrival {
        std::strong_ordering operator()(const Place& a, const Place& b) const;
    };
    struct ScopeThenArrival {
        std::strong_ordering operator()(const Place& a, const Place& b) const;
    };

    ImmutableSet<Place, Arrival> byArrival_;
    ImmutableSet<Place, EventThenArrival> byEvent_;
    ImmutableSet<Place, ScopeThenArrival> byScope_;
    std::uint64_t nextNumber_ = 0;
};

}  // namespace vantix
