#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/InAppMessage.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <any>

using namespace vantix;

using PayloadTest = ModuleTest;
using Payload = VantixInAppMessagePayload;

namespace {

const Dictionary completePush{
    {"senderSource", "source"},
    {"scope", "s"},
    {"custom", "it's; DROP TABLE"},
    {"priority", "✓"},
    {"validity", std::string("2030\0x", 6)},
    {"messageId", "m"},
    {"gateway", "apns"},
    {"cuid", "customer"},
    {"senderId", "sender"},
    {"campaignId", "campaign"},
    {"variationId", ""},
    {"trigger", R"({"eventName":"buy","attributes":{"n":9007199254740993,"deep":[{"x":null}]}})"},
    {"body", R"({"type":"FEEDBACK","title":"T","message":"M","image":"https://i",
                 "ctas":[{"type":"DEEPLINK","action":"app://x","actionText":"Go"},{"type":"RATING"}],
                 "feedbackOptions":{"selectionType":"multiSelection","options":["yes","no"]}})"},
    {"accountId", "account"},
    {"template", R"({"title":{"textSize":"20","textStyle":"Lobster","textColor":"#80ff0000"},)"
                 R"("ctas":[{"textStyle":"BOLD"}],"rating":{"selectedColor":"#0000ff"},)"
                 R"("phoneBackgroundColor":"#112233"})"},
};

/// The decoded push without its random identifier.
Payload decode(const Dictionary& push) {
    Payload payload = Payload::generate(push);
    payload.imageIdentifier.clear();
    return payload;
}

}  // namespace

TEST_F(PayloadTest, TheImageIdentifierIsNewForEachDecoding) {
    EXPECT_EQ(Payload::generate(Dictionary()), Payload());
    constexpr std::size_t uuidLength = 36;
    std::string first = Payload::generate(completePush).imageIdentifier;
    EXPECT_EQ(first.substr(uuidLength), "-s");
    EXPECT_NE(Payload::generate(completePush).imageIdentifier, first);
    EXPECT_EQ(Payload::generate(Dictionary{{"unknown", 1}}).imageIdentifier.substr(uuidLength), "-");
}

TEST_F(PayloadTest, IsWrittenWithNestedDictionaries) {
    fonts->names = {"Lobster"};
    Payload payload = Payload::generate(completePush);
    payload.imageIdentifier = "id";
    EXPECT_EQ(
        toJSON(payload.getJSON()),
        R"({"senderSource":"source","scope":"s","custom":"it's; DROP TABLE","priority":"✓","validity":"2030\u0000x",)"
        R"("messageId":"m","gateway":"apns","cuid":"customer","senderId":"sender","campaignId":"campaign",)"
        R"("variationId":"","trigger":{"eventName":"buy","attributes":{"n":9007199254740993,"deep":[{"x":null}]}},)"
        R"("body":{"type":"FEEDBACK","title":"T","message":"M","image":"https://i",)"
        R"("ctas":[{"type":"DEEPLINK","actionText":"Go","action":"app://x"},)"
        R"({"type":"RATING","actionText":"","action":""}],)"
        R"("feedbackOptions":{"selectionType":"multiSelection","options":["yes","no"]}},"accountId":"account",)"
        R"("template":{"title":{"textColor":"#FF0000","textSize":20.0,"textStyle":"Lobster"},)"
        R"("message":{"textSize":16.0,"textStyle":"REGULAR"},"ctas":[{"textSize":16.0,"textStyle":"BOLD"}],)"
        R"("phoneBackgroundColor":"#112233","rating":{"selectedColor":"#0000FF"}},"imageIdentifier":"id"})");
    payload.campaignId.reset();
    payload.variationId.reset();
    EXPECT_FALSE(payload.getJSON().find("campaignId") || payload.getJSON().find("variationId"));
}

TEST_F(PayloadTest, TheStoreGivesBackWhatItHasColumnsFor) {
    auto message = std::make_shared<const Payload>(Payload::generate(completePush));
    InAppRepoHelper::shared()->insert(message, {});
    InAppRepoHelper::shared()->insert(message, {});
    std::vector<InAppMessage> records;
    InAppRepoHelper::shared()->fetchAllInAppMessages([&](auto fetched) { records = fetched; });
    settle();
    ASSERT_EQ(records.size(), 2U) << "the same scope is stored twice";
    Payload expected = *message;
    expected.messageId = expected.accountId = {};
    expected.gateway = NotificationGateway::fcm;
    EXPECT_EQ(Payload::generate(records[0]), expected);
    EXPECT_EQ(records[0][InAppMessage::Property::type], std::nullopt);
    recorder.takeErrors();
    EXPECT_EQ(Payload::generate(InAppMessage()), Payload());
    EXPECT_TRUE(recorder.takeErrors().empty()) << "an absent text is not parsed";
}

TEST_F(PayloadTest, AnOpaqueValueIsTheDefault) {
    for (const auto& [key, text] : completePush) {
        EXPECT_EQ(decode({{key, Value::opaque(std::any(text))}}), Payload()) << key;
    }
}

TEST_F(PayloadTest, AFontThatIsGoneLeavesTheRegularSystemFont) {
    InAppMessageComponentStyle style;
    style.textSize = 9;
    style.textStyle = TextFontStyle::bold;
    EXPECT_EQ(style.getFont(), Font::system(9, FontWeight::bold));
    style.textFont = "Lobster";
    EXPECT_EQ(style.getFont(), Font::system(9));
    fonts->names = {"Lobster"};
    EXPECT_EQ(style.getFont(), Font::named("Lobster", 9));
}
