#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "Platform/Ports/RunningQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <pthread.h>
#include <string>

using namespace vantix;

namespace {

/// What every dispatcher owes.
template <typename DispatcherKind>
class DispatcherContract : public testing::Test {
protected:
    /// Runs the main queue until the condition holds.
    void runUntil(const std::function<bool()>& done) {
        while (!done()) {
            if constexpr (requires { tested.advance({}); }) {
                tested.advance(std::chrono::milliseconds(1));
            } else {
                tested.runMainQueue(std::chrono::milliseconds(1));
            }
        }
    }

    DispatcherKind tested;
};

using DispatcherKinds = testing::Types<ThreadedDispatcher, VirtualDispatcher>;
TYPED_TEST_SUITE(DispatcherContract, DispatcherKinds, );

}  // namespace

TYPED_TEST(DispatcherContract, SerialQueuesKeepTheOrderAndKnowThemselves) {
    auto& dispatcher = this->tested;
    auto queue = dispatcher.makeSerialQueue("test", QualityOfService::utility);
    auto other = dispatcher.makeSerialQueue("other", QualityOfService::utility);
    std::vector<int> order;
    std::atomic<bool> done = false, knowsItself = false;
    for (int at = 0; at < 1000; ++at) queue->async([&order, at] { order.push_back(at); });
    queue->async([&] {
        knowsItself = queue->isCurrent() && !other->isCurrent() && !dispatcher.mainQueue().isCurrent() &&
                      RunningQueue::label() == queue->label();
        done = true;
    });
    this->runUntil([&] { return done.load(); });
    EXPECT_TRUE(knowsItself);
    EXPECT_TRUE(dispatcher.mainQueue().isCurrent());
    ASSERT_EQ(order.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TYPED_TEST(DispatcherContract, DelayedWorkRunsInTheOrderOfItsTimes) {
    auto& dispatcher = this->tested;
    std::vector<int> order;
    auto& main = dispatcher.mainQueue();
    main.asyncAfter(std::chrono::milliseconds(500), [&] { order.push_back(2); });
    main.asyncAfter(std::chrono::milliseconds(5), [&] { order.push_back(1); });
    main.async([&] { order.push_back(0); });
    EXPECT_TRUE(order.empty()) << "never within the call that hands it over";
    this->runUntil([&] { return order.size() == 3; });
    EXPECT_EQ(order, (std::vector{0, 1, 2}));
}

TYPED_TEST(DispatcherContract, WaitersLeaveRoomForTheWorkTheyWaitFor) {
    auto& dispatcher = this->tested;
    constexpr int waiters = 15;
    std::atomic<int> through = 0;
    for (int at = 0; at < waiters; ++at) {
        dispatcher.utilityQueue().async([&] {
            auto group = dispatcher.makeGroup();
            group->enter();
            dispatcher.utilityQueue().async([group] { group->leave(); });
            group->wait();
            ++through;
        });
    }
    this->runUntil([&] { return through == waiters; });
}

TYPED_TEST(DispatcherContract, ASerialQueueWhoseWorkWaitsStaysInOrder) {
    auto& dispatcher = this->tested;
    auto queue = dispatcher.makeSerialQueue("test", QualityOfService::utility);
    auto helper = dispatcher.makeSerialQueue("helper", QualityOfService::utility);
    std::vector<int> order;
    std::atomic<bool> done = false;
    queue->async([&] {
        auto group = dispatcher.makeGroup();
        group->enter();
        helper->async([group] { group->leave(); });
        group->wait();
        order.push_back(1);
    });
    queue->async([&] { order.push_back(2); });
    queue->async([&] {
        order.push_back(3);
        done = true;
    });
    this->runUntil([&] { return done.load(); });
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TYPED_TEST(DispatcherContract, TheMainThreadNeverWaitsForAGroup) {
    EXPECT_DEATH(this->tested.makeGroup()->wait(), "DispatchGroup::wait must not be called on the queue main");
}

TEST(ThreadedDispatcherTest, FinishesWhatItWasHandedBeforeItGoesAndRefusesTheRest) {
    int ran = 0;
    auto dispatcher = std::make_unique<ThreadedDispatcher>();
    auto queue = dispatcher->makeSerialQueue("used", QualityOfService::utility);
    auto unused = dispatcher->makeSerialQueue("unused", QualityOfService::utility);
    for (int at = 0; at < 100; ++at) queue->async([&] { ++ran; });
    dispatcher.reset();
    EXPECT_EQ(ran, 100);
    queue->async([&] { ++ran; });
    unused->async([&] { ++ran; });
    EXPECT_EQ(ran, 100);
}

TEST(ThreadedDispatcherTest, AThreadBearsTheEndOfItsQueuesLabel) {
    std::array<char, 16> name{};
    {
        ThreadedDispatcher dispatcher;
        dispatcher.makeSerialQueue("com.vantix.VantixInAppMessaging", QualityOfService::utility)->async([&] {
            pthread_getname_np(pthread_self(), name.data(), name.size());
        });
    }
    EXPECT_STREQ(name.data(), "xInAppMessaging");
}
