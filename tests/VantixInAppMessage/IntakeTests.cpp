#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixError.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using IntakeTest = ModuleTest;

namespace {

const std::string receiving =
    "Core/InAppMessagingCore inAppMessaseReceived(message:showInAppImmediately:completion:): ";

std::string insecureImage(const std::string& scope, const std::string& image) {
    return receiving +
           "Header and Footer type in-app message with image should have valid image URL. Seems like the in-app "
           "message with scope " +
           scope + " has invalid image URL:" + image +
           ". So we are ignoring this in-app message and not storing it in the database.";
}

Texts takeLinesOf(Recorder& recorder, LogLevel level, const std::string& start) {
    Texts lines = recorder.takeLog(level);
    std::erase_if(lines, [&](const std::string& line) { return !line.starts_with(start); });
    return lines;
}

}  // namespace

TEST_F(IntakeTest, APushIsToldStoredAndShownAtOnce) {
    start();
    push({});
    EXPECT_EQ(shown(), Texts{"a"});
    EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageShown a"});
    EXPECT_EQ(roles(), "card title message button close");
    EXPECT_TRUE(stored().empty()) << "what is shown is forgotten";

    const Dictionary dropped{{"x", 1}};
    recorder.takeErrors();
    receive(dropped);
    EXPECT_EQ(
        recorder.takeLog(LogLevel::debug),
        (Texts{"Core/InAppMessagingCore handleSilentPushNotification(with:): \u2705-Notification Payload: {\"x\":1}",
               "Core/InAppMessagingCore handleSilentPushNotification(with:): \u2705-Processing Selvane InApp "
               "message"}));
}

TEST_F(IntakeTest, APushWithoutScopeOrEventIsDroppedButADeliveryIsStored) {
    start();
    for (const Campaign& campaign : {Campaign{.scope = ""}, Campaign{.event = ""}}) {
        push(campaign);
        core->silentPushListener(campaign.payload(), [](bool) { FAIL() << "nothing was received"; });
        settle();
        EXPECT_TRUE(stored().empty());
        deliver({campaign});
        EXPECT_EQ(stored(), Texts{campaign.scope});
        core->userLoggedOut();
        settle();
    }
    EXPECT_TRUE(shown().empty());
}

TEST_F(IntakeTest, OnlyInAppDeliveriesAreStoredAndNoneIsShown) {
    start();
    notificationCore->deliver({});
    std::vector<VantixNotificationPayload> delivered;
    for (const char* type : {"inapp", "push", "INAPP", "inapp"}) {
        delivered.emplace_back(type, Campaign{.scope = type + std::to_string(delivered.size())}.push());
    }
    notificationCore->deliver(delivered);
    settle();
    EXPECT_EQ(stored(), (Texts{"inapp0", "inapp3"}));
    EXPECT_TRUE(shown().empty());
    EXPECT_EQ(core->getReceiverType(), NotificationReceiverType::inAppMessages);
    push({.scope = "b"});
    EXPECT_EQ(shown(), Texts{"inapp0"}) << "the oldest milestone message comes first";
}

TEST_F(IntakeTest, BannersTakeASecureImageOnly) {
    start();
    struct Case {
        std::string type;
        std::string image;
        bool accepted;
    };
    const std::vector<Case> cases = {
        {"HEADER", "http://127.0.0.1:1/p", false},
        {"FOOTER", "http://127.0.0.1:1/p", false},
        {"HEADER", "https", false},
        {"FOOTER", " ", false},
        {"HEADER", "", true},
        {"FOOTER", "HTTPS:", true},
        {"HEADER", "xhttps:x y", true},
        {"POPUP", "http://127.0.0.1:1/p", true},
        {"BADGE", "nonsense of a url", true},
    };
    for (const Case& test : cases) {
        recorder.takeErrors();
        std::optional<bool> outcome;
        core->silentPushListener(Campaign{.event = "buy", .type = test.type, .image = test.image}.payload(),
                                 [&](bool inserted) { outcome = inserted; });
        settle();
        EXPECT_EQ(outcome, test.accepted ? std::optional(true) : std::nullopt) << test.image;
        Texts errors = recorder.takeErrors();
        EXPECT_EQ(errors, test.accepted ? Texts{} : Texts{insecureImage("a", test.image)}) << test.image;
        EXPECT_EQ(stored().size(), test.accepted ? 1U : 0U) << test.type << test.image;
        core->userLoggedOut();
        settle();
    }
}

TEST_F(IntakeTest, AnInsertIsToldWithItsPayload) {
    start();
    auto message = Campaign{.event = "buy"}.payload();
    core->silentPushListener(message);
    settle();
    EXPECT_EQ(recorder.takeLog(LogLevel::info),
              Texts{receiving + "Successfully inserted the in-app message with payload " + message.description()});
}

TEST_F(IntakeTest, AFailedInsertIsToldAndAnswered) {
    makeStoreUnusable();
    start();
    auto message = Campaign{}.payload();
    std::vector<bool> outcomes;
    core->silentPushListener(message, [&](bool inserted) { outcomes.push_back(inserted); });
    core->silentPushListener(message);
    core->userLoggedOut();
    settle();
    EXPECT_EQ(outcomes, std::vector{false});
    const std::string line =
        receiving + "Error while inserting the in-app message with payload " + message.description();
    Texts errors = recorder.takeErrors();
    ASSERT_EQ(errors.size(), 6U);
    EXPECT_EQ(errors[1], line);
    EXPECT_EQ(errors[3], line);
    EXPECT_EQ(errors[5],
              "Core/InAppMessagingCore removeAllInAppMessages(): Error while deleting all the in-app messages");
    EXPECT_TRUE(shown().empty());
}

TEST_F(IntakeTest, AnEventShowsTheMessageThatWaitsForIt) {
    start();
    push({.scope = "rich", .event = "buy", .attributes = {{"price", 3}}});
    EXPECT_TRUE(shown().empty());
    for (const auto& [event, attributes] : std::vector<std::pair<std::string, std::optional<Dictionary>>>{
             {"sell", {}}, {"buy", {}}, {"buy", Dictionary{{"price", 4}}}, {"BUY", Dictionary{{"price", 3}}}}) {
        post(event, attributes);
        EXPECT_TRUE(shown().empty()) << event;
    }
    auto& center = *Platform::current()->notificationCenter;
    center.post({VantixNotification::didCaptureInAppTrigger, {}});
    center.post({VantixNotification::didCaptureInAppTrigger, std::string("buy")});
    center.post({VantixNotification::didCaptureInAppTrigger, std::shared_ptr<const EventProtocol>()});
    settle();
    EXPECT_TRUE(recorder.takeErrors().empty());
    post("buy", Dictionary{{"price", 3.0}, {"extra", nullptr}});
    EXPECT_EQ(shown(), Texts{"rich"});
    EXPECT_EQ(stored(), Texts{"rich"}) << "asked for without attributes it is not found again";
}

TEST_F(IntakeTest, TwoEventsInSuccessionShowOneMessage) {
    LoopbackServer server;
    server.reply("/p", {.body = FakeImageDecoder::encode(40, 20)});
    start();
    push({.scope = "1", .event = "buy", .image = server.url("/p")});
    push({.scope = "2", .event = "sell"});
    recorder.takeErrors();
    Vantix::captureEvent("buy");
    Vantix::captureEvent("sell");
    Vantix::captureEvent("buy");
    EXPECT_EQ(shown(), Texts{"1"});
    settle();
    EXPECT_EQ(shown(), Texts{"1"});
    EXPECT_EQ(recorder.takeErrors(),
              Texts{"Manager/InAppDisplayManager canShowInAppMessage(message:of:): Currently showing other in-app "
                    "message. This in-app message will be shown after current one is dismissed"})
        << "the third event finds nothing any more";
    EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageShown 1"});
}

TEST_F(IntakeTest, AMessageShownByItsPushHasItsImage) {
    LoopbackServer server;
    server.reply("/p", {.body = FakeImageDecoder::encode(40, 20)});
    start();
    std::size_t requestsWhenShown = 0;
    scene->setOnShown([&](const HostedView&) { requestsWhenShown = server.requests().size(); });
    push({.image = server.url("/p")});
    EXPECT_EQ(shown(), Texts{"a"});
    EXPECT_EQ(requestsWhenShown, 1U);
    EXPECT_EQ(server.requests().size(), 1U) << "the template finds it in the cache";
}

TEST_F(IntakeTest, LoggingOutRemovesMessagesAndImagesButWhatIsShown) {
    LoopbackServer server;
    server.reply("/p", {.body = FakeImageDecoder::encode(40, 20)});
    start();
    push({.scope = "shown"});
    push({.scope = "waiting", .event = "buy", .image = server.url("/p")});
    push({.scope = "foreign", .cuid = "x"});
    recorder.takeErrors();
    core->userLoggedOut();
    settle();
    EXPECT_EQ(
        recorder.takeLog(LogLevel::debug),
        (Texts{"Manager/InAppRepoHelper removeAllMessages(completion:): Successfully deleted all the in-app "
               "messages",
               "Core/InAppMessagingCore removeAllInAppMessages(): Successfully deleted all the in-app messages"}));
    EXPECT_EQ(shown(), Texts{"shown"});
    post("buy");
    EXPECT_TRUE(tap(Role::close));
    advance(10);
    EXPECT_TRUE(shown().empty());
    push({.scope = "next", .image = server.url("/p")});
    EXPECT_EQ(server.requests().size(), 2U) << "the image is fetched anew";
    EXPECT_EQ(shown(), Texts{"next"}) << "the core is still registered";
}

TEST_F(IntakeTest, ACoreWithoutPushLibraryTakesDecodedPayloads) {
    configuration->setNotificationCore({});
    start();
    push({});
    deliver({{}});
    EXPECT_TRUE(stored().empty());
    core->silentPushListener(Campaign{}.payload());
    settle();
    EXPECT_EQ(shown(), Texts{"a"});
}

TEST_F(IntakeTest, ThePlaceholderIsReadEachTime) {
    start();
    EXPECT_EQ(core->getPlaceholderImage(), std::nullopt);
    Image image = vectorImage("<svg/>");
    configuration->setPlaceholderImage(image);
    EXPECT_EQ(core->getPlaceholderImage(), image);
}

TEST_F(IntakeTest, AThrowingCoreLibraryLeavesNothingBehind) {
    configuration->setVantixConfig({});
    EXPECT_THROW(start(), VantixError);
    push({});
    post("INSTANT");
    becomeActive();
    EXPECT_TRUE(stored().empty());
    EXPECT_TRUE(recorder.takeLog(LogLevel::debug).empty());
}

TEST_F(IntakeTest, AReleasedCoreAnswersNobody) {
    start();
    bool answered = false;
    core->silentPushListener(Campaign{}.payload(), [&](bool) { answered = true; });
    core->userLoggedOut();
    std::weak_ptr<InAppMessagingCore> gone = core;
    core.reset();
    EXPECT_TRUE(gone.expired());
    settle();
    push({.scope = "b"});
    EXPECT_FALSE(answered);
    EXPECT_TRUE(shown().empty());
    EXPECT_TRUE(takeLinesOf(recorder, LogLevel::debug, "Core/").empty());
}

TEST_F(IntakeTest, HostilePushesDegradeToDefaults) {
    start(ApplicationState::background);
    const std::string mebibyte(1 << 20, 'x');
    auto nested = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    auto pushOf = [](const std::string& scope, const std::string& trigger, const std::string& body) {
        return Dictionary{{"scope", scope}, {"cuid", "customer"}, {"trigger", trigger}, {"body", body}};
    };
    const std::string buy = R"({"eventName":"buy"})";
    const std::vector<Dictionary> kept = {
        pushOf("deep", R"({"eventName":"buy","attributes":{"a":)" + nested(509) + "}}", "{}"),
        pushOf("too deep", buy, R"({"type":"POPUP","x":)" + nested(100000) + "}"),
        pushOf("open", buy, std::string(1 << 20, '[')),
        pushOf("long", R"({"eventName":")" + mebibyte + "\"}", R"({"message":")" + mebibyte + "\"}"),
        pushOf(mebibyte, buy, "{\"message\":\"\xFF\xC0\x80\xED\xA0\x80\"}"),
        pushOf("\xFF\xFE\x00\x80", buy, "\xFF"),
        {{"scope", "any"},
         {"cuid", "customer"},
         {"trigger", buy},
         {"\xFF", "\xFF"},
         {"body", 1},
         {"template", List{1}}},
    };
    for (const Dictionary& notification : kept) receive(notification);
    EXPECT_EQ(stored().size(), kept.size());
    const std::vector<Dictionary> dropped = {
        {{"scope", 7}, {"trigger", buy}},
        {{"scope", List{"a"}}, {"trigger", buy}},
        pushOf("x", R"({"eventName":["buy"]})", "{}"),
        pushOf("x", "{\"eventName\":\"b\xFFy\"}", "{}"),
        pushOf("x", nested(600), "{}"),
        {{"scope", Value::opaque(std::any(1))}, {"host", Value::opaque(std::any(1))}},
    };
    for (const Dictionary& notification : dropped) receive(notification);
    EXPECT_EQ(stored().size(), kept.size());
    becomeActive();
    post("buy");
    post(mebibyte);
    EXPECT_TRUE(shown().empty()) << "they are all badges";
}

TEST_F(IntakeTest, ReportsCarrySixAttributesAndWhatIsGiven) {
    auto message = Campaign{}.payload();
    message.gateway = NotificationGateway::apns;
    auto attributes = [&](auto... arguments) {
        return toJSON(InAppMessagingCore::getAttributesForEventReporting(message, arguments...));
    };
    const std::string start = R"({"scope":"a","cuid":"customer","senderId":"sender","result":"success")";
    const std::string end = R"(,"messageId":"id-a","gateway":"fcm"})";
    using Options = std::vector<int>;
    EXPECT_EQ(attributes(), start + end);
    EXPECT_EQ(attributes(true), start + R"(,"type":"inapp")" + end);
    EXPECT_EQ(attributes(false, 0, "", Options{}), start + R"(,"rating":0,"feedback":"")" + end);
    EXPECT_EQ(attributes(true, 5, "good", Options{0, 2}),
              start + R"(,"type":"inapp","rating":5,"feedback":"good","feedbackOptions":[0,2])" + end);
}
