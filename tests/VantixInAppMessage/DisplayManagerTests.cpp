#include "tests/Support/LoopbackServer.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <thread>

using namespace vantix;

namespace {

const std::string deciding = "Manager/InAppDisplayManager canShowInAppMessage(message:of:): ";
const std::string busy = deciding +
                         "Currently showing other in-app message. This in-app message will be shown after current one "
                         "is dismissed";
const std::string pausing =
    deciding +
    "We previously displayed an in-app message within a 10.0-second timeframe. We've now introduced a 10.0-second "
    "delay between the last displayed in-app message and the current one. This particular in-app message will only "
    "appear after all queued in-app messages have been displayed and dismissed.";
const std::string inactive = deciding +
                             "Application is not in an active state. This in-app message will be shown after "
                             "application comes to foreground state.";
const std::string noScene =
    "MVVM/View/InAppMessageViewBuilder createInAppWindow(for:): Didn't found active foreground scene";
const std::string changing = "Manager/InAppDisplayManager appStateChanged(_:): ";

class DisplayManagerTest : public ModuleTest {
protected:
    /// A message that is on screen already.
    void show(const Campaign& campaign) {
        push(campaign);
        ASSERT_EQ(shown(), Texts{campaign.scope});
        clear();
    }

    void clear() {
        recorder.takeErrors();
        recorder.takeTold();
        recorder.takeAttributes();
    }

    /// Acts as a button of the message with this call to action, and lets the pause pass.
    void act(const Campaign& campaign, const std::optional<InAppCTA>& cta, std::optional<int> rating = {},
             std::optional<std::string> feedback = {}, std::optional<std::vector<int>> options = {}) {
        displayManager()->handleInAppMessageButtonAction(campaign.payload(), cta, rating, feedback, options);
        settle();
    }
};

}  // namespace

TEST_F(DisplayManagerTest, BeginsWithTheDefaultsAndTellsOfItsObservers) {
    start(ApplicationState::inactive);
    EXPECT_EQ(recorder.takeLog(LogLevel::debug),
              Texts{"Manager/InAppDisplayManager addObserversForAppLifeCycle(): In addObserversForAppLifeCycle of "
                    "InAppDisplayManager"});
    EXPECT_EQ(displayManager()->getCurrentApplicationState(), ApplicationState::inactive);
    EXPECT_EQ(displayManager()->getMinimumDelayBetweenInAppMessages(), 10.0);
    EXPECT_FALSE(displayManager()->getShowingInAppMessageStatus());
    using Type = VantixInAppNotificationType;
    EXPECT_EQ(supportedInAppMessageTypes, (std::array{Type::popup, Type::footer, Type::header, Type::fullScreen,
                                                      Type::rating, Type::feedback, Type::appRating}));
}

TEST_F(DisplayManagerTest, TheNextMessageWaitsForTheDismissalAndTenSeconds) {
    start();
    show({.scope = "1"});
    push({.scope = "2"});
    EXPECT_EQ(recorder.takeErrors(), Texts{busy});
    advance(1000);
    EXPECT_EQ(shown(), Texts{"1"}) << "nothing is dismissed by itself";
    EXPECT_TRUE(tap(Role::close));
    EXPECT_TRUE(shown().empty());
    EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageDismissed 1"});
    push({.scope = "3"});
    EXPECT_EQ(recorder.takeErrors(), Texts{pausing});
    advance(9.999);
    EXPECT_TRUE(shown().empty());
    advance(0.001);
    EXPECT_EQ(shown(), Texts{"2"});
    EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageShown 2"});
    tap(Role::close);
    advance(10);
    EXPECT_EQ(shown(), Texts{"3"});
    tap(Role::close);
    advance(10);
    EXPECT_TRUE(shown().empty());
    push({.scope = "4"});
    EXPECT_EQ(shown(), Texts{"4"}) << "a pause that has ended stands in nobody's way";
}

TEST_F(DisplayManagerTest, ASecondDismissalProlongsThePauseWithoutCancellingIt) {
    start();
    show({.scope = "1"});
    push({.scope = "2"});
    push({.scope = "3"});
    core->dismissInAppMessage(Campaign{.scope = "1"}.payload());
    advance(6);
    core->dismissInAppMessage(Campaign{.scope = "1"}.payload());
    advance(4);
    EXPECT_EQ(shown(), Texts{"2"}) << "the first schedule still holds";
    clear();
    advance(6);
    EXPECT_EQ(recorder.takeErrors(), Texts{busy}) << "the second one tries again";
    EXPECT_EQ(shown(), Texts{"2"});
}

TEST_F(DisplayManagerTest, RefusalsComeInTheirOrder) {
    start(ApplicationState::background);
    push({.scope = "badge", .type = "BADGE"});
    EXPECT_EQ(recorder.takeErrors(), Texts{inactive});
    displayManager()->updateCurrentApplicationState(ApplicationState::inactive);
    displayManager()->showInAppMessage({}, {});
    EXPECT_EQ(recorder.takeErrors(), Texts{inactive});
    displayManager()->updateCurrentApplicationState(ApplicationState::active);
    displayManager()->showInAppMessage({}, {});
    EXPECT_EQ(recorder.takeErrors(), Texts{deciding + "This in-app message ignored as the type of the in-app "
                                                      "message:BADGE is not yet supported"});
    displayManager()->updateCurrentApplicationState(ApplicationState::background);
    displayManager()->dismissInAppMessage(Campaign{}.payload(), false);
    displayManager()->showInAppMessage({}, {});
    EXPECT_EQ(recorder.takeErrors(), Texts{pausing});
    EXPECT_EQ(stored(), Texts{"badge"}) << "what is refused stays";
    EXPECT_TRUE(recorder.takeTold().empty());
}

TEST_F(DisplayManagerTest, WithoutPermissionNothingIsShownOrTold) {
    start();
    NotificationCore::setAllowed(false);
    push({});
    post("INSTANT");
    EXPECT_TRUE(shown().empty());
    EXPECT_TRUE(recorder.takeErrors().empty());
    NotificationCore::setAllowed(true);
    displayManager()->showInAppMessage({}, {});
    EXPECT_EQ(shown(), Texts{"a"});
}

TEST_F(DisplayManagerTest, ABannerWithoutTextIsRemoved) {
    start();
    for (const char* type : {"HEADER", "FOOTER"}) {
        push({.scope = "i", .type = type, .message = ""});
        push({.scope = "e", .event = "buy", .type = type, .message = ""});
        EXPECT_EQ(stored(), Texts{"e"});
        clear();
        post("buy");
        EXPECT_EQ(recorder.takeErrors(),
                  Texts{"Manager/InAppDisplayManager checkForHeaderFooterTypeInAppMessage(message:of:): Header/Footer "
                        "type in-app message has empty message with scope:e. Hence ignoring to show it"});
        EXPECT_TRUE(stored().empty());
        displayManager()->showInAppMessage({}, {});
        EXPECT_TRUE(recorder.takeErrors().empty()) << "it is gone from the queue, too";
    }
    EXPECT_TRUE(shown().empty());
    push({.type = "POPUP", .message = ""});
    EXPECT_EQ(shown(), Texts{"a"});
}

TEST_F(DisplayManagerTest, WithoutASceneItTriesAgainAfterASecond) {
    start();
    scene->setActivationState(SceneActivationState::foregroundInactive);
    push({});
    EXPECT_EQ(recorder.takeErrors(), Texts{noScene});
    post("INSTANT");
    push({.scope = "b"});
    EXPECT_EQ(recorder.takeErrors(), Texts{pausing}) << "until then it counts as a pause";
    advance(1);
    EXPECT_EQ(recorder.takeErrors(), Texts{noScene});
    application->setConnected(false);
    scene->setActivationState(SceneActivationState::foregroundActive);
    advance(1);
    EXPECT_EQ(recorder.takeErrors(), Texts{noScene});
    application->setConnected(true);
    EXPECT_TRUE(recorder.takeTold().empty());
    advance(1);
    EXPECT_EQ(shown(), Texts{"a"});
    EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageShown a"});
}

TEST_F(DisplayManagerTest, TheBackgroundEndsThePause) {
    for (const char* leaving : {ApplicationNotification::willResignActive, ApplicationNotification::didEnterBackground,
                                ApplicationNotification::willTerminate}) {
        SCOPED_TRACE(leaving);
        start();
        show({.scope = "1"});
        push({.scope = "2"});
        tap(Role::close);
        clear();
        notify(leaving);
        EXPECT_EQ(recorder.takeLog(LogLevel::debug),
                  (Texts{changing + "In appStateChanged of InAppDisplayManager with notification " + leaving,
                         changing + " : -> Suspending work item initiated for showing next in-app message: App goes "
                                    "to background"}));
        EXPECT_EQ(displayManager()->getCurrentApplicationState(), ApplicationState::background);
        advance(100);
        EXPECT_TRUE(shown().empty());
        EXPECT_TRUE(recorder.takeErrors().empty()) << "the pause's end is cancelled";
        notify(leaving);
        EXPECT_EQ(recorder.takeLog(LogLevel::debug).size(), 1U) << "without a pause there is none to suspend";
        becomeActive();
        EXPECT_EQ(shown(), Texts{"2"});
        core->userLoggedOut();
        settle();
        core.reset();
    }
}

TEST_F(DisplayManagerTest, BecomingActiveWhileActiveRebuildsNothing) {
    start();
    show({.scope = "1"});
    tap(Role::close);
    InAppRepoHelper::shared()->insert(Campaign{.scope = "stored"}.payload(), {});
    settle();
    clear();
    becomeActive();
    EXPECT_EQ(recorder.takeLog(LogLevel::debug),
              (Texts{changing + "In appStateChanged of InAppDisplayManager with notification didBecomeActive",
                     changing + " : -> App becomes active"}));
    advance(10);
    EXPECT_TRUE(shown().empty());
}

TEST_F(DisplayManagerTest, ALaunchMessageAppearsWhenTheStoreHasAnswered) {
    start(ApplicationState::background);
    push({.scope = "launch", .event = "APP_LAUNCH"});
    clear();
    Platform::current()->notificationCenter->post({ApplicationNotification::didBecomeActive, {}});
    EXPECT_TRUE(shown().empty()) << "the queues were emptied and are not filled yet";
    settle();
    EXPECT_EQ(shown(), Texts{"launch"});
    EXPECT_TRUE(recorder.takeErrors().empty());
    EXPECT_TRUE(stored().empty());
}

TEST_F(DisplayManagerTest, ARebuildThatEndsAtAnotherMomentTriesNothing) {
    start(ApplicationState::background);
    deliver({{.scope = "1"}, {.scope = "2"}});
    auto rebuild = [this] {
        clear();
        queueManager()->updateInAppMessagesOnAppLaunch({});
        settle();
        EXPECT_TRUE(recorder.takeErrors().empty()) << "silently";
    };
    rebuild();
    EXPECT_TRUE(shown().empty()) << "in the background";
    becomeActive();
    ASSERT_EQ(shown(), Texts{"1"});
    rebuild();
    EXPECT_EQ(shown(), Texts{"1"}) << "with a message on screen";
    tap(Role::close);
    rebuild();
    EXPECT_TRUE(shown().empty()) << "during the pause";
    advance(10);
    EXPECT_EQ(shown(), Texts{"2"});
}

TEST_F(DisplayManagerTest, EachCallToActionIsReportedInItsWay) {
    start();
    struct Case {
        std::optional<InAppCTA> cta;
        Texts told;
        bool dismisses = true;
    };
    const std::vector<Case> cases = {
        {{}, {"delivery inAppMessageClicked a"}},
        {InAppCTA{"t", "https://a.example", "EXTERNAL"},
         {"cta EXTERNAL https://a.example a", "open https://a.example", "delivery inAppMessageClicked a"}},
        {InAppCTA{"t", "app://x", "DEEPLINK"},
         {"cta DEEPLINK app://x a", "link app://x", "delivery inAppMessageClicked a"}},
        {InAppCTA{{}, "", "RATING"}, {"behavioral inAppMessageRating a"}},
        {InAppCTA{"t", "x", "FEEDBACK"}, {"behavioral inAppMessageFeedback a"}},
        {InAppCTA{"t", "x", "APPRATING"},
         {"open https://apps.apple.com/app/id4711?action=write-review", "behavioral inAppMessageAppRating a"}},
        {InAppCTA{"t", "x", "CLOSE"}, {"behavioral inAppMessageClose a"}, false},
        {InAppCTA{"t", "x", "external"}, {"behavioral inAppMessageClose a"}, false},
        {InAppCTA{"t", "x", ""}, {"behavioral inAppMessageClose a"}, false},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.cta ? test.cta->type : "none");
        show({});
        act({}, test.cta);
        EXPECT_EQ(recorder.takeTold(), test.told);
        EXPECT_EQ(shown().empty(), test.dismisses);
        EXPECT_EQ(displayManager()->getShowingInAppMessageStatus(), !test.dismisses);
        if (!test.dismisses) displayManager()->dismissInAppMessage(Campaign{}.payload(), false);
        advance(10);
        EXPECT_TRUE(recorder.takeTold().empty()) << "no dismissal is reported";
        EXPECT_TRUE(recorder.takeErrors().empty());
    }
}

TEST_F(DisplayManagerTest, ReportsCarryWhatThePersonGave) {
    start();
    act({}, InAppCTA{{}, "", "RATING"}, 0, "unused", std::vector{1});
    act({}, InAppCTA{{}, "", "FEEDBACK"}, 3, "good", std::vector{0, 2});
    act({}, InAppCTA{{}, "", "FEEDBACK"}, {}, {}, std::vector<int>());
    act({}, {}, 4, "unused", std::vector{1});
    auto message = Campaign{}.payload();
    auto expected = [&](std::optional<int> rating, std::optional<std::string> feedback, std::vector<int> options) {
        return InAppMessagingCore::getAttributesForEventReporting(message, false, rating, feedback, options);
    };
    EXPECT_EQ(recorder.takeAttributes(), (std::vector{expected(0, {}, {}), expected({}, "good", {0, 2}),
                                                      expected({}, {}, {}), expected({}, {}, {})}));
}

TEST_F(DisplayManagerTest, WithoutAStoreIdTheReviewPageStaysShut) {
    for (std::optional<std::string> appStoreId : {std::optional<std::string>(), std::optional<std::string>("")}) {
        configuration->setAppStoreId(appStoreId);
        start();
        show({});
        act({}, InAppCTA{"Rate", "", "APPRATING"});
        EXPECT_EQ(recorder.takeErrors(),
                  appStoreId ? Texts{}
                             : Texts{"Manager/InAppDisplayManager goToAppReviewAndRating(with:): Failed to open review "
                                     "and rating page on App store as application Id is not provided."});
        EXPECT_EQ(recorder.takeTold(), appStoreId ? (Texts{"open https://apps.apple.com/app/id?action=write-review",
                                                           "behavioral inAppMessageAppRating a"})
                                                  : Texts{})
            << "an empty id is an id";
        EXPECT_TRUE(shown().empty());
        core.reset();
    }
}

TEST_F(DisplayManagerTest, InTheTestEnvironmentMessagesAreShownWithoutAWindow) {
    start(ApplicationState::active, Env::unittest);
    application->setConnected(false);
    push({.scope = "1"});
    push({.scope = "2"});
    EXPECT_TRUE(displayManager()->getShowingInAppMessageStatus());
    EXPECT_TRUE(shown().empty());
    EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageShown 1"});
    EXPECT_EQ(recorder.takeErrors(), Texts{busy});
    core->dismissInAppMessage(Campaign{.scope = "1"}.payload());
    advance(10);
    EXPECT_EQ(recorder.takeTold(), (Texts{"delivery inAppMessageDismissed 1", "delivery inAppMessageShown 2"}));
}

TEST_F(DisplayManagerTest, ResetForgetsThePauseAndTheMessageButLeavesTheWindow) {
    start();
    show({.scope = "1"});
    displayManager()->reset();
    EXPECT_FALSE(displayManager()->getShowingInAppMessageStatus());
    EXPECT_EQ(shown(), Texts{"1"});
    tap(Role::close);
    displayManager()->reset();
    push({.scope = "2"});
    EXPECT_EQ(shown(), Texts{"2"});
    advance(100);
    EXPECT_EQ(shown(), Texts{"2"});
}

TEST_F(DisplayManagerTest, OnlyABannerGoesWithItsLostImage) {
    LoopbackServer server;
    server.reply("/damaged", {.body = FakeImageDecoder::encode(4, 4, "damaged")});
    server.reply("/whole", {.body = FakeImageDecoder::encode(4, 4)});
    LoopbackServer untrusted(LoopbackServer::Security::selfSigned);
    start();
    // A banner's image text only has to name https somewhere.
    const std::string https = "?https:";
    struct Case {
        std::string type;
        std::string image;
        bool isRemoved;
    };
    const std::vector<Case> cases = {
        {"HEADER", server.url("/damaged" + https), true}, {"FOOTER", server.url("/missing" + https), true},
        {"HEADER", untrusted.url("/whole"), true},        {"HEADER", server.url("/whole" + https), false},
        {"HEADER", "ftp://127.0.0.1/" + https, false},    {"FOOTER", "https: no url", false},
        {"POPUP", server.url("/missing"), false},         {"FULLSCREEN", server.url("/damaged"), false},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.image);
        clear();
        auto message = Campaign{.event = "buy", .type = test.type, .image = test.image}.payload();
        std::optional<bool> inserted;
        core->silentPushListener(message, [&](bool outcome) { inserted = outcome; });
        settle();
        EXPECT_EQ(inserted, true) << "a lost image is no failed insert";
        EXPECT_EQ(recorder.takeErrors(),
                  test.isRemoved ? Texts{"Manager/InAppDisplayManager "
                                         "downloadImageAsynchronously(for:imageURL:dispatchGroup:): Removed the in-app "
                                         "message " +
                                         message.description() + " of type " + test.type +
                                         " as downloading failed for image with url " + test.image}
                                 : Texts{});
        EXPECT_EQ(stored().empty(), test.isRemoved);
        EXPECT_EQ(queueManager()->getInAppMessage("buy", {}).has_value(), !test.isRemoved);
        core->userLoggedOut();
        settle();
    }
}

TEST_F(DisplayManagerTest, AnImageMayBeFetchedWithoutWaiting) {
    LoopbackServer server;
    start();
    auto message = Campaign{.image = server.url("/p")}.payload();
    displayManager()->downloadInAppMessageImageIfAvailable(message, true);
    displayManager()->downloadInAppMessageImageIfAvailable(Campaign{.image = ""}.payload(), false);
    displayManager()->downloadInAppMessageImageIfAvailable(Campaign{.image = "a b"}.payload(), false);
    settle();
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(DisplayManagerTest, TearDownTakesEverythingAwayAndLeaksNothing) {
    start();
    show({.scope = "1"});
    push({.scope = "2"});
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
    settle();
    clear();
    advance(100);
    EXPECT_TRUE(shown().empty());
    EXPECT_TRUE(recorder.takeErrors().empty()) << "no timer is left";

    Texts before = stored();
    core->silentPushListener(Campaign{.scope = "late"}.payload());
    settle();
    EXPECT_EQ(stored(), before) << "nothing is taken in any more";
    queueManager()->insert(Campaign{.scope = "later"}.payload(), {});
    settle();
    displayManager()->showInAppMessage({}, {});
    EXPECT_EQ(recorder.takeErrors(), Texts{"Manager/InAppDisplayManager createInAppWindow(for:): Unexpectedaly found "
                                           "nil object of type InAppMessageViewBuilder"});
    core.reset();
    EXPECT_TRUE(manager.expired());
    EXPECT_TRUE(queues.expired());
}

TEST_F(DisplayManagerTest, TheCoreMayBeReleasedOnAnyThread) {
    start();
    show({});
    std::weak_ptr<InAppDisplayManager> manager = displayManager();
    std::thread([last = std::move(core)]() mutable { last.reset(); }).join();
    EXPECT_EQ(shown(), Texts{"a"}) << "windows belong to the main thread";
    settle();
    EXPECT_TRUE(shown().empty());
    EXPECT_TRUE(manager.expired());
}

TEST_F(DisplayManagerTest, ThePublicOperationsMayBeCalledOnAnyThread) {
    start();
    show({.scope = "1"});
    push({.scope = "2"});
    auto elsewhere = [this](auto call) {
        std::thread(call).join();
        settle();
    };
    elsewhere([&] { core->dismissInAppMessage(Campaign{.scope = "1"}.payload()); });
    EXPECT_TRUE(shown().empty());
    advance(10);
    elsewhere([&] { core->handleInAppMessageButtonAction(Campaign{.scope = "2"}.payload()); });
    EXPECT_TRUE(shown().empty());
    push({.scope = "3", .event = "buy"});
    advance(10);
    elsewhere([&] { Vantix::captureEvent("buy"); });
    EXPECT_EQ(shown(), Texts{"3"});
    EXPECT_EQ(recorder.takeTold(), (Texts{"delivery inAppMessageDismissed 1", "delivery inAppMessageShown 2",
                                          "delivery inAppMessageClicked 2", "delivery inAppMessageShown 3"}));
}

TEST_F(DisplayManagerTest, AnOperationOfTheMainThreadStopsTheProcessElsewhere) {
    // A fork alone would have lost the threads of the parent.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    start();
    auto dismissElsewhere = [this] {
        std::thread([this] { displayManager()->dismissInAppMessage(Campaign{}.payload()); }).join();
    };
    EXPECT_DEATH(dismissElsewhere(), "belongs to the main thread");
}
