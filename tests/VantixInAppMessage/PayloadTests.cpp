#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/InAppMessage.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <any>
#include <regex>

using namespace vantix;

using PayloadTest = ModuleTest;
using Payload = VantixInAppMessagePayload;

namespace {

const std::string errorPrefix = "Core/InAppMessagePayload/VantixInAppMessagePayload generate(from:): ";
const std::string noCTAs = errorPrefix + "CTA data not available due to invalid json response";

const Dictionary completePush{
    {"senderSource", "source"},
    {"scope", "s"},
    {"custom", "{}"},
    {"priority", "1"},
    {"validity", "2030"},
    {"messageId", "m"},
    {"gateway", "apns"},
    {"cuid", "c"},
    {"senderId", "sender"},
    {"campaignId", "campaign"},
    {"variationId", "variation"},
    {"trigger", R"({"eventName":"buy","attributes":{"n":9007199254740993,"deep":[{"x":null}]}})"},
    {"body", R"({"type":"FEEDBACK","title":"T","message":"M","image":"https://i",
                 "ctas":[{"type":"DEEPLINK","action":"app://x","actionText":"Go"},{"type":"RATING"}],
                 "feedbackOptions":{"selectionType":"multiSelection","options":["yes","no"]}})"},
    {"accountId", "account"},
    {"template", R"({"phoneBackgroundColor":"#112233"})"},
};

/// The decoded push without its random identifier.
Payload decode(const Dictionary& push) {
    Payload payload = Payload::generate(push);
    payload.imageIdentifier.clear();
    return payload;
}

Texts keys(const Dictionary& dictionary) {
    Texts names;
    for (const auto& [key, value] : dictionary) names.push_back(key);
    return names;
}

}  // namespace

TEST_F(PayloadTest, WordsOfTheWireAreExact) {
    using Type = VantixInAppNotificationType;
    const std::vector<std::pair<Type, std::string>> types = {
        {Type::badge, "BADGE"},       {Type::popup, "POPUP"},        {Type::fullScreen, "FULLSCREEN"},
        {Type::header, "HEADER"},     {Type::footer, "FOOTER"},      {Type::rating, "RATING"},
        {Type::feedback, "FEEDBACK"}, {Type::appRating, "APPRATING"}};
    for (const auto& [type, word] : types) {
        EXPECT_EQ(rawValue(type), word);
        EXPECT_EQ(inAppNotificationType(word), type);
    }
    EXPECT_EQ(inAppNotificationTriggerType("INSTANT"), VantixInAppNotificationTriggerType::instant);
    EXPECT_EQ(inAppNotificationTriggerType("APP_LAUNCH"), VantixInAppNotificationTriggerType::appLaunch);
    EXPECT_EQ(inAppFeedbackSelectionType("singleSelection"), InAppFeedbackSelectionType::singleSelection);
    EXPECT_EQ(inAppFeedbackSelectionType("multiSelection"), InAppFeedbackSelectionType::multiSelection);
    for (const char* word : {"", "popup", "Popup", "POPUP ", "FULL_SCREEN"}) EXPECT_FALSE(inAppNotificationType(word));
    for (const char* word : {"", "instant", "APPLAUNCH"}) EXPECT_FALSE(inAppNotificationTriggerType(word));
    for (const char* word : {"", "MULTISELECTION"}) EXPECT_FALSE(inAppFeedbackSelectionType(word));
}

TEST_F(PayloadTest, TheImageIdentifierIsNewForEachDecoding) {
    EXPECT_EQ(Payload::generate(Dictionary()), Payload());
    const std::regex uuid("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}-", std::regex::icase);
    for (const auto& [push, scope] : std::vector<std::pair<Dictionary, std::string>>{
             {{{"unknown", 1}}, ""}, {{{"scope", "s-1"}, {"imageIdentifier", "mine"}}, "s-1"}}) {
        std::string first = Payload::generate(push).imageIdentifier;
        std::string prefix = first.substr(0, first.size() - scope.size());
        EXPECT_TRUE(std::regex_match(prefix, uuid)) << first;
        EXPECT_TRUE(first.ends_with("-" + scope)) << first;
        EXPECT_NE(Payload::generate(push).imageIdentifier, first);
    }
}

TEST_F(PayloadTest, DecodesTextsAndEncodesNestedDictionaries) {
    Payload payload = Payload::generate(completePush);
    EXPECT_EQ(payload.gateway, NotificationGateway::apns);
    EXPECT_EQ(payload.campaignId, "campaign");
    EXPECT_EQ(payload.trigger.textRepresentation, *completePush.text("trigger"));
    EXPECT_EQ(payload.body.textRepresentation, *completePush.text("body"));
    EXPECT_EQ(payload.style.textRepresentation, *completePush.text("template"));
    EXPECT_EQ(payload.isRead, "");
    EXPECT_EQ(payload.createdAt, std::nullopt);
    EXPECT_TRUE(recorder.takeErrors().empty());

    Dictionary json = payload.getJSON();
    Texts expected = keys(completePush);
    expected.push_back("imageIdentifier");
    EXPECT_EQ(keys(json), expected);
    for (const auto& [key, value] : completePush) {
        if (key != "trigger" && key != "body" && key != "template") {
            EXPECT_EQ(*json.find(key), value) << key;
        }
    }
    EXPECT_EQ(toJSON(*json.find("trigger")),
              R"({"eventName":"buy","attributes":{"n":9007199254740993,"deep":[{"x":null}]}})");
    EXPECT_EQ(toJSON(*json.find("body")),
              R"({"type":"FEEDBACK","title":"T","message":"M","image":"https://i",)"
              R"("ctas":[{"type":"DEEPLINK","actionText":"Go","action":"app://x"},)"
              R"({"type":"RATING","actionText":"","action":""}],)"
              R"("feedbackOptions":{"selectionType":"multiSelection","options":["yes","no"]}})");
    EXPECT_EQ(*json.dictionary("template")->text("phoneBackgroundColor"), "#112233");

    Payload again = Payload::generate(json);
    EXPECT_EQ(again.trigger, NotificationTrigger()) << "only texts are decoded";
    EXPECT_EQ(again.body, InAppBody());
    EXPECT_EQ(again.style, InAppMessageStyle());
    EXPECT_EQ(again.senderID, "sender");

    payload.campaignId.reset();
    payload.variationId.reset();
    EXPECT_FALSE(payload.getJSON().find("campaignId") || payload.getJSON().find("variationId"));
}

TEST_F(PayloadTest, AValueOfAnotherKindIsNoValue) {
    const std::vector<Value> others = {
        nullptr, true, 1, 1.5, List{"a"}, Dictionary{{"eventName", "e"}}, Value::opaque(std::any(std::string("a")))};
    for (const auto& [key, text] : completePush) {
        for (const Value& other : others) {
            EXPECT_EQ(decode({{key, other}}), Payload()) << key << toJSON(other);
        }
    }
    EXPECT_EQ(decode({{"gateway", "pigeon"}}).gateway, NotificationGateway::fcm);
    EXPECT_EQ(decode({{"gateway", "APNS"}}).gateway, NotificationGateway::fcm);
    EXPECT_TRUE(recorder.takeErrors().empty()) << "silently";
}

TEST_F(PayloadTest, ANestedTextThatIsNoObjectIsTheDefaultAndOneLine) {
    struct Nested {
        const char* key;
        std::string source;
        std::string unreadable;
        std::string noObject;
    };
    const std::vector<Nested> nested = {
        {"trigger", errorPrefix, "error occurred during json generation for Trigger:",
         "NotificationTrigger not available due to invalid json response"},
        {"body", errorPrefix,
         "error occurred during json generation for Body:", "body not available due to invalid json response"},
        {"template", "Core/InAppMessagePayload/InAppMessageStyle generate(from:): ",
         "error occurred during json generation for InAppMessageStyle:",
         "InAppMessageStyle not available due to invalid json response"},
    };
    const Texts unreadable = {"",
                              " ",
                              "{",
                              "{\"a\":1,}",
                              "{} x",
                              "nul",
                              "\xEF\xBB\xBF{}",
                              "{\"title\":\"\xFF\"}",
                              "{\"title\":\"\\ud800\"}",
                              "{'a':1}",
                              std::string("{}\0", 3),
                              "{\"a\":" + std::string(600, '[') + std::string(600, ']') + "}"};
    for (const Nested& field : nested) {
        for (const std::string& text : unreadable) {
            EXPECT_EQ(decode({{field.key, text}}), Payload()) << text;
            EXPECT_EQ(recorder.takeErrors(),
                      Texts{field.source + field.unreadable + parseJSON(text).error().localizedDescription})
                << text;
        }
        for (const char* text : {"[]", "[{}]", "7", "null", "true", "\"x\""}) {
            EXPECT_EQ(decode({{field.key, text}}), Payload()) << text;
            EXPECT_EQ(recorder.takeErrors(), Texts{field.source + field.noObject}) << text;
        }
    }
}

TEST_F(PayloadTest, BodyFieldsOfAWrongKindAreLeftOut) {
    struct Case {
        std::string text;
        std::function<void(InAppBody&)> fill;
        bool logsMissingCTAs = false;
    };
    auto nothing = [](InAppBody&) {};
    const std::vector<Case> cases = {
        {R"({})", nothing, true},
        {R"({"ctas":[]})", nothing},
        {R"({"type":"popup","title":1,"message":null,"image":["x"],"ctas":{}})", nothing, true},
        {R"({"type":"APPRATING","title":"t","ctas":[]})",
         [](InAppBody& body) {
             body.type = VantixInAppNotificationType::appRating;
             body.title = "t";
         }},
        {R"({"ctas":[{"type":"RATING","action":1,"actionText":2},{}]})",
         [](InAppBody& body) {
             body.ctas = {{"", "", "RATING"}, {"", "", ""}};
         }},
        {R"({"ctas":[{"type":"RATING"},"x"]})", nothing, true},
        {R"({"ctas":[{"type":"RATING"},null]})", nothing, true},
        {R"({"ctas":[],"feedbackOptions":{"selectionType":"multiSelection"}})",
         [](InAppBody& body) { body.feedback.selectionType = InAppFeedbackSelectionType::multiSelection; }},
        {R"({"ctas":[],"feedbackOptions":{"selectionType":"all","options":["a","a",""]}})",
         [](InAppBody& body) {
             body.feedback.options = {"a", "a", ""};
         }},
        {R"({"ctas":[],"feedbackOptions":{"options":["a",1]}})", nothing},
        {R"({"ctas":[],"feedbackOptions":["a"]})", nothing},
    };
    for (const Case& test : cases) {
        InAppBody expected;
        expected.textRepresentation = test.text;
        test.fill(expected);
        EXPECT_EQ(InAppBody::generate(test.text), expected) << test.text;
        EXPECT_EQ(recorder.takeErrors(), test.logsMissingCTAs ? Texts{noCTAs} : Texts{}) << test.text;
    }
    EXPECT_EQ(NotificationTrigger::generate(R"({"eventName":7,"attributes":[1]})").eventName, "");
    EXPECT_TRUE(NotificationTrigger::generate(R"({"attributes":[1]})").attributes.isEmpty());
}

TEST_F(PayloadTest, ACallToActionOfItsOwnMayLackItsText) {
    auto ctas = InAppCTA::generate(std::vector<Dictionary>{{{"type", "RATING"}}, {{"actionText", "x"}}});
    EXPECT_EQ(ctas, (std::vector<InAppCTA>{{{}, "", "RATING"}, {"x", "", ""}}));
    EXPECT_EQ(toJSON(InAppCTA::getJSON(ctas)),
              R"([{"type":"RATING","action":""},{"type":"","actionText":"x","action":""}])");
    CTA converted = InAppCTA{"text", "action", "type"}.generateCTA();
    EXPECT_EQ(converted.actionText, "text");
    EXPECT_EQ(converted.action, "action");
    EXPECT_EQ(converted.type, "type");
    EXPECT_TRUE(recorder.takeErrors().empty());
    EXPECT_TRUE(InAppCTA::generate({}).empty());
    EXPECT_EQ(recorder.takeErrors(), Texts{noCTAs});
}

TEST_F(PayloadTest, OnlyAValidReferenceIsAnImageURL) {
    const std::vector<std::pair<std::string, bool>> cases = {{"https://a.example/p.png?x=1#f", true},
                                                             {"HTTP://A", true},
                                                             {"picture.png", true},
                                                             {"data:,x", true},
                                                             {"", false},
                                                             {" ", false},
                                                             {"https://a.example/a b", false},
                                                             {"https://a.example/\xC3\xA4", false},
                                                             {"https://a.example/%zz", false},
                                                             {"https://[::1", false},
                                                             {"1:x", false},
                                                             {"https://a/\n", false}};
    for (const auto& [text, isURL] : cases) {
        Payload payload;
        payload.body.image = text;
        EXPECT_EQ(payload.getImageURL().has_value(), isURL) << text;
    }
}

TEST_F(PayloadTest, OnlyBannersAreDeletedWithTheirImage) {
    for (int type = 0; type < 8; ++type) {
        Payload payload;
        payload.body.type = static_cast<VantixInAppNotificationType>(type);
        bool isBanner = rawValue(payload.body.type) == "HEADER" || rawValue(payload.body.type) == "FOOTER";
        EXPECT_EQ(payload.canDeleteInAppMessageWhenImageDownloadingFailed(), isBanner) << type;
    }
}

TEST_F(PayloadTest, ARecordGivesBackWhatItsColumnsHold) {
    using Property = InAppMessage::Property;
    Payload expected = Payload::generate(completePush);
    InAppMessage record;
    auto set = [&](Property property, std::string text) {
        record.values[static_cast<std::size_t>(property)] = std::move(text);
    };
    set(Property::cuid, "c");
    set(Property::scope, "s");
    set(Property::senderID, "sender");
    set(Property::senderSource, "source");
    set(Property::custom, "{}");
    set(Property::priority, "1");
    set(Property::validity, "2030");
    set(Property::type, "POPUP");
    for (const auto& [property, key] : {std::pair(Property::trigger, "trigger"), std::pair(Property::body, "body"),
                                        std::pair(Property::templateText, "template")}) {
        set(property, *completePush.text(key));
    }
    set(Property::imageIdentifier, "kept");

    expected.imageIdentifier = "kept";
    expected.campaignId = expected.variationId = {};
    expected.messageId = expected.accountId = {};
    expected.gateway = NotificationGateway::fcm;
    EXPECT_EQ(Payload::generate(record), expected);
    set(Property::campaignId, "");
    EXPECT_EQ(Payload::generate(record).campaignId, "") << "an empty text is not an absent one";
    recorder.takeErrors();
    EXPECT_EQ(Payload::generate(InAppMessage()), Payload());
    EXPECT_TRUE(recorder.takeErrors().empty()) << "an absent text is not parsed";
}
