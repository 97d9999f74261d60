#include "VantixPushNotification/NotificationCore.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

using namespace vantix;

namespace {

struct Listener final : VantixSilentPushNotificationProtocol, VantixNotificationsReceiverProtocol {
    void handleSilentPushNotification(const Dictionary& notification) override {
        pushes.push_back(notification);
        if (onPush) onPush();
    }
    NotificationReceiverType getReceiverType() const override { return NotificationReceiverType::inAppMessages; }
    void notificationsReceived(const std::optional<std::vector<VantixNotificationPayload>>& notifications) override {
        deliveries.push_back(notifications ? static_cast<int>(notifications->size()) : -1);
    }

    std::vector<Dictionary> pushes;
    std::vector<int> deliveries;
    std::function<void()> onPush;
};

}  // namespace

TEST(NotificationCore, APushReachesTheLastListenerOfItsModuleAndADeliveryEveryReceiverOnce) {
    NotificationCore core;
    auto replaced = std::make_shared<Listener>();
    auto listener = std::make_shared<Listener>();
    auto other = std::make_shared<Listener>();
    core.registerSilentPushListener("inapp", replaced);
    core.registerSilentPushListener("inapp", listener);
    core.registerSilentPushListener("push", other);
    for (const auto& receiver : {listener, other, listener}) core.addNotificationReceiver(receiver);

    core.receiveSilentPush("inapp", {{"scope", "a"}});
    core.receiveSilentPush("nobody", {{"scope", "b"}});
    core.deliver(std::vector<VantixNotificationPayload>{{"inapp", {}}, {"push", {}}});
    core.deliver({});

    EXPECT_EQ(listener->pushes, std::vector<Dictionary>({{{"scope", "a"}}}));
    EXPECT_TRUE(replaced->pushes.empty() && other->pushes.empty());
    EXPECT_EQ(listener->deliveries, std::vector<int>({2, -1}));
    EXPECT_EQ(other->deliveries, std::vector<int>({2, -1}));
}

TEST(NotificationCore, ListenersAreHeldWeaklyAndMayRegisterFromWithinACall) {
    NotificationCore core;
    auto successor = std::make_shared<Listener>();
    auto listener = std::make_shared<Listener>();
    listener->onPush = [&] {
        core.registerSilentPushListener("inapp", successor);
        core.addNotificationReceiver(successor);
    };
    std::weak_ptr<Listener> held = listener;
    core.registerSilentPushListener("inapp", listener);
    core.addNotificationReceiver(listener);

    core.receiveSilentPush("inapp", {});
    listener.reset();
    EXPECT_TRUE(held.expired());
    core.receiveSilentPush("inapp", {});
    core.deliver({});

    EXPECT_EQ(successor->pushes.size(), 1U);
    EXPECT_EQ(successor->deliveries.size(), 1U);
}

TEST(NotificationCore, RegistrationAndDeliveryMayMeetOnTwoThreads) {
    NotificationCore core;
    std::thread registering([&] {
        for (int round = 0; round < 200; ++round) {
            auto shortLived = std::make_shared<Listener>();
            core.registerSilentPushListener("inapp", shortLived);
            core.addNotificationReceiver(shortLived);
            NotificationCore::setAllowed(round % 2 == 1);
        }
    });
    for (int round = 0; round < 200; ++round) {
        core.receiveSilentPush(NotificationCore::isAllowed() ? "inapp" : "push", {});
    }
    registering.join();

    EXPECT_TRUE(NotificationCore::isAllowed());
}
