#include "VantixInAppMessage/Core/InAppMessagePresentationDelegate.h"
#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/Torture/Load/Housing.h"
#include "tests/Torture/Load/Trial.h"

namespace vantix {

namespace {

/// Hears of everything that a module does after its end.
struct Listener final : InAppMessagePresentationDelegate {
    std::atomic<bool> mayHear = true;
    std::atomic<int> lateCompletions = 0;
    int lateNews = 0;

    std::function<void(bool)> completion(const std::shared_ptr<Listener>& self) const {
        return [self](bool) { self->lateCompletions += !self->mayHear; };
    }
    void didPresent(const PresentedMessage&) override { lateNews += !mayHear; }
    void didDismiss(const PresentedMessage&) override { lateNews += !mayHear; }
};

/// Something of everything: pushes, pictures, events, reports, rebuilds, timers, a sync.
void doSomething(RealHousing& house, const std::shared_ptr<Listener>& listener, const std::string& url, unsigned what) {
    const std::string scope = std::to_string(what);
    const char* event = std::array{"INSTANT", "APP_LAUNCH", "buy"}[what % 3];
    Campaign campaign{.scope = scope, .event = event, .image = url + "/" + std::to_string(what % 5)};
    auto& core = *house.core;
    switch (what % 11) {
        case 0:
            return core.userLoggedOut();
        case 1:
            return core.dismissPresentedInAppMessage();
        case 2:
            return Vantix::captureEvent("buy");
        case 3:
            return VantixInAppTriggerManager::create(house.configuration)->syncTriggers({.cuID = "customer"});
        case 4:
            Platform::current()->notificationCenter->post({ApplicationNotification::willResignActive, {}});
            return Platform::current()->notificationCenter->post({ApplicationNotification::didBecomeActive, {}});
        case 5:
            return core.inAppMessageQueueManager()->updateInAppMessagesOnAppLaunch(listener->completion(listener));
        case 6:
            return core.inAppMessageQueueManager()->removeMessage(scope, listener->completion(listener));
        default:
            return core.silentPushListener(campaign.payload(), listener->completion(listener));
    }
}

void tearDownOnce(Trial& trial, const std::string& url) {
    auto listener = std::make_shared<Listener>();
    std::weak_ptr<InAppMessageQueueManager> manager;
    {
        RealHousing house(trial.folder, url);
        manager = house.core->inAppMessageQueueManager();
        house.core->setPresentationDelegate(listener);
        for (auto count = trial.random() % 40; count > 0; --count) {
            house.onMain([&, what = static_cast<unsigned>(trial.random())] {
                if (house.core) doSomething(house, listener, url, what);
            });
        }
        house.dispatcher().runMainQueue(std::chrono::microseconds(trial.random() % 8000));
        if (trial.random() % 2) house.core->tearDown();
        house.core.reset();
        trial.expect(house.scene->windows().empty(), "a window is left");
        // What a thread had begun before may end.
        house.runToEndOfStore();
        listener->mayHear = false;
        house.dispatcher().runMainQueue(std::chrono::microseconds(trial.random() % 8000));
        trial.expect(house.scene->windows().empty(), "a window comes after the end");
    }
    trial.expect(listener->lateCompletions == 0,
                 "completions after the end: " + std::to_string(listener->lateCompletions));
    trial.expect(listener->lateNews == 0, "the delegate hears of a window after the end");
    trial.expect(manager.expired(), "the queues of the module live on");
}

}  // namespace

void tearDownAtAnyMoment(Trial& trial) {
    LoopbackServer server;
    server.reply("/mapp/events",
                 {.body = R"({"status":"200","triggers":[)" + toJSON(Campaign{.scope = "synced"}.push()) + "]}"});
    for (const char* path : {"/0", "/1", "/2", "/3"}) server.reply(path, {.body = FakeImageDecoder::encode(400, 300)});
    constexpr std::size_t moments = 1000;
    for (; trial.tried < moments && (trial.hasTime() || trial.tried == 0); ++trial.tried)
        tearDownOnce(trial, server.url());
}

}  // namespace vantix
