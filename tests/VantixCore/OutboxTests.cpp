#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/Reports/ReportPolicy.h"
#include "VantixCore/VantixCore.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

using namespace vantix;

namespace {

using Texts = std::vector<std::string>;

constexpr const char* path = "/mapp/reports";

std::shared_ptr<VantixCore> makeCore(const std::string& baseURL) {
    auto configuration = std::make_shared<VantixConfiguration>();
    configuration->account = "account";
    configuration->base = baseURL;
    configuration->token = "secret";
    return VantixCore::generate(configuration, {}, false, {}, {}, Env::dev);
}

bool report(VantixCore& core, const std::string& scope, const std::string& feedback = {}) {
    bool isKept = false;
    core.reportDLREvent(VantixDLREvents::inAppMessageShown,
                        {{"scope", scope}, {"cuid", "customer"}, {"feedback", feedback}},
                        [&](bool kept) { isKept = kept; });
    return isKept;
}

/// One text of each report of a request, by its key or that of an attribute.
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
    AnyOutboxTest() { startProcess(); }

    void startProcess() {
        VantixHost host = this->host();
        host.logSink = [this](const LogLine& line) {
            std::lock_guard lock(mutex_);
            if (line.level == LogLevel::error) errors_.push_back(line.message);
            for (const char* secret : {"secret", "customer", "scope"}) {
                EXPECT_EQ(line.message.find(secret), std::string::npos) << line.message;
            }
        };
        this->install(std::move(host));
    }

    Texts takeErrors() {
        std::lock_guard lock(mutex_);
        return std::exchange(errors_, {});
    }

private:
    std::mutex mutex_;
    Texts errors_;
};

class OutboxTest : public AnyOutboxTest<VirtualDispatcher> {
protected:
    void settle() { dispatcher().runUntilIdle(); }
    void advance(double time) { dispatcher().advance(seconds(time)); }

    std::vector<Texts> scopes() const {
        std::vector<Texts> batches;
        for (const auto& request : server_.requests()) batches.push_back(textsOf(request, "scope"));
        return batches;
    }

    LoopbackServer server_;
};

using ThreadedOutboxTest = AnyOutboxTest<ThreadedDispatcher>;
using Batches = std::vector<Texts>;

}  // namespace

TEST_F(OutboxTest, WaitsForABaseAddressAndSendsInOrderWithIdentities) {
    server_.reply(path, {});
    auto core = makeCore("");
    report(*core, "a");
    core->reportBehavioralEvent("inAppMessageClose", {{"scope", "b"}});
    settle();
    EXPECT_TRUE(sent().empty());

    core = nullptr;
    core = makeCore(server_.url());
    EXPECT_TRUE(sent().empty()) << "starting waits for nothing";
    settle();
    report(*core, "c");
    settle();

    ASSERT_EQ(scopes(), Batches({{"a", "b"}, {"c"}}));
    auto first = server_.requests()[0];
    EXPECT_EQ(first.method, "POST");
    EXPECT_EQ(first.headers["authorization"], "Bearer secret");
    EXPECT_EQ(first.headers["content-type"], "application/json");
    EXPECT_EQ(textsOf(first, "kind"), Texts({"delivery", "behavioral"}));
    EXPECT_EQ(textsOf(first, "name"), Texts({"inAppMessageShown", "inAppMessageClose"}));
    EXPECT_EQ(*parseJSON(first.body).value().dictionary()->text("accountId"), "account");
    std::set<std::string> ids{textsOf(first, "id")[0], textsOf(first, "id")[1],
                              textsOf(server_.requests()[1], "id")[0]};
    EXPECT_EQ(ids.size(), 3U);

    core = nullptr;
    core = makeCore(server_.url());
    settle();
    EXPECT_EQ(sent().size(), 2U) << "nothing is left to send";
}

TEST_F(OutboxTest, TheAnswerDecidesWhatBecomesOfABatch) {
    enum class Fate { taken, dropped, sentAgain };
    struct Case {
        int status;
        Fate fate;
    };
    auto core = makeCore(server_.url());
    for (const Case& each : {Case{200, Fate::taken}, Case{202, Fate::taken}, Case{204, Fate::taken},
                             Case{304, Fate::sentAgain}, Case{400, Fate::dropped}, Case{401, Fate::dropped},
                             Case{404, Fate::dropped}, Case{408, Fate::sentAgain}, Case{413, Fate::dropped},
                             Case{429, Fate::sentAgain}, Case{500, Fate::sentAgain}, Case{503, Fate::sentAgain}}) {
        std::size_t before = server_.requests().size();
        server_.reply(path, {.status = each.status});
        report(*core, "a");
        settle();
        ASSERT_EQ(server_.requests().size(), before + 1) << each.status;
        EXPECT_EQ(takeErrors().size(), each.fate == Fate::dropped ? 1U : 0U) << each.status;

        report(*core, "b");
        server_.reply(path, {});
        advance(6);
        auto requests = server_.requests();
        ASSERT_EQ(requests.size(), before + 2) << each.status;
        Texts expected = each.fate == Fate::sentAgain ? Texts{"a", "b"} : Texts{"b"};
        EXPECT_EQ(textsOf(requests.back(), "scope"), expected) << each.status;
        if (each.fate == Fate::sentAgain) {
            EXPECT_EQ(textsOf(requests.back(), "id")[0], textsOf(requests[before], "id")[0]);
        }
    }
}

TEST_F(OutboxTest, ABrokenConnectionLosesNothing) {
    server_.reply(path, {.body = "half", .announcedLength = 1000});
    auto core = makeCore(server_.url());
    report(*core, "a");
    settle();
    server_.reply(path, {});
    advance(6);
    EXPECT_EQ(scopes(), Batches({{"a"}, {"a"}}));
}

TEST_F(OutboxTest, ARedirectTakesTheReportsAlong) {
    LoopbackServer other;
    other.reply("/new", {});
    server_.reply(path, {.status = 302, .headers = {{"Location", other.url("/new")}}});
    auto core = makeCore(server_.url());
    report(*core, "a");
    settle();
    ASSERT_EQ(other.requests().size(), 1U);
    EXPECT_EQ(other.requests()[0].method, "POST");
    EXPECT_EQ(textsOf(other.requests()[0], "scope"), Texts{"a"});
}

TEST(ReportPolicy, WaitsGrowToALimitAndAreSpread) {
    struct Case {
        int failures;
        double asked;
        double random;
        double expected;
    };
    for (const Case& each :
         {Case{1, 0, 0, 2.5}, Case{1, 0, 1, 5}, Case{1, 0, 0.5, 3.75}, Case{2, 0, 1, 10}, Case{3, 0, 0, 10},
          Case{8, 0, 1, 640}, Case{9, 0, 1, 900}, Case{1000000, 0, 0, 450}, Case{1, 120, 0, 122.5},
          Case{9, 120, 1, 1020}, Case{1, 1e6, 1, 86405}, Case{1, -5, 1, 5}}) {
        EXPECT_EQ(ReportPolicy::waitAfter(each.failures, seconds(each.asked), each.random), seconds(each.expected))
            << each.failures << " " << each.asked << " " << each.random;
    }
}

TEST_F(OutboxTest, IsPatientWithABackEndThatIsDown) {
    server_.reply(path, {.status = 503});
    auto core = makeCore(server_.url());
    report(*core, "a");
    advance(3600);
    EXPECT_GE(server_.requests().size(), 10U);
    EXPECT_LE(server_.requests().size(), 17U);
}

TEST_F(OutboxTest, HonoursRetryAfter) {
    server_.reply(path, {.status = 429, .headers = {{"Retry-After", "120"}}});
    auto core = makeCore(server_.url());
    report(*core, "a");
    settle();
    server_.reply(path, {});
    report(*core, "b");
    advance(120);
    EXPECT_EQ(scopes(), Batches({{"a"}}));
    advance(5);
    EXPECT_EQ(scopes(), Batches({{"a"}, {"a", "b"}}));
}

TEST_F(OutboxTest, BatchesAreLimitedInNumberAndSize) {
    auto core = makeCore("");
    for (int number = 0; number < 120; ++number) report(*core, std::to_string(number));
    for (const char* scope : {"large", "larger"}) {
        report(*core, scope, std::string(ReportPolicy::largestBatchBody * 2 / 3, 'x'));
    }
    server_.reply(path, {});
    core = makeCore(server_.url());
    settle();

    auto batches = scopes();
    ASSERT_EQ(batches.size(), 4U);
    EXPECT_EQ(batches[0].size(), 50U);
    EXPECT_EQ(batches[1].front(), "50");
    EXPECT_EQ(batches[2].size(), 21U);
    EXPECT_EQ(batches[3], Texts{"larger"});
}

TEST_F(OutboxTest, DropsTheOldestWhenFull) {
    auto core = makeCore("");
    for (std::size_t number = 0; number < ReportPolicy::mostPending + 2; ++number) {
        report(*core, std::to_string(number));
    }
    EXPECT_EQ(takeErrors(), Texts({"The outbox is full. Oldest reports dropped: 1, since the start: 1",
                                   "The outbox is full. Oldest reports dropped: 1, since the start: 2"}));
    server_.reply(path, {});
    core = makeCore(server_.url());
    settle();
    auto batches = scopes();
    EXPECT_EQ(batches.size(), ReportPolicy::mostPending / ReportPolicy::largestBatch);
    EXPECT_EQ(batches.front().front(), "2");
    EXPECT_EQ(batches.back().back(), std::to_string(ReportPolicy::mostPending + 1));
}

TEST_F(OutboxTest, ANewProcessSendsWhatTheLastOneCouldNot) {
    server_.reply(path, {.status = 500});
    auto core = makeCore(server_.url());
    report(*core, "a");
    settle();
    EXPECT_EQ(scopes(), Batches({{"a"}}));

    core = nullptr;
    startProcess();
    server_.reply(path, {});
    core = makeCore(server_.url());
    settle();
    EXPECT_EQ(scopes(), Batches({{"a"}, {"a"}}));
    EXPECT_EQ(textsOf(server_.requests()[0], "id"), textsOf(server_.requests()[1], "id"));
}

TEST_F(OutboxTest, SaysSoWhenAReportCannotBeKept) {
    auto core = makeCore("");
    std::filesystem::create_directory(folder_.path() / "reports.sqlite");
    EXPECT_FALSE(report(*core, "a"));
    EXPECT_EQ(takeErrors().size(), 1U);
    std::filesystem::remove(folder_.path() / "reports.sqlite");
    EXPECT_TRUE(report(*core, "b"));
}

TEST_F(ThreadedOutboxTest, ACoreThatReplacesAnotherWaitsForItsTransfer) {
    LoopbackServer server;
    server.reply(path, {});
    server.hold();
    auto core = makeCore(server.url());
    report(*core, "a");
    server.waitForRequests(1);
    core = nullptr;
    core = makeCore(server.url());
    report(*core, "b");
    server.release();
    server.waitForRequests(2);

    EXPECT_EQ(textsOf(server.requests()[0], "scope"), Texts{"a"});
    EXPECT_EQ(textsOf(server.requests()[1], "scope"), Texts{"b"});
}

namespace {

/// Fills the outbox and writes a byte for each report that was kept.
[[noreturn]] void reportUntilKilled(const std::filesystem::path& folder, int confirmations) {
    InstalledHost<VirtualDispatcher> host({.dataDirectory = folder});
    auto core = makeCore("");
    for (std::size_t number = 0; number < ReportPolicy::mostPending; ++number) {
        bool isKept = report(*core, std::to_string(number));
        if (!isKept || ::write(confirmations, "!", 1) != 1) ::_exit(1);
    }
    while (true) ::pause();
}

std::size_t readConfirmations(int confirmations, std::size_t most) {
    std::size_t count = 0;
    char byte = 0;
    while (count < most && ::read(confirmations, &byte, 1) == 1) ++count;
    return count;
}

}  // namespace

TEST(KilledReporter, LosesNoReportThatWasKept) {
    for (std::size_t reports : {1U, 2U, 9U, 60U, 300U}) {
        TemporaryFolder folder;
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        pid_t child = ::fork();
        if (child == 0) reportUntilKilled(folder.path(), ends[1]);
        ::close(ends[1]);
        std::size_t confirmed = readConfirmations(ends[0], reports);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        confirmed += readConfirmations(ends[0], SIZE_MAX);
        ::close(ends[0]);
        ASSERT_GE(confirmed, reports);

        LoopbackServer server;
        server.reply(path, {});
        InstalledHost<VirtualDispatcher> host({.dataDirectory = folder.path()});
        auto core = makeCore(server.url());
        host.dispatcher->runUntilIdle();
        Texts arrived;
        for (const auto& request : server.requests())
            std::ranges::move(textsOf(request, "scope"), std::back_inserter(arrived));
        EXPECT_GE(arrived.size(), confirmed);
        EXPECT_LE(arrived.size(), confirmed + 1);
        for (std::size_t number = 0; number < arrived.size(); ++number) {
            ASSERT_EQ(arrived[number], std::to_string(number));
        }
    }
}
