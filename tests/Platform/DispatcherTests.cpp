#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"

#include <gtest/gtest.h>

#include <atomic>

using namespace vantix;

namespace {

/// Runs a dispatcher's main queue until a condition holds.
struct Driver {
    virtual ~Driver() = default;
    virtual Dispatcher& dispatcher() = 0;
    virtual void runUntil(const std::function<bool()>& done) = 0;
};

struct ThreadedDriver final : Driver {
    ThreadedDispatcher threaded;
    Dispatcher& dispatcher() override { return threaded; }
    void runUntil(const std::function<bool()>& done) override {
        while (!done()) threaded.runMainQueue(std::chrono::milliseconds(1));
    }
};

struct VirtualDriver final : Driver {
    VirtualDispatcher virtually;
    Dispatcher& dispatcher() override { return virtually; }
    void runUntil(const std::function<bool()>& done) override {
        while (!done()) virtually.advance(std::chrono::milliseconds(1));
    }
};

/// What every dispatcher owes.
class DispatcherContract : public testing::TestWithParam<bool> {
protected:
    DispatcherContract() {
        if (GetParam()) {
            driver_ = std::make_unique<ThreadedDriver>();
        } else {
            driver_ = std::make_unique<VirtualDriver>();
        }
    }

    Dispatcher& dispatcher() { return driver_->dispatcher(); }
    void runUntil(const std::function<bool()>& done) { driver_->runUntil(done); }

    std::unique_ptr<Driver> driver_;
};

}  // namespace

TEST_P(DispatcherContract, SerialQueuesKeepTheOrderAndKnowThemselves) {
    auto queue = dispatcher().makeSerialQueue("test", QualityOfService::utility);
    auto other = dispatcher().makeSerialQueue("other", QualityOfService::utility);
    std::vector<int> order;
    std::atomic<bool> done = false, knowsItself = false;
    for (int at = 0; at < 1000; ++at) queue->async([&order, at] { order.push_back(at); });
    queue->async([&] {
        knowsItself = queue->isCurrent() && !other->isCurrent() && !dispatcher().mainQueue().isCurrent();
        done = true;
    });
    runUntil([&] { return done.load(); });
    EXPECT_TRUE(knowsItself);
    EXPECT_TRUE(dispatcher().mainQueue().isCurrent());
    ASSERT_EQ(order.size(), 1000U);
    for (int at = 0; at < 1000; ++at) EXPECT_EQ(order[static_cast<std::size_t>(at)], at);
}

TEST_P(DispatcherContract, WorkNeverRunsWithinTheCallThatHandsItOver) {
    bool ran = false;
    dispatcher().mainQueue().async([&] { ran = true; });
    EXPECT_FALSE(ran);
    runUntil([&] { return ran; });
}

TEST_P(DispatcherContract, DelayedWorkRunsInTheOrderOfItsTimes) {
    std::vector<int> order;
    auto& main = dispatcher().mainQueue();
    main.asyncAfter(std::chrono::milliseconds(500), [&] { order.push_back(2); });
    main.asyncAfter(std::chrono::milliseconds(5), [&] { order.push_back(1); });
    main.asyncAfter(std::chrono::milliseconds(600), [&] { order.push_back(3); });
    runUntil([&] { return order.size() == 3; });
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TEST_P(DispatcherContract, CancelledItemsDoNotRun) {
    std::vector<int> order;
    auto item =
        std::make_shared<DispatchWorkItem>(QualityOfService::utility, WorkItemFlags::none, [&] { order.push_back(1); });
    dispatcher().mainQueue().asyncAfter(std::chrono::milliseconds(2), item);
    dispatcher().mainQueue().async(item);
    dispatcher().mainQueue().async([&] { item->cancel(); });
    dispatcher().mainQueue().asyncAfter(std::chrono::milliseconds(4), [&] { order.push_back(2); });
    runUntil([&] { return !order.empty() && order.back() == 2; });
    EXPECT_EQ(order, (std::vector{1, 2}));
}

TEST_P(DispatcherContract, WaitersLeaveRoomForTheWorkTheyWaitFor) {
    constexpr int waiters = 15;
    std::atomic<int> through = 0;
    for (int at = 0; at < waiters; ++at) {
        dispatcher().utilityQueue().async([&] {
            auto group = dispatcher().makeGroup();
            group->enter();
            dispatcher().utilityQueue().async([group] { group->leave(); });
            group->wait();
            ++through;
        });
    }
    runUntil([&] { return through == waiters; });
}

TEST_P(DispatcherContract, ASerialQueueWhoseWorkWaitsStaysInOrder) {
    auto queue = dispatcher().makeSerialQueue("test", QualityOfService::utility);
    auto helper = dispatcher().makeSerialQueue("helper", QualityOfService::utility);
    std::vector<int> order;
    std::atomic<bool> done = false;
    queue->async([&] {
        auto group = dispatcher().makeGroup();
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
    runUntil([&] { return done.load(); });
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

INSTANTIATE_TEST_SUITE_P(Real, DispatcherContract, testing::Values(true));
INSTANTIATE_TEST_SUITE_P(Virtual, DispatcherContract, testing::Values(false));

TEST(VirtualDispatcherTest, RunsOnePieceAtATimeInTheOrderOfHandingOver) {
    VirtualDispatcher dispatcher;
    auto a = dispatcher.makeSerialQueue("a", QualityOfService::utility);
    auto b = dispatcher.makeSerialQueue("b", QualityOfService::utility);
    std::string order;
    b->async([&] { order += "1"; });
    dispatcher.mainQueue().async([&] {
        order += "2";
        a->async([&] { order += "5"; });
    });
    dispatcher.utilityQueue().async([&] { order += "3"; });
    a->async([&] { order += "4"; });
    dispatcher.runUntilIdle();
    EXPECT_EQ(order, "12345");
}

TEST(VirtualDispatcherTest, TimeStandsStillBetweenTimersAndTheLastMomentCounts) {
    VirtualDispatcher dispatcher;
    std::vector<std::pair<int, std::int64_t>> fired;
    auto note = [&](int number) {
        return [&, number] { fired.emplace_back(number, dispatcher.clock().now() / std::chrono::seconds(1)); };
    };
    auto& main = dispatcher.mainQueue();
    main.asyncAfter(seconds(10), [&, mark = note(2)] {
        mark();
        main.async(note(3));
        main.asyncAfter(seconds(0), note(5));
    });
    main.asyncAfter(seconds(10), note(4));
    main.asyncAfter(seconds(1), note(1));
    main.asyncAfter(seconds(10.5), note(6));
    dispatcher.advance(seconds(10));
    EXPECT_EQ(fired, (std::vector<std::pair<int, std::int64_t>>{{1, 1}, {2, 10}, {3, 10}, {4, 10}, {5, 10}}));
}

TEST(ThreadedDispatcherTest, FinishesWhatItWasHandedBeforeItGoes) {
    int ran = 0;
    std::shared_ptr<DispatchQueue> queue;
    {
        ThreadedDispatcher dispatcher;
        queue = dispatcher.makeSerialQueue("test", QualityOfService::utility);
        for (int at = 0; at < 100; ++at) queue->async([&] { ++ran; });
    }
    EXPECT_EQ(ran, 100);
    queue->async([&] { ++ran; });
    EXPECT_EQ(ran, 100);
}

TEST(ThreadedDispatcherTest, AQueueThatIsFirstUsedAfterItsDispatcherRefusesTheWork) {
    auto dispatcher = std::make_unique<ThreadedDispatcher>();
    auto queue = dispatcher->makeSerialQueue("test", QualityOfService::utility);
    dispatcher.reset();
    bool ran = false;
    queue->async([&] { ran = true; });
    EXPECT_FALSE(ran);
}
