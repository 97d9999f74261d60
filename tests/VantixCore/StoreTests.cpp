#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "VantixCore/BaseRepository.h"
#include "VantixCore/VantixDBFactory.h"
#include "tests/VantixCore/InstalledHost.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <fstream>
#include <future>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace vantix;

namespace {

using Texts = std::vector<std::string>;

const ObjectModel model{{{"Message", {"scope", "trigger", "body"}}}};

std::shared_ptr<BaseRepository> makeRepository(const ObjectModel& objectModel = model, bool infersMapping = true) {
    return VantixDBFactory::getRepositoryFor("Message", "Messages", objectModel, Env::dev, infersMapping, {}, 0.1);
}

std::string describe(const Result<bool>& result) {
    if (result) return result.value() ? "true" : "false";
    return "error: " + result.error().localizedDescription;
}

/// A connection of somebody else to a store's file.
class ForeignConnection {
public:
    explicit ForeignConnection(const std::filesystem::path& file) { sqlite3_open(file.c_str(), &database_); }
    ForeignConnection(const ForeignConnection&) = delete;
    ForeignConnection& operator=(const ForeignConnection&) = delete;
    ~ForeignConnection() { sqlite3_close(database_); }

    void run(const char* sql) {
        char* problem = nullptr;
        EXPECT_EQ(sqlite3_exec(database_, sql, nullptr, nullptr, &problem), SQLITE_OK) << problem;
    }

private:
    sqlite3* database_ = nullptr;
};

void overwrite(const std::filesystem::path& file, std::size_t offset, const std::string& bytes) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(static_cast<std::streamoff>(offset));
    stream << bytes;
}

/// A store in a folder of its own; every operation is run to its end before the next.
class Store : public testing::Test {
protected:
    void TearDown() override { closeStore(); }

    /// Drops the repository, as the end of a process would, and closes the file.
    void closeStore() {
        repository_.reset();
        host_.dispatcher->runUntilIdle();
    }

    BaseRepository& repository() {
        if (!repository_) repository_ = makeRepository();
        return *repository_;
    }

    std::string insert(std::map<std::string, std::string> values) {
        std::string outcome = "no completion";
        repository().insert(std::move(values), [&](Result<bool> result) { outcome = describe(result); });
        host_.dispatcher->runUntilIdle();
        return outcome;
    }

    std::string insertScopes(const Texts& scopes) {
        std::string outcome;
        for (const auto& scope : scopes) outcome = insert({{"scope", scope}});
        return outcome;
    }

    std::vector<Record> fetch(std::optional<Predicate> predicate = {}, std::optional<int> limit = {}) {
        std::vector<Record> records;
        repository().fetch(std::move(predicate), limit, [&](Result<std::vector<Record>> result) {
            if (result) records = std::move(result).value();
            if (!result) ADD_FAILURE() << result.error().localizedDescription;
        });
        host_.dispatcher->runUntilIdle();
        return records;
    }

    Texts scopes(std::optional<Predicate> predicate = {}, std::optional<int> limit = {}) {
        Texts found;
        for (const auto& record : fetch(std::move(predicate), limit)) {
            found.push_back(record.at("scope").value_or("-"));
        }
        return found;
    }

    std::string remove(std::optional<Predicate> predicate, std::optional<int> limit,
                       const std::string& entity = "Message") {
        std::string outcome = "no completion";
        repository().batchDelete({entity, std::move(predicate), limit},
                                 [&](Result<bool> result) { outcome = describe(result); });
        host_.dispatcher->runUntilIdle();
        return outcome;
    }

    std::filesystem::path file() const { return folder_.path() / "data" / "Messages.sqlite"; }

    TemporaryFolder folder_;
    Texts errors_;
    InstalledHost<VirtualDispatcher> host_{
        {.dataDirectory = folder_.path() / "data", .logSink = [this](const LogLine& line) {
             if (line.level == LogLevel::error) errors_.push_back(line.message);
         }}};
    std::shared_ptr<BaseRepository> repository_;
};

Predicate equals(std::string attribute, std::string operand) {
    return {std::move(attribute), Predicate::Comparison::equals, std::move(operand)};
}

Predicate contains(std::string attribute, std::string operand) {
    return {std::move(attribute), Predicate::Comparison::containsIgnoringCase, std::move(operand)};
}

}  // namespace

TEST_F(Store, KeepsTextsVerbatimAndTellsAbsentFromEmptyAcrossARestart) {
    using namespace std::string_literals;
    std::string awkward = "NUL \0 quote ' \" percent % \xFF \xF0\x9F\x98\x80"s;
    EXPECT_EQ(insert({{"scope", awkward}, {"body", ""}}), "true");
    closeStore();

    Record expected{{"scope", awkward}, {"trigger", std::nullopt}, {"body", ""}};
    EXPECT_EQ(fetch(), std::vector<Record>{expected});
}

TEST_F(Store, PredicatesSelectInInsertionOrderAndReadNothingAsALanguage) {
    struct Row {
        const char* scope;
        std::optional<std::string> trigger;
    };
    const std::vector<Row> rows = {
        {"launch", "{\"eventName\":\"APP_LAUNCH\"}"},
        {"lower", "{\"eventName\":\"app_launch\"}"},
        {"wild", "{\"eventName\":\"APPxLAUNCH 100%\"}"},
        {"none", std::nullopt},
        {"empty", ""},
        {"german", "STRASSE \xC3\x84"},
        {"quote", "' OR 1 = 1 --"},
        {"zero", std::string("a\0B", 3)},
    };
    for (const auto& row : rows) {
        std::map<std::string, std::string> values{{"scope", row.scope}};
        if (row.trigger) values["trigger"] = *row.trigger;
        ASSERT_EQ(insert(values), "true");
    }
    struct Case {
        Predicate predicate;
        Texts expected;
    };
    const std::vector<Case> cases = {
        {equals("scope", "lower"), {"lower"}},
        {equals("scope", "LOWER"), {}},
        {equals("trigger", ""), {"empty"}},
        {equals("trigger", "' OR 1 = 1 --"), {"quote"}},
        {equals("trigger", std::string("a\0B", 3)), {"zero"}},
        {equals("trigger", std::string("a\0C", 3)), {}},
        {contains("trigger", "APP_LAUNCH"), {"launch", "lower"}},
        {contains("trigger", "aPp_LaUnCh"), {"launch", "lower"}},
        {contains("trigger", "100%"), {"wild"}},
        {contains("trigger", "%"), {"wild"}},
        {contains("trigger",
                  "stra\xC3\x9F"
                  "e \xC3\xA4"),
         {"german"}},
        {contains("trigger", std::string("\0b", 2)), {"zero"}},
        {contains("trigger", ""), {"launch", "lower", "wild", "empty", "german", "quote", "zero"}},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(scopes(test.predicate), test.expected) << test.predicate.attribute << " " << test.predicate.operand;
    }
}

TEST_F(Store, LimitsCountFromTheOldestRecord) {
    insertScopes({"a", "b", "a", "c", "a"});

    EXPECT_EQ(scopes({}, 2), Texts({"a", "b"}));
    EXPECT_EQ(scopes({}, 0), Texts());
    EXPECT_EQ(remove(equals("scope", "a"), 1), "true");
    EXPECT_EQ(scopes(), Texts({"b", "a", "c", "a"}));
    EXPECT_EQ(remove(equals("scope", "a"), {}), "true");
    EXPECT_EQ(remove(equals("scope", "a"), {}), "true") << "nothing to delete is a success";
    EXPECT_EQ(insertScopes({"d"}), "true");
    EXPECT_EQ(scopes(), Texts({"b", "c", "d"}));
    EXPECT_EQ(remove({}, {}), "true");
    EXPECT_EQ(scopes(), Texts());
}

TEST_F(Store, RefusesWhatTheModelDoesNotKnowInWords) {
    insertScopes({"a"});

    std::string unknown = "error: The store Messages.sqlite failed: the entity Message has no attribute x\" = 1 --";
    EXPECT_EQ(insert({{"scope", "b"}, {"x\" = 1 --", "c"}}), unknown);
    EXPECT_EQ(remove(equals("x\" = 1 --", "a"), {}), unknown);
    EXPECT_EQ(remove({}, {}, "Other"),
              "error: The store Messages.sqlite failed: this repository does not hold the entity Other");
    repository().insert({{"scope", "b"}}, {});
    EXPECT_EQ(scopes(), Texts({"a", "b"}));
}

TEST_F(Store, OpensLazilyAndForThisUserAlone) {
    repository();
    host_.dispatcher->runUntilIdle();
    EXPECT_FALSE(std::filesystem::exists(folder_.path() / "data"));

    insertScopes({"a"});

    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(folder_.path() / "data").permissions(), perms::owner_all);
    for (const char* ending : {"", "-wal", "-shm"}) {
        EXPECT_EQ(std::filesystem::status(file().string() + ending).permissions(),
                  perms::owner_read | perms::owner_write)
            << ending;
    }
}

TEST_F(Store, IsSharedByItsRepositoriesAndMadeAnewForAnotherFolder) {
    auto second = makeRepository();
    insertScopes({"a"});
    Texts seen;
    second->fetch({}, {}, [&](auto result) { seen.push_back(*result.value().at(0).at("scope")); });
    host_.dispatcher->runUntilIdle();
    EXPECT_EQ(seen, Texts({"a"}));

    Vantix::install({.dataDirectory = folder_.path() / "elsewhere"});
    repository_ = makeRepository();
    EXPECT_EQ(scopes(), Texts());
}

TEST_F(Store, KeepsTheRecordsOfAnOlderModel) {
    ObjectModel older{{{"Message", {"body", "dropped", "scope"}}}};
    repository_ = makeRepository(older);
    insert({{"scope", "old"}, {"dropped", "x"}});
    closeStore();

    repository_ = makeRepository(model, false);
    EXPECT_NE(insertScopes({"refused"}).find("error"), std::string::npos) << "the file lacks a column";
    closeStore();

    insert({{"scope", "new"}, {"trigger", "t"}});
    EXPECT_EQ(fetch(), std::vector<Record>({{{"scope", "old"}, {"trigger", std::nullopt}, {"body", std::nullopt}},
                                            {{"scope", "new"}, {"trigger", "t"}, {"body", std::nullopt}}}));
}

TEST_F(Store, SetsADamagedFileAsideAndGoesOn) {
    struct Case {
        const char* what;
        std::function<void()> damage;
    };
    const std::vector<Case> cases = {
        {"a short text", [&] { std::ofstream(file()) << "no database"; }},
        {"a long text", [&] { std::ofstream(file()) << std::string(20000, 'x'); }},
        {"a broken schema page", [&] { overwrite(file(), 100, std::string(400, '\xFE')); }},
        {"a broken page of records", [&] { overwrite(file(), 4096, std::string(4096, '\xFE')); }},
    };
    int number = 0;
    for (const auto& test : cases) {
        insertScopes({"before"});
        closeStore();
        test.damage();
        errors_.clear();

        EXPECT_EQ(insertScopes({"after"}), "true") << test.what;
        EXPECT_EQ(scopes(), Texts({"after"})) << test.what;
        EXPECT_EQ(errors_.size(), 1U) << test.what;
        EXPECT_TRUE(std::filesystem::exists(file().string() + ".damaged-" + std::to_string(++number))) << test.what;
    }
}

TEST_F(Store, AStaleLogOfADamagedFileIsNotReadIntoItsSuccessor) {
    insertScopes({"in the file"});
    closeStore();
    insertScopes({"in the log"});
    std::filesystem::copy(file().string() + "-wal", folder_.path() / "log");
    closeStore();
    std::ofstream(file()) << "no database";
    std::filesystem::copy(folder_.path() / "log", file().string() + "-wal");

    EXPECT_EQ(scopes(), Texts());
}

TEST_F(Store, ReportsWhatTheDiskRefusesAndGoesOnWhenItRecovers) {
    struct Case {
        DiskFault fault;
        const char* whenOpen;
        const char* whenClosed;
    };
    const std::vector<Case> cases = {
        {DiskFault::full, "database or disk is full", "database or disk is full"},
        {DiskFault::readOnly, "attempt to write a readonly database", "unable to open database file"},
    };
    const Predicate broken = equals("scope", "refused");
    const std::string failed = "error: The store Messages.sqlite failed: ";
    insertScopes({"a"});
    for (const auto& test : cases) {
        host_.disk->setFault(test.fault);
        EXPECT_EQ(insertScopes({"refused"}), failed + test.whenOpen);
        EXPECT_EQ(insertScopes({"refused"}), failed + test.whenClosed);
        EXPECT_EQ(remove({}, {}), failed + test.whenClosed);
        host_.disk->setFault(DiskFault::none);
        EXPECT_EQ(scopes(), Texts({"a"})) << test.whenOpen;
        EXPECT_EQ(remove(broken, {}), "true");
    }
    EXPECT_EQ(insertScopes({"b"}), "true");
    EXPECT_EQ(scopes(), Texts({"a", "b"}));
}

TEST_F(Store, ReportsAFileThatAnotherWriterHoldsAndStaysReadable) {
    insertScopes({"a"});
    ForeignConnection other(file());
    other.run("BEGIN IMMEDIATE");
    EXPECT_EQ(insertScopes({"b"}), "error: The store Messages.sqlite failed: database is locked");
    EXPECT_EQ(scopes(), Texts({"a"}));
    other.run("COMMIT");
    EXPECT_EQ(insertScopes({"c"}), "true");
    EXPECT_EQ(scopes(), Texts({"a", "c"}));
}

TEST_F(Store, WorkThatIsUnderWayOutlivesTheRepositoryButNotTheDispatcher) {
    repository().insert({{"scope", "a"}}, {});
    closeStore();
    EXPECT_EQ(scopes(), Texts({"a"}));

    repository().insert({{"scope", "dropped"}}, [](auto) { FAIL() << "called after the dispatcher's end"; });
    repository_.reset();
    host_.restartPlatform();
    EXPECT_EQ(scopes(), Texts({"a"}));
}

TEST(ThreadedStore, RunsOperationsOfManyThreadsInOrderOnOneThread) {
    constexpr int threadCount = 4, perThread = 50;
    TemporaryFolder folder;
    InstalledHost<ThreadedDispatcher> host({.dataDirectory = folder.path()});
    auto repository = makeRepository();
    std::vector<std::string> completed;
    std::set<std::thread::id> completingThreads;

    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            for (int number = 0; number < perThread; ++number) {
                std::string scope = std::to_string(thread) + ":" + std::to_string(number);
                repository->insert({{"scope", scope}}, [&, scope](Result<bool> result) {
                    EXPECT_EQ(describe(result), "true");
                    completed.push_back(scope);
                    completingThreads.insert(std::this_thread::get_id());
                });
            }
        });
    }
    for (auto& thread : threads) thread.join();
    std::promise<std::vector<std::string>> stored;
    repository->fetch({}, {}, [&](Result<std::vector<Record>> result) {
        std::vector<std::string> scopes;
        for (const auto& record : result.value()) scopes.push_back(*record.at("scope"));
        stored.set_value(std::move(scopes));
    });

    EXPECT_EQ(stored.get_future().get(), completed);
    EXPECT_EQ(completed.size(), static_cast<std::size_t>(threadCount * perThread));
    EXPECT_EQ(completingThreads.size(), 1U);
    EXPECT_FALSE(completingThreads.contains(std::this_thread::get_id()));
}

namespace {

/// Inserts without end and writes a byte for each insert that was confirmed.
[[noreturn]] void insertUntilKilled(const std::filesystem::path& folder, int confirmations) {
    InstalledHost<ThreadedDispatcher> host({.dataDirectory = folder});
    auto repository = makeRepository();
    for (int number = 0;; ++number) {
        std::promise<void> done;
        repository->insert({{"scope", std::to_string(number)}, {"body", std::string(3000, 'x')}}, [&](auto result) {
            if (!result || ::write(confirmations, "!", 1) != 1) ::_exit(1);
            done.set_value();
        });
        done.get_future().wait();
    }
}

std::size_t readConfirmations(int confirmations, std::size_t most) {
    std::size_t count = 0;
    char byte = 0;
    while (count < most && ::read(confirmations, &byte, 1) == 1) ++count;
    return count;
}

}  // namespace

TEST(KilledProcess, LosesNoInsertThatWasConfirmed) {
    for (std::size_t inserts : {1U, 2U, 9U, 40U, 150U, 600U}) {
        TemporaryFolder folder;
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        pid_t child = ::fork();
        if (child == 0) insertUntilKilled(folder.path(), ends[1]);
        ::close(ends[1]);
        std::size_t confirmed = readConfirmations(ends[0], inserts);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        confirmed += readConfirmations(ends[0], SIZE_MAX);
        ::close(ends[0]);
        ASSERT_GE(confirmed, inserts);

        InstalledHost<VirtualDispatcher> host({.dataDirectory = folder.path()});
        std::vector<Record> records;
        makeRepository()->fetch({}, {}, [&](auto result) { records = std::move(result).value(); });
        host.dispatcher->runUntilIdle();
        EXPECT_GE(records.size(), confirmed);
        for (std::size_t number = 0; number < records.size(); ++number) {
            ASSERT_EQ(records[number].at("scope"), std::to_string(number));
        }
    }
}
