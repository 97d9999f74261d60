#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/Reports/ReportPolicy.h"
#include "VantixCore/VantixCore.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

#include <sqlite3.h>

#include <set>
#include <tuple>

using namespace vantix;

namespace {

using Texts = std::vector<std::string>;

constexpr const char* path = "/mapp/reports";

std::shared_ptr<VantixCore> makeCore(const std::string& baseURL) {
    return VantixCore::generate(configurationFor(baseURL), {}, false, {}, {}, Env::dev);
}

bool report(VantixCore& core, const std::string& scope, const std::string& feedback = {}) {
    bool isKept = false;
    core.reportDLREvent(VantixDLREvents::inAppMessageShown, {{"scope", scope}, {"feedback", feedback}},
                        [&](bool kept) { isKept = kept; });
    return isKept;
}

/// Of each report in a call.
Texts textsOf(const LoopbackServer::Request& request, const char* key) {
    Texts texts;
    Value body = parseJSON(request.body).value();
    for (const Value& event : *body.dictionary()->list("events")) {
        const std::string* text = event.dictionary()->text(key);
        texts.push_back(text ? *text : *event.dictionary()->dictionary("attributes")->text(key));
    }
    return texts;
}

template <typename DispatcherKind>
class AnyOutboxTest : public CoreFixture<DispatcherKind> {
protected:
    std::vector<Texts> scopes() const {
        std::vector<Texts> calls;
        for (const auto& request : server_.requests()) calls.push_back(textsOf(request, "scope"));
        return calls;
    }

    LoopbackServer server_;
};

using OutboxTest = AnyOutboxTest<VirtualDispatcher>;
using ThreadedOutboxTest = AnyOutboxTest<ThreadedDispatcher>;
using Calls = std::vector<Texts>;

}  // namespace

TEST(ReportPolicy, TellsWhatABackEndTookFromWhatItNeverWillAndWhatItMayLater) {
    for (int status : {200, 202, 204, 299}) EXPECT_TRUE(ReportPolicy::isTaken(status)) << status;
    for (int status : {199, 300, 304, 400, 500}) EXPECT_FALSE(ReportPolicy::isTaken(status)) << status;
    for (int status : {400, 401, 404, 413, 499}) EXPECT_TRUE(ReportPolicy::isFinalRefusal(status)) << status;
    for (int status : {304, 408, 429, 500, 503}) EXPECT_FALSE(ReportPolicy::isFinalRefusal(status)) << status;
}

TEST(ReportPolicy, WaitsGrowToALimitAndAreSpread) {
    for (auto [failures, asked, random, expected] : {std::tuple(1, 0., 0., 2.5),
                                                     {1, 0, 1, 5},
                                                     {1, 0, .5, 3.75},
                                                     {2, 0, 1, 10},
                                                     {8, 0, 1, 640},
                                                     {9, 0, 1, 900},
                                                     {1000000, 0, 0, 450},
                                                     {1, 120, 0, 122.5},
                                                     {1, 1e6, 1, 86405},
                                                     {1, -5, 1, 5}}) {
        EXPECT_EQ(ReportPolicy::waitAfter(failures, seconds(asked), random), seconds(expected))
            << failures << " " << asked << " " << random;
    }
}

TEST_F(OutboxTest, HonoursRetryAfterAndDropsWhatIsRefusedForGood) {
    server_.reply(path, {.status = 429, .headers = {{"Retry-After", "120"}}});
    auto core = makeCore(server_.url());
    report(*core, "a");
    dispatcher().runUntilIdle();
    server_.reply(path, {.status = 400});
    report(*core, "b");
    dispatcher().advance(seconds(120));
    EXPECT_EQ(scopes(), Calls({{"a"}}));
    dispatcher().advance(seconds(5));
    ASSERT_EQ(scopes(), Calls({{"a"}, {"a", "b"}}));
    EXPECT_EQ(takeErrors(), Texts{"Reports/ReportSender failureOf(batch:outcome:): Reports refused by the back end "
                                  "with status 400 and dropped: 2"});

    server_.reply(path, {});
    report(*core, "c");
    dispatcher().runUntilIdle();
    EXPECT_EQ(scopes().back(), Texts{"c"});
}

TEST_F(OutboxTest, BatchesAreLimitedInNumberAndSize) {
    auto core = makeCore("");
    for (int number = 0; number < 120; ++number) report(*core, std::to_string(number));
    report(*core, "large", std::string(ReportPolicy::largestBatchBody * 2 / 3, 'x'));
    report(*core, "larger", std::string(ReportPolicy::largestBatchBody, 'x'));
    server_.reply(path, {});
    core = makeCore(server_.url());
    EXPECT_TRUE(server_.requests().empty()) << "starting waits for nothing";
    dispatcher().runUntilIdle();

    auto calls = scopes();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_EQ(calls[0].size(), 50U);
    EXPECT_EQ(calls[1].front(), "50");
    EXPECT_EQ(calls[2].size(), 21U);
    EXPECT_EQ(calls[3], Texts{"larger"});
    auto ids = textsOf(server_.requests()[0], "id");
    EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), 50U);
}

TEST_F(OutboxTest, DropsTheOldestWhenFull) {
    auto core = makeCore("");
    for (std::size_t number = 0; number < ReportPolicy::mostPending + 2; ++number) {
        report(*core, std::to_string(number));
    }
    const std::string full =
        "Reports/ReportOutbox add(report:): The outbox is full. Oldest reports dropped: 1, since the start: ";
    EXPECT_EQ(takeErrors(), Texts({full + "1", full + "2"}));
    server_.reply(path, {});
    core = makeCore(server_.url());
    dispatcher().runUntilIdle();
    EXPECT_EQ(scopes().size(), ReportPolicy::mostPending / ReportPolicy::largestBatch);
    EXPECT_EQ(scopes().front().front(), "2");
    EXPECT_EQ(scopes().back().back(), std::to_string(ReportPolicy::mostPending + 1));
}

TEST_F(OutboxTest, SaysSoWhenAReportCannotBeKeptAndSendsItAllTheSame) {
    auto core = makeCore("");
    disk().setFault(DiskFault::full);
    EXPECT_FALSE(report(*core, "a"));
    EXPECT_EQ(takeErrors(),
              Texts{"Reports/ReportOutbox add(report:): The store reports.sqlite failed: No space left on device"});
    server_.reply(path, {});
    core = makeCore(server_.url());
    dispatcher().runUntilIdle();
    EXPECT_EQ(scopes(), Calls({{"a"}}));

    core = makeCore("");
    EXPECT_FALSE(report(*core, "b"));
    disk().setFault(DiskFault::none);
    EXPECT_TRUE(report(*core, "c"));
    install(host());
    core = makeCore(server_.url());
    dispatcher().runUntilIdle();
    EXPECT_EQ(scopes(), Calls({{"a"}, {"b", "c"}})) << "what waited in memory went into the file";
}

TEST_F(OutboxTest, KeepsReportsInMemoryBesideAFileOfANewerVersionAndSendsNoneThatIsDamaged) {
    auto file = folder_.path() / "reports.sqlite";
    auto core = makeCore("");
    for (const char* scope : {"a", "b", "c"}) report(*core, scope);
    install(host());
    auto change = [&](const char* sql) {
        sqlite3* database = nullptr;
        sqlite3_open(file.c_str(), &database);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    };
    change("UPDATE Report SET event = substr(event, 2) WHERE position = 2");
    change("PRAGMA user_version = 2");
    server_.reply(path, {});
    core = makeCore(server_.url());
    EXPECT_FALSE(report(*core, "d"));
    EXPECT_FALSE(report(*core, "e"));
    dispatcher().runUntilIdle();
    EXPECT_EQ(scopes(), Calls({{"d", "e"}}));
    EXPECT_EQ(takeErrors().size(), 1U);

    install(host());
    change("PRAGMA user_version = 0");
    core = makeCore(server_.url());
    dispatcher().runUntilIdle();
    EXPECT_EQ(scopes(), Calls({{"d", "e"}, {"a", "c"}}));
    EXPECT_EQ(takeErrors().size(), 1U) << "of the damaged one";
}

TEST_F(OutboxTest, WhatIsTakenButCannotBeRemovedIsSentAgain) {
    VantixHost host = this->host();
    host.onRequest = [this](const SentRequest&) { disk().setFault(DiskFault::readOnly); };
    install(std::move(host));
    server_.reply(path, {});
    auto core = makeCore(server_.url());
    report(*core, "a");
    dispatcher().runUntilIdle();
    EXPECT_EQ(takeErrors().size(), 1U);
    disk().setFault(DiskFault::none);
    dispatcher().advance(seconds(5));
    ASSERT_EQ(scopes(), Calls({{"a"}, {"a"}}));
    EXPECT_EQ(textsOf(server_.requests()[0], "id"), textsOf(server_.requests()[1], "id"));
}

TEST_F(ThreadedOutboxTest, ACoreThatReplacesAnotherWaitsForItsTransfer) {
    server_.reply(path, {});
    server_.hold();
    auto core = makeCore(server_.url());
    report(*core, "a");
    ASSERT_TRUE(server_.waitForRequests(1));
    core = makeCore(server_.url());
    report(*core, "b");
    server_.release();
    ASSERT_TRUE(server_.waitForRequests(2));
    EXPECT_EQ(scopes(), Calls({{"a"}, {"b"}}));
}
