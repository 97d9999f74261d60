#include "VantixInAppMessage/Manager/InAppRepoHelper.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

/// The module's store object alone, without the rest of the module.
class RepoHelperTest : public ModuleTest {
protected:
    std::shared_ptr<InAppRepoHelper> helper = InAppRepoHelper::shared();
    std::vector<bool> outcomes;

    std::function<void(bool)> completion() {
        return [this](bool succeeded) { outcomes.push_back(succeeded); };
    }
};

}  // namespace

TEST_F(RepoHelperTest, OneMessageIsRemovedByItsExactScope) {
    for (const char* scope : {"a", "A", "a", "a%"}) helper->insert(Campaign{.scope = scope}.shared(), {});
    helper->removeMessage("a", completion());
    EXPECT_EQ(stored(), (Texts{"A", "a", "a%"}));
    helper->removeMessage("' OR 1=1 --", completion());
    helper->removeMessage("%", completion());
    EXPECT_EQ(stored(), (Texts{"A", "a", "a%"}));
    EXPECT_EQ(outcomes, std::vector<bool>(3, true)) << "nothing to delete is a success";
}

TEST_F(RepoHelperTest, WithoutACustomerNothingIsReadAndTheAnswerComesAtOnce) {
    helper->insert(Campaign{}.shared(), {});
    settle();
    Vantix::getSharedUserDefaults()->setCustomerId({});
    int answers = 0;
    helper->fetchAllInAppMessages([&](const std::vector<InAppMessage>& records) {
        ++answers;
        EXPECT_TRUE(records.empty());
    });
    EXPECT_EQ(answers, 1);
}

TEST_F(RepoHelperTest, EachOutcomeIsOneLineAndOneAnswer) {
    const std::string file = "Manager/InAppRepoHelper ";
    const std::string reason = "The store InAppMessageModel.sqlite failed: ";
    auto message = Campaign{}.shared();
    struct Operation {
        std::function<void(InAppRepoHelper::Completion)> call;
        std::string source;
        std::string success;
        std::string failure;
    };
    const std::vector<Operation> operations = {
        {[&](auto done) { helper->insert(message, done); },
         "insert(message:completion:): ", "Successfully inserted in app message with message " + message->description(),
         "Failed to insert in app message with message " + message->description() + " with error "},
        {[&](auto done) { helper->removeMessage("a", done); },
         "removeMessage(with:completion:): ", "Successfully removed in app message with message id a",
         "Failed to remove in app message with message id a with error "},
        {[&](auto done) { helper->removeAllExistingBroadcastMessages(done); },
         "removeAllExistingBroadcastMessages(completion:): ",
         "Successfully removed all existing broadcast in app messages",
         "Failed to remove all existing broadcast in app messages with error "},
        {[&](auto done) { helper->removeAllMessages(done); }, "removeAllMessages(completion:): ",
         "Successfully deleted all the in-app messages", "Failed to delete all the in-app messages due to error: "},
    };
    auto attempt = [&](const Operation& operation) {
        outcomes.clear();
        recorder.takeErrors();
        operation.call({});
        operation.call(completion());
        EXPECT_TRUE(outcomes.empty()) << "not within the call";
        settle();
        return outcomes;
    };

    makeStoreUnusable();
    for (const Operation& operation : operations) {
        EXPECT_EQ(attempt(operation), std::vector{false});
        Texts errors = recorder.takeErrors();
        ASSERT_EQ(errors.size(), 2U) << operation.source;
        EXPECT_TRUE(errors[0].starts_with(file + operation.source + operation.failure + reason)) << errors[0];
    }
    EXPECT_TRUE(stored().empty());
    Texts errors = recorder.takeErrors();
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_TRUE(errors[0].starts_with(
        file + "fetchAllInAppMessages(completion:): Failed to fetch in app messages with error " + reason));

    std::filesystem::remove(dataDirectory());
    for (const Operation& operation : operations) {
        EXPECT_EQ(attempt(operation), std::vector{true}) << "the file is tried anew";
        std::string expected = file + operation.source + operation.success;
        EXPECT_EQ(recorder.takeLog(LogLevel::debug), (Texts{expected, expected}));
    }
}
