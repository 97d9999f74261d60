#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <atomic>
#include <condition_variable>
#include <latch>
#include <thread>

using namespace vantix;

namespace {

/// Wakes the main thread, which waits for it.
class Signal {
public:
    void raise() {
        std::lock_guard lock(mutex_);
        isRaised_ = true;
        raised_.notify_all();
    }
    void wait() {
        std::unique_lock lock(mutex_);
        raised_.wait(lock, [this] { return isRaised_; });
        isRaised_ = false;
    }

private:
    std::mutex mutex_;
    std::condition_variable raised_;
    bool isRaised_ = false;
};

/// The module on real threads. Whatever a test sets going it must see end, before the platform goes.
class ThreadsTest : public ModuleFixture<ThreadedDispatcher> {
protected:
    ThreadsTest() {
        dispatcher().setMainQueueWaker([signal = signal] { signal->raise(); });
    }

    /// Runs the main queue until the condition holds, and what had been handed to it by then; `turn` is called after
    /// each wait.
    void runUntil(
        const std::function<bool()>& condition, const std::function<void()>& turn = [] {}) {
        while (!condition()) {
            signal->wait();
            dispatcher().drainMainQueue();
            turn();
        }
        dispatcher().drainMainQueue();
    }

    /// Counts an answer that is still to come.
    std::function<void(bool)> completion() {
        ++asked;
        return [this, signal = signal](bool) {
            ++answered;
            signal->raise();
        };
    }

    /// Reports run in order, so that the last one comes after all others.
    void waitForReports() {
        displayManager()->handleInAppMessageButtonAction(Campaign{.scope = "last"}.shared(), InAppCTA{}, {}, {}, {});
        Texts told;
        runUntil([&] {
            Texts more = recorder.takeTold();
            told.insert(told.end(), more.begin(), more.end());
            signal->raise();
            return !told.empty() && told.back() == "behavioral inAppMessageClose last";
        });
        auto shownReports = std::count_if(told.begin(), told.end(), [](const std::string& what) {
            return what.starts_with("delivery inAppMessageShown");
        });
        EXPECT_EQ(shownReports, timesShown);
    }

    std::shared_ptr<Signal> signal = std::make_shared<Signal>();
    std::atomic<int> asked = 0;
    std::atomic<int> answered = 0;
    int timesShown = 0;
};

}  // namespace

TEST_F(ThreadsTest, PushesEventsLogOutsAndRebuildsMayAllMeet) {
    start();
    scene->setOnShown([this](const HostedView&) { ++timesShown; });
    std::atomic<int> working = 4;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([this, number, &working] {
            for (int round = 0; round < 30; ++round) {
                const char* event = std::array{"INSTANT", "APP_LAUNCH", "buy"}[static_cast<std::size_t>(round % 3)];
                std::string scope = std::to_string(number) + "." + std::to_string(round);
                core->silentPushListener(Campaign{.scope = scope, .event = event}.payload(), completion());
                Vantix::captureEvent("buy", Dictionary{{"round", round}});
                if (round % 5 == number) queueManager()->updateInAppMessagesOnAppLaunch(completion());
                if (round % 10 == number) core->userLoggedOut();
                if (auto next = queueManager()->getInAppMessage({}, {})) core->dismissInAppMessage(*next);
            }
            --working;
            signal->raise();
        });
    }
    int turns = 0;
    runUntil([&] { return working == 0 && answered == asked; },
             [&] {
                 EXPECT_LE(scene->windows().size(), 1U);
                 auto& center = *Platform::current()->notificationCenter;
                 if (++turns % 3 == 0) center.post({ApplicationNotification::willResignActive, {}});
                 center.post({ApplicationNotification::didBecomeActive, {}});
             });
    for (std::thread& thread : threads) thread.join();
    EXPECT_GE(asked, 4 * 30);

    // The store answers in order: with this rebuild those that the life cycle began are over as well.
    queueManager()->updateInAppMessagesOnAppLaunch(completion());
    runUntil([&] { return answered == asked; });
    queueManager()->removeAllMessages(completion());
    runUntil([&] { return answered == asked; });
    auto queues = queueManager()->queues();
    EXPECT_TRUE(queues->milestoneInAppMessages.isEmpty() && queues->otherInAppMessages.isEmpty());
    EXPECT_FALSE(queues->broadcastInAppMessage);
    waitForReports();
    EXPECT_GT(timesShown, 0);
}

TEST_F(ThreadsTest, AnImageOnItsWayHoldsUpNeitherAnotherPushNorItsImage) {
    LoopbackServer dead, alive;
    for (auto* server : {&dead, &alive}) server->reply("/p", {.body = FakeImageDecoder::encode(40, 20)});
    dead.hold();
    start();
    scene->setOnShown([this](const HostedView&) { ++timesShown; });
    core->silentPushListener(Campaign{.scope = "slow", .image = dead.url("/p")}.payload(), completion());
    dead.waitForRequests(1);
    EXPECT_TRUE(shown().empty());

    std::atomic<bool> isStored = false;
    core->silentPushListener(Campaign{.scope = "event's", .event = "buy", .image = alive.url("/p")}.payload(),
                             [&](bool) {
                                 isStored = true;
                                 signal->raise();
                             });
    runUntil([&] { return isStored.load(); });
    EXPECT_EQ(answered, 0) << "the slow one is not answered yet";
    EXPECT_EQ(timesShown, 1) << "another push may show it with its placeholder";
    EXPECT_EQ(shown(), Texts{"slow"});
    Vantix::captureEvent("buy");
    EXPECT_EQ(shown(), Texts{"slow"});

    dead.release();
    runUntil([&] { return answered == asked; });
    EXPECT_EQ(shown(), Texts{"slow"});
    waitForReports();
}

TEST_F(ThreadsTest, ThreadsThatWaitForImagesHoldUpNeitherASyncNorAnotherImage) {
    LoopbackServer silent, backEnd;
    silent.hold();
    backEnd.reply("/mapp/events", {.body = R"({"status":"200","triggers":[)" + toJSON(Campaign{}.push()) + "]}"});
    start();
    constexpr int mostThreads = 16;
    std::latch waiting(mostThreads), ended(mostThreads);
    for (int at = 0; at < mostThreads; ++at) {
        dispatcher().utilityQueue().async([&, at] {
            waiting.count_down();
            displayManager()->downloadInAppMessageImageIfAvailable(
                Campaign{.image = silent.url(std::string("/") + std::to_string(at))}.shared(), false);
            ended.count_down();
        });
    }
    waiting.wait();
    auto account = std::make_shared<VantixConfiguration>();
    account->base = backEnd.url();
    VantixInAppTriggerManager::create(account)->syncTriggers({.cuID = "customer"});
    backEnd.reply("/image", {.body = FakeImageDecoder::encode(4, 3)});
    core->silentPushListener(*Campaign{.scope = "b", .image = backEnd.url("/image")}.shared(), completion());
    runUntil([&] { return answered == asked; });
    for (auto isSynced = std::make_shared<std::atomic<bool>>(false); !*isSynced; signal->wait()) {
        InAppRepoHelper::shared()->fetchAllInAppMessages([isSynced, signal = signal](const auto& records) {
            for (const InAppMessage& record : records) {
                if (record[InAppMessage::Property::scope] == "a") *isSynced = true;
            }
            signal->raise();
        });
    }
    silent.release();
    ended.wait();
}

TEST_F(ThreadsTest, AnExitInTheMidstOfALongAnswerKeepsAllOfIt) {
    struct Answer final : VantixResponseGenerator {
        const std::optional<std::string>& rcvdData() const override { return data; }
        const std::optional<VantixError>& error() const override { return none; }
        std::optional<std::string> data = R"({"status":"200","triggers":[)" + toJSON(Campaign{}.push());
        std::optional<VantixError> none;
    };
    auto answer = std::make_shared<Answer>();
    for (int more = 1; more < 3000; ++more) *answer->data += "," + toJSON(Campaign{}.push());
    *answer->data += "]}";
    VantixInAppTriggerManager::create(std::make_shared<VantixConfiguration>())->processReceived(answer, {});
    std::size_t stored = 0;
    InAppRepoHelper::shared()->fetchAllInAppMessages([&](const auto& records) { stored = records.size(); });
    dispatcher().shutDown();
    EXPECT_EQ(stored, 3000U);
}
