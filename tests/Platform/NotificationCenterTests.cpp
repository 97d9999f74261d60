#include "Platform/Ports/NotificationCenter.h"

#include <gtest/gtest.h>

using namespace vantix;

TEST(NotificationCenterTest, TellsObserversOfTheNameInOrderUntilTheyAreDropped) {
    NotificationCenter center;
    std::string heard;
    auto first = center.addObserver("a", [&](const Notification& note) { heard += "1" + note.name; });
    auto second = center.addObserver("a", [&](const Notification&) { heard += "2"; });
    auto other = center.addObserver("b", [&](const Notification&) { heard += "3"; });
    center.post({"a", {}});
    first.reset();
    center.post({"a", {}});
    center.post({"c", {}});
    EXPECT_EQ(heard, "1a22");
}

TEST(NotificationCenterTest, ObserversMayUnsubscribeWhileTheyAreTold) {
    NotificationCenter center;
    int calls = 0;
    std::unique_ptr<NotificationCenter::Observation> observation;
    observation = center.addObserver("a", [&](const Notification&) {
        ++calls;
        observation.reset();
    });
    center.post({"a", {}});
    center.post({"a", {}});
    EXPECT_EQ(calls, 1);
}
