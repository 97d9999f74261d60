#include "VantixInAppMessage/Manager/InAppMessageQueue.h"

#include <tuple>

namespace vantix {

std::strong_ordering InAppMessageQueue::Arrival::operator()(const Place& a, const Place& b) const {
    return a.number <=> b.number;
}

std::strong_ordering InAppMessageQueue::EventThenArrival::operator()(const Place& a, const Place& b) const {
    return std::tie(a.message->trigger.eventName, a.number) <=> std::tie(b.message->trigger.eventName, b.number);
}

std::strong_ordering InAppMessageQueue::ScopeThenArrival::operator()(const Place& a, const Place& b) const {
    return std::tie(a.message->scope, a.number) <=> std::tie(b.message->scope, b.number);
}

InAppMessageQueue::InAppMessageQueue(const Messages& messages) {
    std::vector<Place> places;
    places.reserve(messages.size());
    for (const SharedPayload& message : messages) places.push_back({nextNumber_++, message});
    byArrival_ = ImmutableSet<Place, Arrival>(places);
    byEvent_ = ImmutableSet<Place, EventThenArrival>(places);
    byScope_ = ImmutableSet<Place, ScopeThenArrival>(std::move(places));
}

InAppMessageQueue::Messages InAppMessageQueue::messages() const {
    Messages messages;
    byArrival_.forEach([&](const Place& place) { messages.push_back(place.message); });
    return messages;
}

SharedPayload InAppMessageQueue::first() const {
    const Place* found =
        byArrival_.first([](const Place&) { return std::strong_ordering::equal; }, [](const Place&) { return true; });
    return found ? found->message : nullptr;
}

SharedPayload InAppMessageQueue::first(const std::string& eventName,
                                       const std::function<bool(const VantixInAppMessagePayload&)>& wanted) const {
    const Place* found =
        byEvent_.first([&](const Place& place) { return place.message->trigger.eventName <=> eventName; },
                       [&](const Place& place) { return wanted(*place.message); });
    return found ? found->message : nullptr;
}

void InAppMessageQueue::append(const SharedPayload& message) {
    Place place{nextNumber_++, message};
    byArrival_ = byArrival_.inserting(place);
    byEvent_ = byEvent_.inserting(place);
    byScope_ = byScope_.inserting(place);
}

void InAppMessageQueue::removeFirst(const std::string& scope) {
    const Place* found = byScope_.first([&](const Place& place) { return place.message->scope <=> scope; },
                                        [](const Place&) { return true; });
    if (!found) return;
    const Place place = *found;
    byArrival_ = byArrival_.removing(place);
    byEvent_ = byEvent_.removing(place);
    byScope_ = byScope_.removing(place);
}

}  // namespace vantix
