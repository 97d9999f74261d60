#include "VantixInAppMessage/Manager/InAppMessageQueues.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/Torture/Load/Housing.h"
#include "tests/Torture/Load/Trial.h"

namespace vantix {

namespace {

Campaign campaign(std::size_t number) { return {.scope = std::to_string(number), .event = "buy"}; }

/// Whether the messages that wait for events are those of the pushes, in their order.
bool areInOrder(const InAppMessageQueues& queues, std::size_t count) {
    std::size_t number = 0;
    for (const auto& message : queues.otherInAppMessages.messages()) {
        if (message->scope != std::to_string(number++)) return false;
    }
    return number == count;
}

void receiveBurst(Trial& trial, const std::filesystem::path& data, std::size_t pushes) {
    RealHousing house(data);
    std::atomic<std::size_t> answers = 0;
    for (std::size_t number = 0; number < pushes; ++number) {
        house.onMain([&, number] {
            auto answer = [&, number](bool isStored) {
                if (answers++ != number || !isStored) trial.expect(false, "push " + std::to_string(number));
            };
            house.core->silentPushListener(campaign(number).payload(), answer);
        });
    }
    trial.expect(house.run([&] { return answers == pushes; }), "a push is not answered");
    trial.expect(areInOrder(*house.core->inAppMessageQueueManager()->queues(), pushes), "pushes are in another order");
    trial.expectShortTurns("pushes come in a burst", house.longestTurn());

    house.longestTurn() = {};
    const std::size_t events = trial.share(100'000);
    std::size_t captured = 0;
    for (std::size_t number = 0; number < events; ++number) {
        house.onMain([&] {
            Vantix::captureEvent("sell", Dictionary{{"price", 1}});
            ++captured;
        });
    }
    trial.expect(house.run([&] { return captured == events; }), "events were lost");
    trial.expectShortTurns("events come", house.longestTurn());
    trial.tried += pushes + events;
}

void launch(Trial& trial, const std::filesystem::path& data, std::size_t stored) {
    RealHousing house(data, {}, ApplicationState::background);
    auto isRebuilt = [&] { return areInOrder(*house.core->inAppMessageQueueManager()->queues(), stored); };
    house.post(ApplicationNotification::didBecomeActive);
    trial.expect(house.runToEndOfStore() && isRebuilt(), "what is stored is not queued, or in another order");
    trial.expectShortTurns("the application starts", house.longestTurn());

    house.longestTurn() = {};
    constexpr std::size_t activations = 50;
    for (std::size_t number = 0; number < activations; ++number) {
        house.post(ApplicationNotification::willResignActive);
        house.post(ApplicationNotification::didBecomeActive);
    }
    auto begin = std::chrono::steady_clock::now();
    trial.expect(house.runToEndOfStore() && isRebuilt(), "the queues after many activations");
    std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    trial.note(std::to_string(activations) + " activations took " + std::to_string(took.count()) + " s");
    trial.expectShortTurns("the application becomes active again and again", house.longestTurn());

    house.onMain([&] { house.core->userLoggedOut(); });
    trial.expect(
        house.runToEndOfStore() && house.core->inAppMessageQueueManager()->queues()->otherInAppMessages.isEmpty(),
        "messages are left after the log-out");
    trial.tried += stored + activations;
}

}  // namespace

void loadModule(Trial& trial) {
    const std::size_t messages = trial.share(10'000);
    auto load = [&] {
        receiveBurst(trial, trial.folder, messages);
        launch(trial, trial.folder, messages);
    };
    load();
    Holdings before;
    load();
    before.expectNoMoreNow(trial, "pushes, events and launches");
}

namespace {

/// A push arrives, is shown, and is dismissed.
void showOne(Trial& trial, VirtualHousing& house, const Campaign& shown) {
    house.onMain([&] { house.notificationCore->receiveSilentPush("inapp", shown.push()); });
    house.dispatcher().runUntilIdle();
    auto windows = house.scene->windows();
    if (!trial.expect(windows.size() == 1, "message " + shown.scope + " is not shown")) return;
    auto root = std::dynamic_pointer_cast<HostingController<InAppMessageView>>(windows.front().content);
    trial.expect(root->rootView().viewModel()->inAppMessage().scope == shown.scope,
                 shown.scope + " is another message");
    house.onMain([&] { house.core->dismissPresentedInAppMessage(); });
    house.dispatcher().runUntilIdle();
    trial.expect(house.scene->windows().empty(), "message " + shown.scope + " does not go");
    ++trial.tried;
}

}  // namespace

void showAndDismiss(Trial& trial) {
    LoopbackServer server;
    VirtualHousing house(trial.folder);
    std::optional<Holdings> before;
    // The cache knows the latest identifiers of each picture, a few dozen.
    constexpr int rounds = 1000, roundsBefore = 150;
    for (int round = 0; round < rounds && (trial.hasTime() || round <= 2 * roundsBefore); ++round) {
        const char* path = std::array{"/0", "/1", "/2"}[static_cast<std::size_t>(round % 3)];
        server.reply(path, {.body = FakeImageDecoder::encode(400, 300)});
        if (round == roundsBefore) before = Holdings();
        showOne(trial, house,
                {.scope = std::to_string(round), .message = std::string(1000, 'x'), .image = server.url(path)});
        house.dispatcher().advance(seconds(10));
    }
    trial.expectShortTurns("messages are shown", house.longestTurn());
    before->expectNoMoreNow(trial, "messages shown");
}

void liveAWeek(Trial& trial) {
    VirtualHousing house(trial.folder);
    std::optional<Holdings> before;
    constexpr int hours = 7 * 24;
    for (int hour = 0; hour < hours; ++hour) {
        if (hour == 24) before = Holdings();
        showOne(trial, house, {.scope = std::to_string(hour)});
        house.post(ApplicationNotification::didEnterBackground);
        house.dispatcher().advance(seconds(3600));
        house.post(ApplicationNotification::didBecomeActive);
        house.onMain([] { Vantix::captureEvent("buy"); });
        house.dispatcher().runUntilIdle();
    }
    trial.expectShortTurns("a week goes by", house.longestTurn());
    before->expectNoMoreNow(trial, "a week");
}

void restart(Trial& trial) {
    std::optional<Holdings> before;
    constexpr int restarts = 2000, restartsBefore = 50;
    for (int number = 0; number < restarts && (trial.hasTime() || number <= 2 * restartsBefore);
         ++number, ++trial.tried) {
        if (number == restartsBefore) before = Holdings();
        RealHousing house(trial.folder);
        std::atomic<bool> isStored = false, isRemoved = false;
        const auto& manager = house.core->inAppMessageQueueManager();
        house.core->silentPushListener(campaign(1).payload(), [&](bool is) { isStored = is; });
        trial.expect(house.run([&] { return isStored.load(); }), "a message is not stored after a restart");
        manager->removeMessage("1", [&](bool is) { isRemoved = is; });
        trial.expect(house.run([&] { return isRemoved.load(); }), "a message is not removed after a restart");
    }
    before->expectNoMoreNow(trial, "restarts");
}

}  // namespace vantix
