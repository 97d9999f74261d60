#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "VantixInAppMessage/templates/VantixUtility.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

/// "milestones | broadcast | others"
std::string scopesOf(const InAppMessageQueues& queues) {
    auto list = [](const InAppMessageQueue& queue) {
        std::string scopes;
        for (const auto& message : queue.messages()) scopes += message->scope + " ";
        return scopes;
    };
    auto broadcast = queues.broadcastInAppMessage;
    return list(queues.milestoneInAppMessages) + "| " + (broadcast ? broadcast->scope + " " : "") + "| " +
           list(queues.otherInAppMessages);
}

/// The queues without the rest of the module.
class QueueManagerTest : public ModuleTest {
protected:
    std::string queues() const { return scopesOf(*manager->queues()); }

    std::function<void(bool)> completion() {
        return [this](bool succeeded) { outcomes.push_back(succeeded); };
    }

    std::shared_ptr<InAppMessageQueueManager> manager = std::make_shared<InAppMessageQueueManager>();
    std::vector<bool> outcomes;
};

}  // namespace

TEST_F(QueueManagerTest, TheNewestLaunchMessageIsTheOneThatWasCreatedLast) {
    auto launch = [](const char* scope, std::optional<Duration> createdAt) {
        auto message = Campaign{.scope = scope, .event = "APP_LAUNCH"}.payload();
        message.createdAt = createdAt;
        return std::make_shared<const VantixInAppMessagePayload>(std::move(message));
    };
    struct Case {
        InAppMessageQueues::Messages stored;
        std::string queues;
    };
    for (const Case& test :
         {Case{{launch("2", seconds(2)), launch("3", seconds(3)), launch("1", seconds(1))}, "| 3 | 2 3 1 "},
          Case{{launch("a", {}), launch("b", {})}, "| b | a b "},
          Case{{launch("early", seconds(0)), launch("none", {})}, "| none | early none "}}) {
        InAppMessageQueues queues;
        queues.rebuild(test.stored);
        EXPECT_EQ(scopesOf(queues), test.queues);
    }
}

TEST_F(QueueManagerTest, RemovalTouchesOneQueueAndOneRecord) {
    for (const char* scope : {"I", "i", "b", "i"}) {
        auto event = scope == std::string("i") ? "INSTANT" : "buy";
        InAppRepoHelper::shared()->insert(Campaign{.scope = scope, .event = event}.shared(), {});
    }
    manager->updateInAppMessagesOnAppLaunch({});
    settle();
    manager->removeShownInAppMessage({});
    EXPECT_EQ(queues(), "i | | I i b i ");
    EXPECT_EQ(stored(), (Texts{"I", "b", "i"}));
    EXPECT_EQ(manager->getInAppMessage("INSTANT", {})->scope, "i") << "by its name it can still be had";
    manager->removeInAppMessage(Campaign{.scope = "b", .event = "sell"}.payload());
    EXPECT_EQ(queues(), "i | | I i i ") << "the scope is the identity";
    manager->removeInAppMessage(Campaign{.scope = "no such", .event = "APP_LAUNCH"}.payload());
    EXPECT_EQ(stored(), (Texts{"I", "i"}));
    manager->removeShownInAppMessage({});
    manager->removeShownInAppMessage({});
    EXPECT_EQ(queues(), "| | I i i ");
    EXPECT_EQ(stored(), Texts{"I"});
}

TEST_F(QueueManagerTest, WhatCannotBeHashedMatchesNothing) {
    const auto opaque = Value::opaque(std::string("a"));
    auto message = Campaign{.event = "sell"}.payload();
    message.trigger.attributes = {{"a", opaque}};
    manager->updateQueues(std::make_shared<const VantixInAppMessagePayload>(message));
    EXPECT_EQ(manager->getInAppMessage("sell", Dictionary{{"a", opaque}}), nullptr);
    EXPECT_FALSE(VantixUtility::equals(List{opaque}, List{opaque}));
    EXPECT_TRUE(VantixUtility::equals(nullptr, nullptr));
}

TEST_F(QueueManagerTest, NobodyAnswersOnceTheManagerIsGone) {
    for (const char* event : {"INSTANT", "APP_LAUNCH"}) {
        manager->insert(Campaign{.event = event}.shared(), completion());
    }
    manager->updateInAppMessagesOnAppLaunch(completion());
    manager->removeMessage("x", completion());
    manager->removeAllExistingBroadcastMessages(completion());
    manager->fetchAllInAppMessages([this](const auto&) { outcomes.push_back(true); });
    std::weak_ptr<InAppMessageQueueManager> gone = std::exchange(manager, nullptr);
    EXPECT_TRUE(gone.expired());
    settle();
    EXPECT_EQ(stored(), Texts{"a"}) << "the launch message's clean-up ends with the manager";
    manager = std::make_shared<InAppMessageQueueManager>();
    manager->removeAllMessages(completion());
    manager.reset();
    settle();
    EXPECT_TRUE(outcomes.empty());
}

TEST_F(QueueManagerTest, WhatIsUnderWayBringsNothingBackAfterEverythingWasRemoved) {
    InAppRepoHelper::shared()->insert(Campaign{.scope = "stored"}.shared(), {});
    manager->insert(Campaign{.scope = "new", .event = "buy"}.shared(), {});
    manager->updateInAppMessagesOnAppLaunch({});
    manager->removeAllMessages({});
    manager->insert(Campaign{.scope = "after"}.shared(), {});
    settle();
    EXPECT_EQ(queues(), "after | | ");
    EXPECT_EQ(stored(), Texts{"after"});
}

TEST_F(QueueManagerTest, ARebuildLeavesOutWhatTheStoreIsYetToDropAndNothingElse) {
    auto first = Campaign{.scope = "1"}.shared();
    for (const auto& message : {first, Campaign{.scope = "2"}.shared(), Campaign{.scope = "1"}.shared()}) {
        manager->insert(message, {});
    }
    settle();
    manager->updateInAppMessagesOnAppLaunch({});
    manager->removeInAppMessage(*first);
    settle();
    EXPECT_EQ(queues(), "2 1 | | 2 1 ");

    auto second = Campaign{.scope = "2"}.shared();
    manager->updateInAppMessagesOnAppLaunch({});
    manager->removeInAppMessage(*second);
    manager->insert(second, {});
    manager->updateInAppMessagesOnAppLaunch({});
    settle();
    EXPECT_EQ(queues(), "1 2 | | 1 2 ") << "what was inserted anew while two rebuilds overlapped is there";
    EXPECT_EQ(stored(), (Texts{"1", "2"}));
}
