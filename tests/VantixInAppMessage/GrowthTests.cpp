#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <sqlite3.h>

#include <random>

using namespace vantix;

using GrowthTest = ModuleTest;

namespace {

long steps = 0;

/// Counts what SQLite does on a file that is opened from now on.
int countSteps(sqlite3* database, char**, const void*) {
    auto count = [](unsigned, void*, void* statement, void*) {
        steps += sqlite3_stmt_status(static_cast<sqlite3_stmt*>(statement), SQLITE_STMTSTATUS_VM_STEP, 1);
        return 0;
    };
    return sqlite3_trace_v2(database, SQLITE_TRACE_PROFILE, count, nullptr);
}

}  // namespace

TEST_F(GrowthTest, ManyStoredMessagesCostNoMoreThanFew) {
    auto entry = reinterpret_cast<void (*)()>(&countSteps);
    sqlite3_auto_extension(entry);
    auto manager = std::make_shared<InAppMessageQueueManager>();
    // Whoever copies messages of the queue holds them once more than the snapshot that is kept here.
    auto cost = [&](const std::function<void()>& operation) {
        auto before = manager->queues();
        auto messages = before->otherInAppMessages.messages();
        for (const SharedPayload& message : messages) steps -= message.use_count();
        operation();
        settle();
        for (const SharedPayload& message : messages) steps += message.use_count();
        return std::exchange(steps, 0);
    };
    auto insert = [&](int number, const std::string& event) {
        manager->insert(Campaign{.scope = std::to_string(number), .event = event}.shared(), {});
    };
    auto rebuild = [&] { manager->updateInAppMessagesOnAppLaunch({}); };
    std::vector<long> ofFew;
    for (int number = 0; number < 1000; ++number) {
        insert(number, "event " + std::to_string(number));
        settle();
        if (number != 49 && number != 999) continue;
        steps = 0;
        std::vector costs{cost([&] { insert(-1, "buy"); }), cost([&] { insert(-2, "APP_LAUNCH"); }),
                          cost([&] { manager->removeShownInAppMessage("event " + std::to_string(number)); })};
        for (std::size_t at = 0; at < ofFew.size(); ++at) EXPECT_LE(costs[at], 2 * ofFew[at]) << "operation " << at;
        ofFew = costs;
    }
    rebuild();
    settle();
    auto rebuilt = manager->queues()->otherInAppMessages.messages();
    long ofOneRebuild = std::exchange(steps, 0);
    for (int round = 0; round < 50; ++round) rebuild();
    settle();
    EXPECT_LE(steps, 2 * ofOneRebuild) << "those that are asked for together are done together";
    EXPECT_EQ(manager->queues()->otherInAppMessages.messages(), rebuilt) << "nothing is decoded again";
    sqlite3_cancel_auto_extension(entry);
}

TEST_F(GrowthTest, AQueueKeepsItsOrderThroughManyChanges) {
    std::mt19937 random;
    InAppMessageQueue queue;
    InAppMessageQueue::Messages expected;
    for (int round = 0; round < 600; ++round) {
        auto message = Campaign{.scope = std::to_string(random() % 50), .event = std::to_string(random() % 5)}.shared();
        auto found =
            std::find_if(expected.begin(), expected.end(), [&](const auto& m) { return m->scope == message->scope; });
        if (random() % 2 == 0) {
            queue.append(message);
            expected.push_back(message);
        } else if (found != expected.end()) {
            queue.removeFirst(message->scope);
            expected.erase(found);
        }
        ASSERT_EQ(queue.messages(), expected);
        auto first = std::find_if(expected.begin(), expected.end(),
                                  [&](const auto& m) { return m->trigger.eventName == message->trigger.eventName; });
        ASSERT_EQ(queue.first(message->trigger.eventName, [](const auto&) { return true; }),
                  first == expected.end() ? nullptr : *first);
    }
}
