#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

/// The queues without the rest of the module.
class QueueManagerTest : public ModuleTest {
protected:
    void insert(const Campaign& campaign) {
        manager->insert(campaign.payload(), completion());
        settle();
    }

    /// Stores behind the queues' back, as an earlier process did.
    void store(const Campaign& campaign) {
        InAppRepoHelper::shared()->insert(campaign.payload(), {});
        settle();
    }

    void rebuild() {
        manager->updateInAppMessagesOnAppLaunch(completion());
        settle();
    }

    std::function<void(bool)> completion() {
        return [this](bool succeeded) { outcomes.push_back(succeeded); };
    }

    /// "milestones | broadcast | others"
    std::string queues() const {
        auto snapshot = manager->queues();
        auto list = [](const InAppMessageQueues::Messages& messages) {
            std::string scopes;
            for (const auto& message : messages) scopes += message->scope + " ";
            return scopes;
        };
        auto broadcast = snapshot->broadcastInAppMessage;
        return list(snapshot->milestoneInAppMessages) + "| " + (broadcast ? broadcast->scope + " " : "") + "| " +
               list(snapshot->otherInAppMessages);
    }

    std::string next(const std::optional<std::string>& event = {}, const std::optional<Dictionary>& attributes = {}) {
        auto message = manager->getInAppMessage(event, attributes);
        return message ? message->scope : "none";
    }

    std::shared_ptr<InAppMessageQueueManager> manager = std::make_shared<InAppMessageQueueManager>();
    std::vector<bool> outcomes;
};

}  // namespace

TEST_F(QueueManagerTest, ANewMessageGoesIntoOneQueueAndALaunchMessageIntoNone) {
    for (const char* event : {"INSTANT", "buy", "APP_LAUNCH", "instant", "INSTANT", "App_Launch", "buy"}) {
        insert({.scope = event, .event = event});
    }
    EXPECT_EQ(queues(), "INSTANT INSTANT | | buy instant App_Launch buy ");
    EXPECT_EQ(stored().size(), 7U) << "a launch message of other letter case is no launch message to be replaced by";
    EXPECT_EQ(outcomes, std::vector<bool>(7, true));
}

TEST_F(QueueManagerTest, ALaunchMessageReplacesAllStoredOnesAndWaitsForARebuild) {
    store({.scope = "1", .event = "APP_LAUNCH"});
    rebuild();
    EXPECT_EQ(queues(), "| 1 | 1 ");
    insert({.scope = "2", .event = "APP_LAUNCH"});
    EXPECT_EQ(queues(), "| | 1 ") << "the other queue is left alone";
    EXPECT_EQ(stored(), Texts{"2"});
    rebuild();
    EXPECT_EQ(queues(), "| 2 | 2 ");
}

TEST_F(QueueManagerTest, ARebuildSortsWhatTheStoreHolds) {
    struct Case {
        std::vector<std::pair<std::string, std::string>> scopesAndEvents;
        std::string queues;
        std::string next;
    };
    const std::vector<Case> cases = {
        {{}, "| | ", "none"},
        {{{"i", "INSTANT"}, {"l", "APP_LAUNCH"}, {"b", "buy"}}, "i | | i l b ", "i"},
        {{{"l1", "APP_LAUNCH"}, {"b", "buy"}, {"l2", "APP_LAUNCH"}, {"c", "app_launch"}}, "| l2 | l1 b l2 c ", "l2"},
        {{{"b", "buy"}, {"", ""}}, "| | b  ", "none"},
        {{{"i", "INSTANT"}, {"i", "INSTANT"}, {"h", "INSTANT"}}, "i i h | | i i h ", "i"},
    };
    for (const Case& test : cases) {
        manager->removeAllMessages({});
        for (const auto& [scope, event] : test.scopesAndEvents) store({.scope = scope, .event = event});
        rebuild();
        EXPECT_EQ(queues(), test.queues);
        EXPECT_EQ(next(), test.next) << test.queues;
    }
    EXPECT_EQ(outcomes, std::vector<bool>(cases.size(), true));
}

TEST_F(QueueManagerTest, AnEmptyStoreIsToldAndStillAnswers) {
    insert({.scope = "foreign", .cuid = "x"});
    recorder.takeErrors();
    rebuild();
    EXPECT_EQ(queues(), "| | ");
    EXPECT_EQ(recorder.takeLog(LogLevel::debug), Texts{"Manager/InAppMessageQueueManager "
                                                       "getAllInAppMessages(completion:): No pending in app messages "
                                                       "in database"});
    EXPECT_EQ(outcomes, (std::vector{true, true}));
}

TEST_F(QueueManagerTest, ARebuildWithoutPermissionEmptiesTheQueuesAndNeverAnswers) {
    int rebuilt = 0;
    manager->setOnRebuilt([&] { ++rebuilt; });
    insert({});
    outcomes.clear();
    NotificationCore::setAllowed(false);
    rebuild();
    EXPECT_EQ(queues(), "| | ");
    EXPECT_TRUE(outcomes.empty());
    EXPECT_EQ(rebuilt, 0);
    NotificationCore::setAllowed(true);
    rebuild();
    EXPECT_EQ(queues(), "a | | a ");
    EXPECT_EQ(rebuilt, 1);
}

TEST_F(QueueManagerTest, AnEventMatchesByNameAndByEveryAttributeThatIsAskedFor) {
    const auto opaque = Value::opaque(std::string("a"));
    const Dictionary number{{"a", 1}};
    struct Case {
        Dictionary asked;
        std::optional<Dictionary> carried;
        bool matches;
    };
    const std::vector<Case> cases = {
        {{}, {}, true},
        {{}, Dictionary{{"b", 2}}, true},
        {number, Dictionary{{"a", 1}, {"b", 2}}, true},
        {number, Dictionary{{"b", 2}}, false},
        {number, Dictionary{}, false},
        {number, {}, false},
        {number, Dictionary{{"a", 1.0}}, true},
        {number, Dictionary{{"a", "1"}}, false},
        {number, Dictionary{{"a", true}}, false},
        {number, Dictionary{{"A", 1}}, false},
        {{{"a", 9007199254740993}}, Dictionary{{"a", 9007199254740992.0}}, false},
        {{{"a", 9007199254740993}}, Dictionary{{"a", 9007199254740993}}, true},
        {{{"a", nullptr}}, Dictionary{{"a", nullptr}}, true},
        {{{"a", nullptr}}, Dictionary{{"b", 1}}, false},
        {{{"a", List{1, "x"}}}, Dictionary{{"a", List{1.0, "x"}}}, true},
        {{{"a", Dictionary{{"x", 1}, {"y", 2}}}}, Dictionary{{"a", Dictionary{{"y", 2}, {"x", 1}}}}, true},
        {{{"a", 1}, {"b", 2}}, Dictionary{{"a", 1}, {"b", 3}}, false},
        {{{"a", "a"}}, Dictionary{{"a", opaque}}, false},
        {{{"a", "a"}}, Dictionary{{"a", "a"}, {"b", opaque}}, true},
    };
    for (const Case& test : cases) {
        manager->removeAllMessages({});
        insert({.scope = "waiting", .event = "buy", .attributes = test.asked});
        auto carried = test.carried ? toJSON(*test.carried) : "nothing";
        EXPECT_EQ(next("buy", test.carried) == "waiting", test.matches) << toJSON(test.asked) << " " << carried;
        EXPECT_EQ(next("Buy", test.carried), "none");
    }
    VantixInAppMessagePayload opaquelyTriggered = Campaign{.event = "sell"}.payload();
    opaquelyTriggered.trigger.attributes = {{"a", opaque}};
    manager->updateQueues(opaquelyTriggered);
    EXPECT_EQ(next("sell", Dictionary{{"a", opaque}}), "none") << "what is not hashable equals nothing";
}

TEST_F(QueueManagerTest, TheFirstMatchInOrderIsChosenAndStays) {
    insert({.scope = "rich", .event = "buy", .attributes = {{"price", 3}}});
    insert({.scope = "plain", .event = "buy"});
    insert({.scope = "later", .event = "buy"});
    EXPECT_EQ(next("buy"), "plain");
    EXPECT_EQ(next("buy", Dictionary{{"price", 3}}), "rich");
    EXPECT_EQ(next("buy", Dictionary{{"price", 3}}), "rich");
    EXPECT_EQ(next(), "none");
    EXPECT_EQ(next(""), "none");
}

TEST_F(QueueManagerTest, RemovalTouchesOneQueueAndOneRecord) {
    store({.scope = "i", .event = "INSTANT"});
    store({.scope = "b", .event = "buy"});
    store({.scope = "i", .event = "INSTANT"});
    rebuild();
    manager->removeShownInAppMessage({});
    EXPECT_EQ(queues(), "i | | i b i ");
    EXPECT_EQ(stored(), (Texts{"b", "i"}));
    EXPECT_EQ(next("INSTANT"), "i") << "by its name it can still be had until the next rebuild";
    manager->removeInAppMessage(Campaign{.scope = "b", .event = "sell"}.payload());
    EXPECT_EQ(queues(), "i | | i i ") << "the scope is the identity";
    manager->removeInAppMessage(Campaign{.scope = "no such", .event = "APP_LAUNCH"}.payload());
    EXPECT_EQ(stored(), Texts{"i"});
    manager->removeShownInAppMessage({});
    manager->removeShownInAppMessage({});
    EXPECT_EQ(queues(), "| | i i ");
    EXPECT_TRUE(stored().empty());
}

TEST_F(QueueManagerTest, AShownLaunchMessageLeavesItsSlot) {
    store({.scope = "l", .event = "APP_LAUNCH"});
    rebuild();
    manager->removeShownInAppMessage({});
    EXPECT_EQ(queues(), "| | l ");
    EXPECT_TRUE(stored().empty());
}

TEST_F(QueueManagerTest, AShownMessageThatAsksForAttributesIsNotFoundAgain) {
    insert({.scope = "rich", .event = "buy", .attributes = {{"price", 3}}});
    manager->removeShownInAppMessage("buy");
    EXPECT_EQ(queues(), "| | rich ");
    EXPECT_EQ(stored(), Texts{"rich"});
    recorder.takeErrors();
    manager->removeShownInAppMessage({});
    settle();
    EXPECT_TRUE(recorder.takeLog(LogLevel::debug).empty()) << "with nothing to remove nothing is deleted";
}

TEST_F(QueueManagerTest, AFailingStoreChangesNoQueue) {
    makeStoreUnusable();
    insert({.scope = "i"});
    EXPECT_EQ(recorder.takeErrors().size(), 1U);
    insert({.scope = "l", .event = "APP_LAUNCH"});
    Texts errors = recorder.takeErrors();
    ASSERT_EQ(errors.size(), 3U);
    EXPECT_EQ(errors[1],
              "Manager/InAppMessageQueueManager insert(message:completion:): Failed to remove existing "
              "broadcast type inapp messages");
    EXPECT_TRUE(errors[2].starts_with("Manager/InAppRepoHelper insert(message:completion:): ")) << "it goes on";
    rebuild();
    EXPECT_EQ(outcomes, (std::vector{false, false, true})) << "a list that cannot be read is an empty one";
    EXPECT_EQ(queues(), "| | ");
}

TEST_F(QueueManagerTest, NobodyAnswersOnceTheManagerIsGone) {
    for (const char* event : {"INSTANT", "APP_LAUNCH"}) {
        manager = std::make_shared<InAppMessageQueueManager>();
        std::weak_ptr<InAppMessageQueueManager> gone = manager;
        manager->insert(Campaign{.event = event}.payload(), completion());
        manager->updateInAppMessagesOnAppLaunch(completion());
        manager.reset();
        EXPECT_TRUE(gone.expired());
        settle();
    }
    EXPECT_TRUE(outcomes.empty());
    EXPECT_EQ(stored(), Texts{"a"}) << "the launch message's clean-up ends with the manager";
}

TEST_F(QueueManagerTest, RemovingEverythingEmptiesTheQueuesAtOnce) {
    store({.scope = "l", .event = "APP_LAUNCH"});
    rebuild();
    insert({.scope = "b", .event = "buy"});
    outcomes.clear();
    manager->removeAllMessages(completion());
    EXPECT_EQ(queues(), "| | ");
    EXPECT_TRUE(outcomes.empty());
    EXPECT_TRUE(stored().empty());
    EXPECT_EQ(outcomes, std::vector{true});
}
