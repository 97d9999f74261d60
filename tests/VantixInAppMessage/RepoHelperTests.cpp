#include "VantixInAppMessage/Manager/InAppRepoHelper.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

const std::string errorStart = "Manager/InAppRepoHelper ";
const std::string reason = "The store InAppMessageModel.sqlite failed: ";

/// The module's store object alone, without the rest of the module.
class RepoHelperTest : public ModuleTest {
protected:
    void insert(const Campaign& campaign) { insertPayload(campaign.payload()); }
    void insertPayload(const VantixInAppMessagePayload& message) {
        helper()->insert(message, completion());
        settle();
    }

    std::shared_ptr<InAppRepoHelper> helper() { return InAppRepoHelper::shared(); }

    std::function<void(bool)> completion() {
        return [this](bool succeeded) { outcomes.push_back(succeeded); };
    }

    std::vector<bool> outcomes;
};

}  // namespace

TEST_F(RepoHelperTest, ARecordKeepsThirteenOfItsFourteenTexts) {
    using Property = InAppMessage::Property;
    const Texts names = {"cuid",         "scope",  "campaignId",      "variationId", "senderID",
                         "senderSource", "custom", "priority",        "validity",    "trigger",
                         "type",         "body",   "imageIdentifier", "template"};
    ASSERT_EQ(static_cast<std::size_t>(InAppMessage::propertyCount), names.size());
    for (std::size_t at = 0; at < names.size(); ++at) {
        EXPECT_EQ(InAppMessage::name(static_cast<Property>(at)), names[at]);
    }
    auto message = Campaign{.type = "HEADER"}.payload();
    message.senderSource = "source";
    message.custom = "it's; DROP TABLE";
    message.priority = "\xF0\x9F\x92\xA9";
    message.validity = std::string("2030\0x", 6);
    message.messageId = message.accountId = message.isRead = "kept nowhere";
    insertPayload(message);
    message.campaignId = "";
    message.variationId = "v";
    insertPayload(message);

    std::vector<InAppMessage> records;
    helper()->fetchAllInAppMessages([&](auto fetched) { records = fetched; });
    settle();
    ASSERT_EQ(records.size(), 2U) << "the same scope is stored twice";
    const std::optional<std::string> absent;
    std::vector<std::optional<std::string>> expected = {"customer",
                                                        "a",
                                                        absent,
                                                        absent,
                                                        "sender",
                                                        "source",
                                                        message.custom,
                                                        message.priority,
                                                        message.validity,
                                                        message.trigger.textRepresentation,
                                                        absent,
                                                        message.body.textRepresentation,
                                                        message.imageIdentifier,
                                                        message.style.textRepresentation};
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), records[0].values.begin()));
    expected[2] = "";
    expected[3] = "v";
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), records[1].values.begin()));
    EXPECT_EQ(outcomes, (std::vector{true, true}));
}

TEST_F(RepoHelperTest, OnlyTheCurrentCustomersRecordsAreReadInTheirOrder) {
    for (const char* scope : {"c", "a", "b"}) insert({.scope = scope});
    insert({.scope = "other", .cuid = "customer2"});
    insert({.scope = "empty", .cuid = ""});
    EXPECT_EQ(stored(), (Texts{"c", "a", "b"}));
    Vantix::getSharedUserDefaults()->setCustomerId("");
    EXPECT_EQ(stored(), Texts{"empty"}) << "an empty customer id is an id";
    EXPECT_TRUE(recorder.takeErrors().empty());

    Vantix::getSharedUserDefaults()->setCustomerId({});
    EXPECT_TRUE(stored().empty());
    EXPECT_EQ(recorder.takeErrors(), Texts{errorStart + "fetchAllInAppMessages(completion:): customer-cuid not exist"});
    changeHost([](VantixHost& host) { host.appGroup = false; });
    EXPECT_TRUE(stored().empty());
    EXPECT_EQ(recorder.takeErrors(),
              Texts{errorStart + "fetchAllInAppMessages(completion:): Unable to store the customer id because either "
                                 "customerId is empty or App group is not setup properly."});
}

TEST_F(RepoHelperTest, OneMessageIsRemovedByItsExactScope) {
    for (const char* scope : {"a", "A", "a", "a%"}) insert({.scope = scope});
    helper()->removeMessage("a", completion());
    EXPECT_EQ(stored(), (Texts{"A", "a", "a%"}));
    helper()->removeMessage("' OR 1=1 --", completion());
    helper()->removeMessage("%", {});
    EXPECT_EQ(stored(), (Texts{"A", "a", "a%"}));
    EXPECT_EQ(outcomes, std::vector<bool>(6, true)) << "nothing to delete is a success";
}

TEST_F(RepoHelperTest, LaunchMessagesAreRemovedWhereverTheirTriggerSaysSo) {
    insert({.scope = "launch", .event = "APP_LAUNCH"});
    insert({.scope = "lower", .event = "app_launch"});
    insert({.scope = "attribute", .event = "buy", .attributes = {{"since", "last App_Launch!"}}});
    insert({.scope = "body", .event = "buy", .message = "APP_LAUNCH"});
    insert({.scope = "wildcard", .event = "APPxLAUNCH"});
    insert({.scope = "other customer's", .event = "APP_LAUNCH", .cuid = "x"});
    helper()->removeAllExistingBroadcastMessages(completion());
    EXPECT_EQ(stored(), (Texts{"body", "wildcard"}));
    Vantix::getSharedUserDefaults()->setCustomerId("x");
    EXPECT_TRUE(stored().empty());
}

TEST_F(RepoHelperTest, AllMessagesOfAllCustomersAreRemoved) {
    insert({.scope = "mine"});
    insert({.scope = "other", .cuid = "x"});
    helper()->removeAllMessages(completion());
    EXPECT_TRUE(stored().empty());
    Vantix::getSharedUserDefaults()->setCustomerId("x");
    EXPECT_TRUE(stored().empty());
}

TEST_F(RepoHelperTest, EachOutcomeIsOneLineAndOneAnswer) {
    auto message = Campaign{}.payload();
    std::string payload = message.description();
    for (const char* part : {"\"scope\":\"a\"", "\"messageId\":\"id-a\"", "\"createdAt\":null", "\"isRead\":\"\""}) {
        EXPECT_NE(payload.find(part), std::string::npos) << part;
    }
    struct Operation {
        std::function<void(InAppRepoHelper::Completion)> call;
        std::string source;
        std::string success;
        std::string failure;
    };
    const std::vector<Operation> operations = {
        {[&](auto done) { helper()->insert(message, done); },
         "insert(message:completion:): ", "Successfully inserted in app message with message " + payload,
         "Failed to insert in app message with message " + payload + " with error "},
        {[&](auto done) { helper()->removeMessage("a", done); },
         "removeMessage(with:completion:): ", "Successfully removed in app message with message id a",
         "Failed to remove in app message with message id a with error "},
        {[&](auto done) { helper()->removeAllExistingBroadcastMessages(done); },
         "removeAllExistingBroadcastMessages(completion:): ",
         "Successfully removed all existing broadcast in app messages",
         "Failed to remove all existing broadcast in app messages with error "},
        {[&](auto done) { helper()->removeAllMessages(done); }, "removeAllMessages(completion:): ",
         "Successfully deleted all the in-app messages", "Failed to delete all the in-app messages due to error: "},
    };
    auto attempt = [&](const Operation& operation, bool succeeds) {
        outcomes.clear();
        recorder.takeErrors();
        operation.call({});
        operation.call(completion());
        EXPECT_TRUE(outcomes.empty()) << "not within the call";
        settle();
        EXPECT_EQ(outcomes, std::vector{succeeds});
    };

    makeStoreUnusable();
    for (const Operation& operation : operations) {
        attempt(operation, false);
        Texts errors = recorder.takeErrors();
        ASSERT_EQ(errors.size(), 2U) << operation.source;
        std::string expected = errorStart + operation.source + operation.failure + reason;
        EXPECT_TRUE(errors[0].starts_with(expected) && errors[0].size() > expected.size()) << errors[0];
    }
    EXPECT_TRUE(stored().empty());
    Texts errors = recorder.takeErrors();
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_TRUE(errors[0].starts_with(errorStart +
                                      "fetchAllInAppMessages(completion:): Failed to fetch in app "
                                      "messages with error " +
                                      reason))
        << errors[0];

    std::filesystem::remove(dataDirectory());
    for (const Operation& operation : operations) {
        attempt(operation, true);
        std::string expected = errorStart + operation.source + operation.success;
        EXPECT_EQ(recorder.takeLog(LogLevel::debug), (Texts{expected, expected})) << "the file is tried anew";
    }
}
