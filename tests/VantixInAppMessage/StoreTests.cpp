#include "VantixInAppMessage/Manager/InAppRepoHelper.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using StoreTest = ModuleTest;

TEST_F(StoreTest, WithoutACustomerNothingIsReadAndTheAnswerComesAtOnce) {
    InAppRepoHelper::shared()->insert(Campaign{}.shared(), {});
    settle();
    Vantix::getSharedUserDefaults()->setCustomerId({});
    int answers = 0;
    InAppRepoHelper::shared()->fetchAllInAppMessages([&](const std::vector<InAppMessage>& records) {
        ++answers;
        EXPECT_TRUE(records.empty());
    });
    EXPECT_EQ(answers, 1);
}

TEST_F(StoreTest, EachFailureIsToldAndAnsweredAndChangesNoQueue) {
    settle();
    disk().setFault(DiskFault::full);
    start();
    auto message = Campaign{.event = "APP_LAUNCH"}.payload();
    std::vector<bool> outcomes;
    core->silentPushListener(message, [&](bool inserted) { outcomes.push_back(inserted); });
    settle();
    queueManager()->updateQueues(Campaign{.scope = "before"}.shared());
    core->userLoggedOut();
    EXPECT_TRUE(queueManager()->queues()->milestoneInAppMessages.isEmpty()) << "emptied at once";
    queueManager()->updateQueues(Campaign{.scope = "after"}.shared());
    queueManager()->removeInAppMessage(Campaign{.event = "sell"}.payload());
    settle();
    EXPECT_EQ(outcomes, std::vector{false});
    EXPECT_EQ(queueManager()->queues()->milestoneInAppMessages.messages().size(), 1U)
        << "a failure empties nothing again";
    EXPECT_TRUE(stored().empty());

    const std::string helper = "Manager/InAppRepoHelper ";
    const Texts expected = {
        helper +
            "removeAllExistingBroadcastMessages(completion:): Failed to remove all existing broadcast in app "
            "messages with error The store ",
        "Manager/InAppMessageQueueManager insert(message:completion:): Failed to remove existing broadcast type inapp "
        "messages",
        helper + "insert(message:completion:): Failed to insert in app message with message " + message.description() +
            " with error The store ",
        "Core/InAppMessagingCore inAppMessaseReceived(message:showInAppImmediately:completion:): Error while inserting "
        "the in-app message with payload " +
            message.description(),
        helper + "removeAllMessages(completion:): Failed to delete all the in-app messages due to error: The store ",
        "Core/InAppMessagingCore removeAllInAppMessages(): Error while deleting all the in-app messages",
        helper +
            "removeMessage(with:completion:): Failed to remove in app message with message id a with error The "
            "store ",
        helper + "fetchAllInAppMessages(completion:): Failed to fetch in app messages with error The store "};
    Texts errors = recorder.takeErrors();
    ASSERT_EQ(errors.size(), expected.size());
    for (std::size_t at = 0; at < errors.size(); ++at) {
        EXPECT_TRUE(errors[at].starts_with(expected[at])) << errors[at];
    }

    disk().setFault(DiskFault::none);
    InAppRepoHelper::shared()->insert(Campaign{}.shared(), {});
    EXPECT_EQ(stored(), Texts{"a"}) << "the disk is tried anew";
}
