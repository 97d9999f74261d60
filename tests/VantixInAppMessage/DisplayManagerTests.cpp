#include "tests/Support/LoopbackServer.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <thread>

using namespace vantix;

using DisplayManagerTest = ModuleTest;

namespace {

struct WindowlessApplication final : Application, Scene, std::enable_shared_from_this<WindowlessApplication> {
    std::vector<std::shared_ptr<Scene>> connectedScenes() const override {
        return {std::const_pointer_cast<WindowlessApplication>(shared_from_this())};
    }
    Image icon() const override { return {}; }
    SceneActivationState activationState() const override { return SceneActivationState::foregroundActive; }
    bool isWindowScene() const override { return true; }
    SceneTraits traits() const override { return {}; }
    std::unique_ptr<Window> makeWindow(WindowDescription) override { return nullptr; }
};

}  // namespace

TEST_F(DisplayManagerTest, ASceneThatGivesNoWindowCountsAsNone) {
    start();
    useApplication(std::make_shared<WindowlessApplication>());
    push({});
    EXPECT_EQ(recorder.takeErrors(), Texts{"MVVM/View/InAppMessageViewBuilder createInAppWindow(for:): Didn't found "
                                           "active foreground scene"});
    EXPECT_FALSE(displayManager()->getShowingInAppMessageStatus());
    EXPECT_TRUE(recorder.takeTold().empty());
    useApplication(application);
    advance(1);
    EXPECT_EQ(shown(), Texts{"a"});
}

TEST_F(DisplayManagerTest, ResetForgetsThePauseAndTheMessageButLeavesTheWindow) {
    start();
    push({.scope = "1"});
    displayManager()->reset();
    EXPECT_FALSE(displayManager()->getShowingInAppMessageStatus());
    EXPECT_EQ(shown(), Texts{"1"});
    tap(Role::close);
    displayManager()->reset();
    push({.scope = "2"});
    EXPECT_EQ(shown(), Texts{"2"});
    recorder.takeErrors();
    advance(100);
    EXPECT_TRUE(recorder.takeErrors().empty()) << "the pause's end tries nothing any more";
}

TEST_F(DisplayManagerTest, AnImageMayBeFetchedWithOrWithoutWaiting) {
    LoopbackServer server;
    start();
    auto message = Campaign{.image = server.url("/p")}.shared();
    displayManager()->downloadInAppMessageImageIfAvailable(message, true);
    displayManager()->downloadInAppMessageImageIfAvailable(Campaign{}.shared(), false);
    settle();
    EXPECT_EQ(server.requests().size(), 1U);
    std::size_t requestsAfterwards = 0;
    Platform::current()->dispatcher->utilityQueue().async([&] {
        displayManager()->downloadInAppMessageImageIfAvailable(message, false);
        requestsAfterwards = server.requests().size();
    });
    settle();
    EXPECT_EQ(requestsAfterwards, 2U);
}

TEST_F(DisplayManagerTest, TearDownTakesEverythingAwayAndLeaksNothing) {
    start();
    for (const char* scope : {"1", "2"}) push({.scope = scope});
    tap(Role::close);
    advance(10);
    ASSERT_EQ(shown(), Texts{"2"});
    push({.scope = "3"});
    core->dismissInAppMessage(Campaign{.scope = "2"}.payload());
    std::weak_ptr<InAppDisplayManager> manager = displayManager();
    std::weak_ptr<InAppMessageQueueManager> queues = queueManager();
    std::weak_ptr<HostedView> content = scene->windows().back().content;
    core->tearDown();
    EXPECT_TRUE(shown().empty());
    EXPECT_TRUE(content.expired());
    core->tearDown();
    post("INSTANT");
    becomeActive();
    recorder.takeErrors();
    advance(100);
    EXPECT_TRUE(recorder.takeErrors().empty()) << "no timer is left";

    Texts before = stored();
    core->silentPushListener(Campaign{.scope = "late"}.payload());
    EXPECT_EQ(stored(), before) << "nothing is taken in any more";
    displayManager()->showInAppMessage({}, {});
    EXPECT_EQ(recorder.takeErrors(), Texts{"Manager/InAppDisplayManager createInAppWindow(for:): Unexpectedaly found "
                                           "nil object of type InAppMessageViewBuilder"});
    core.reset();
    EXPECT_TRUE(manager.expired());
    EXPECT_TRUE(queues.expired());
}

TEST_F(DisplayManagerTest, TheCoreMayBeUsedAndReleasedOnAnyThread) {
    start();
    for (const char* scope : {"1", "2"}) push({.scope = scope});
    push({.scope = "3", .event = "buy"});
    auto elsewhere = [this](auto call) {
        std::thread(call).join();
        settle();
    };
    elsewhere([&] { core->dismissInAppMessage(Campaign{.scope = "1"}.payload()); });
    EXPECT_TRUE(shown().empty());
    advance(10);
    elsewhere([&] { core->handleInAppMessageButtonAction(Campaign{.scope = "2"}.payload()); });
    EXPECT_TRUE(shown().empty());
    advance(10);
    elsewhere([&] { Vantix::captureEvent("sell"); });
    elsewhere([&] { Vantix::captureEvent("buy"); });
    EXPECT_EQ(shown(), Texts{"3"});
    std::weak_ptr<InAppDisplayManager> manager = displayManager();
    elsewhere([&] { core.reset(); });
    EXPECT_TRUE(shown().empty());
    EXPECT_TRUE(manager.expired());
    EXPECT_EQ(recorder.takeTold(),
              (Texts{"delivery inAppMessageShown 1", "delivery inAppMessageDismissed 1", "delivery inAppMessageShown 2",
                     "delivery inAppMessageClicked 2", "delivery inAppMessageShown 3"}));
}

TEST_F(DisplayManagerTest, AnOperationOfTheMainThreadStopsTheProcessElsewhere) {
    // A fork alone would have lost the threads of the parent.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    start();
    auto dismissElsewhere = [this] {
        Platform::current()->dispatcher->utilityQueue().async(
            [this] { displayManager()->dismissInAppMessage(Campaign{}.shared()); });
        settle();
    };
    EXPECT_DEATH(dismissElsewhere(),
                 "dismissInAppMessage\\(message:sendDismissedEvent:\\) belongs to the queue main and was called on "
                 "utility");
}
