#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixError.h"
#include "VantixInAppMessage/Core/InAppMessageObjections.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using IntakeTest = ModuleTest;

TEST_F(IntakeTest, AnEventMayComeSharedOrAsItIs) {
    start();
    auto& center = *Platform::current()->notificationCenter;
    auto post = [&](std::any object) { center.post({VantixNotification::didCaptureInAppTrigger, std::move(object)}); };
    push({.event = "buy"});
    for (const std::any& nothing : {std::any(), std::any(std::string("buy")), std::any(1),
                                    std::any(std::shared_ptr<const EventProtocol>()), std::any(EventProtocol{})}) {
        post(nothing);
    }
    center.post({"another", EventProtocol{"buy", {}}});
    EXPECT_TRUE(shown().empty());
    post(EventProtocol{"buy", {}});
    EXPECT_EQ(shown(), Texts{"a"});
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
        {{"scope", "any"}, {"cuid", "customer"}, {"trigger", buy}, {"\xFF", "\xFF"}, {"body", 1}},
    };
    for (const Dictionary& notification : kept) receive(notification);
    EXPECT_EQ(stored().size(), kept.size());
    const auto opaque = Value::opaque(std::any(1));
    for (const Dictionary& notification :
         {Dictionary{{"scope", 7}, {"trigger", buy}}, pushOf("x", R"({"eventName":["buy"]})", "{}"),
          pushOf("x", "{\"eventName\":\"b\xFFy\"}", "{}"), pushOf("x", nested(600), "{}"),
          Dictionary{{"scope", opaque}, {"host", opaque}}}) {
        receive(notification);
    }
    EXPECT_EQ(stored().size(), kept.size());
    becomeActive();
    post("buy");
    post(mebibyte);
    EXPECT_TRUE(shown().empty()) << "they are all badges";
}

TEST_F(IntakeTest, WhatKeepsAMessageOutIsSaidInWords) {
    using Words = std::optional<std::string>;
    struct Case {
        Campaign campaign;
        Words objection;
    };
    for (const Case& test :
         {Case{{}, {}},
          {{.scope = ""}, "a message without scope is not stored"},
          {{.event = ""}, "a message whose trigger names no event is not stored"},
          {{.type = "FOOTER", .image = "http://a"}, "a message of type FOOTER whose image is not https is not stored"},
          {{.type = "popup"}, "a message of type BADGE, or of a type that nobody knows, is never shown"},
          {{.type = "HEADER", .message = ""}, "a message of type HEADER without message text is never shown"}}) {
        EXPECT_EQ(firstObjection(test.campaign.payload()), test.objection);
    }
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
    EXPECT_EQ(attributes(false, 0, "", Options{}), start + R"(,"rating":0,"feedback":"")" + end);
    EXPECT_EQ(attributes(true, 5, "good", Options{0, 2}),
              start + R"(,"type":"inapp","rating":5,"feedback":"good","feedbackOptions":[0,2])" + end);
}
