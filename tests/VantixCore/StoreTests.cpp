#include "Platform/Disk/PowerCutDisk.h"
#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Store/SQLiteConnection.h"
#include "VantixCore/Store/SQLiteStores.h"
#include "VantixCore/VantixDBFactory.h"
#include "tests/Support/KilledChild.h"
#include "tests/Support/Table.h"
#include "tests/VantixCore/CoreFixture.h"

#include <fstream>
#include <future>
#include <set>
#include <sys/stat.h>
#include <thread>

using namespace vantix;

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;

const ObjectModel model{{{"Message", {"scope", "trigger", "body"}}}};

std::shared_ptr<BaseRepository> makeRepository(const ObjectModel& objectModel = model, bool infersMapping = true) {
    return VantixDBFactory::getRepositoryFor("Message", "Messages", objectModel, Env::dev, infersMapping, {}, 0.05);
}

std::string describe(const Result<bool>& result) {
    if (result) return result.value() ? "true" : "false";
    return "error: " + result.error().localizedDescription;
}

std::string failed(const std::string& reason) { return "error: The store Messages.sqlite failed: " + reason; }

Predicate equals(std::string attribute, std::string operand) {
    return {std::move(attribute), Predicate::Comparison::equals, std::move(operand)};
}

Predicate contains(std::string operand) {
    return {"trigger", Predicate::Comparison::containsIgnoringCase, std::move(operand)};
}

Texts scopesOf(const std::vector<Record>& records) {
    Texts scopes;
    for (const auto& record : records) scopes.push_back(*record.at("scope"));
    return scopes;
}

/// Every operation is run to its end before the next.
class StoreTest : public CoreFixture<> {
protected:
    /// As the end of a process does.
    void close() {
        repository_.reset();
        dispatcher().runUntilIdle();
    }

    BaseRepository& repository() {
        if (!repository_) repository_ = makeRepository();
        return *repository_;
    }

    template <typename Operation>
    std::string outcomeOf(Operation operation) {
        std::string outcome = "no completion";
        operation([&](const Result<bool>& result) { outcome = describe(result); });
        dispatcher().runUntilIdle();
        return outcome;
    }

    std::string insert(const std::map<std::string, std::string>& values) {
        return outcomeOf([&](auto completion) { repository().insert(values, completion); });
    }

    std::string insertScopes(const Texts& scopes) {
        std::string outcome;
        for (const auto& scope : scopes) outcome = insert({{"scope", scope}});
        return outcome;
    }

    std::string remove(const std::optional<Predicate>& predicate, std::optional<int> limit = {},
                       const std::string& entity = "Message") {
        return outcomeOf([&](auto completion) { repository().batchDelete({entity, predicate, limit}, completion); });
    }

    std::vector<Record> fetch(std::optional<Predicate> predicate = {}, std::optional<int> limit = {}) {
        std::vector<Record> records;
        repository().fetch(std::move(predicate), limit, [&](auto result) { records = std::move(result).value(); });
        dispatcher().runUntilIdle();
        return records;
    }

    Texts scopes(std::optional<Predicate> predicate = {}, std::optional<int> limit = {}) {
        return scopesOf(fetch(std::move(predicate), limit));
    }

    fs::path file(const std::string& ending = "") const { return folder_.path() / ("Messages.sqlite" + ending); }

    std::shared_ptr<BaseRepository> repository_;
};

}  // namespace

TEST_F(StoreTest, PredicatesSelectInInsertionOrderAndReadNothingAsALanguage) {
    const std::string quote = "' OR 1 = 1 --", zero("a\0B", 3), noText = "NUL \xFF \xF0\x9F\x98\x80";
    for (const std::map<std::string, std::string>& values :
         {std::map<std::string, std::string>{{"scope", "launch"}, {"trigger", "{\"eventName\":\"APP_LAUNCH\"}"}},
          {{"scope", "lower"}, {"trigger", "app_launch"}},
          {{"scope", "wild"}, {"trigger", "APPxLAUNCH 100%"}},
          {{"scope", "none"}},
          {{"scope", "german"}, {"trigger", "STRASSE \xC3\x84"}},
          {{"scope", "quote"}, {"trigger", quote}},
          {{"scope", "zero"}, {"trigger", zero}, {"body", noText}},
          {{"scope", "empty"}, {"trigger", ""}}}) {
        ASSERT_EQ(insert(values), "true");
    }
    struct Case {
        Predicate predicate;
        Texts expected;
    };
    checkRows<Case>({{equals("scope", "lower"), {"lower"}},
                     {equals("scope", "LOWER"), {}},
                     {equals("trigger", ""), {"empty"}},
                     {equals("trigger", quote), {"quote"}},
                     {equals("trigger", zero), {"zero"}},
                     {equals("trigger", std::string("a\0C", 3)), {}},
                     {contains("aPp_LaUnCh"), {"launch", "lower"}},
                     {contains("%"), {"wild"}},
                     {contains("stra\xC3\x9F\x65 \xC3\xA4"), {"german"}},
                     {contains(std::string("\0b", 2)), {"zero"}},
                     {contains(""), {"launch", "lower", "wild", "german", "quote", "zero", "empty"}}},
                    [&](const Case& test) { EXPECT_EQ(scopes(test.predicate), test.expected); });
    close();
    EXPECT_EQ(fetch(equals("scope", "zero")),
              std::vector<Record>({{{"scope", "zero"}, {"trigger", zero}, {"body", noText}}}));
    EXPECT_EQ(fetch(equals("scope", "none"))[0].at("trigger"), std::nullopt) << "absent is not empty";
}

TEST_F(StoreTest, LimitsCountFromTheOldestRecord) {
    insertScopes({"a", "b", "a", "c", "a"});
    EXPECT_EQ(scopes({}, 2), Texts({"a", "b"}));
    EXPECT_EQ(scopes({}, 0), Texts());
    EXPECT_EQ(remove(equals("scope", "a"), 1), "true");
    EXPECT_EQ(scopes(), Texts({"b", "a", "c", "a"}));
    EXPECT_EQ(remove(equals("scope", "a")), "true");
    EXPECT_EQ(remove(equals("scope", "a")), "true") << "nothing to delete is a success";
    insertScopes({"d"});
    EXPECT_EQ(scopes(), Texts({"b", "c", "d"}));
    EXPECT_EQ(remove({}), "true");
    EXPECT_EQ(scopes(), Texts());
}

TEST_F(StoreTest, RefusesWhatTheModelDoesNotKnow) {
    const std::string unknown = failed("the entity Message has no attribute x\" = 1 --");
    EXPECT_EQ(insert({{"scope", "b"}, {"x\" = 1 --", "c"}}), unknown);
    EXPECT_EQ(remove(equals("x\" = 1 --", "a")), unknown);
    EXPECT_EQ(remove({}, {}, "Other"), failed("this repository does not hold the entity Other"));
    repository().insert({{"scope", "without completion"}}, {});
    EXPECT_EQ(scopes(), Texts({"without completion"}));
}

TEST_F(StoreTest, OpensLazilyAndForThisUserAlone) {
    repository();
    dispatcher().runUntilIdle();
    EXPECT_FALSE(fs::exists(file()));
    insertScopes({"a"});
    for (const char* ending : {"", "-wal", "-shm"}) {
        EXPECT_EQ(fs::status(file(ending)).permissions(), fs::perms::owner_read | fs::perms::owner_write) << ending;
    }
}

TEST_F(StoreTest, KeepsTheRecordsOfAnOlderModel) {
    repository_ = makeRepository({{{"Message", {"body", "dropped", "scope"}}}});
    insert({{"scope", "old"}, {"dropped", "x"}});
    close();
    repository_ = makeRepository(model, false);
    EXPECT_TRUE(insertScopes({"refused"}).starts_with("error")) << "the file lacks a column";
    close();
    insert({{"scope", "new"}, {"trigger", "t"}});
    EXPECT_EQ(fetch(), std::vector<Record>({{{"scope", "old"}, {"trigger", std::nullopt}, {"body", std::nullopt}},
                                            {{"scope", "new"}, {"trigger", "t"}, {"body", std::nullopt}}}));
}

TEST_F(StoreTest, SetsADamagedFileAsideAndGoesOn) {
    auto overwrite = [&](std::streamoff offset, std::size_t count) {
        std::fstream stream(file(), std::ios::in | std::ios::out | std::ios::binary);
        stream.seekp(offset) << std::string(count, '\xFE');
    };
    auto replace = [&](const std::string& text) { std::ofstream(file()) << text; };
    auto reshape = [&](const std::string& definition) {
        SQLiteConnection other(std::make_shared<FileDisk>(), file(), Duration(0));
        other.run("ALTER TABLE Message RENAME TO Other");
        other.run("CREATE " + definition);
    };
    int number = 0;
    checkRows<std::function<void()>>(
        {[&] { replace("no database"); }, [&] { replace(std::string(20000, 'x')); }, [&] { overwrite(100, 400); },
         [&] { overwrite(4096, 4096); }, [&] { reshape("VIEW Message AS SELECT * FROM Other"); },
         [&] { reshape("VIEW Message AS SELECT scope FROM Other"); },
         [&] { reshape("TABLE Message (scope TEXT PRIMARY KEY, trigger, body) WITHOUT ROWID"); },
         [&] { reshape("TABLE Message (scope, trigger, body, more NOT NULL)"); },
         [&] { reshape("TABLE Message (scope INTEGER PRIMARY KEY)"); }},
        [&](const std::function<void()>& damage) {
            insertScopes({"before"});
            close();
            damage();
            EXPECT_EQ(insertScopes({"after"}), "true");
            EXPECT_EQ(scopes(), Texts({"after"}));
            EXPECT_EQ(takeErrors().size(), 1U);
            EXPECT_TRUE(fs::exists(file(".damaged-" + std::to_string(++number))));
        });
}

TEST_F(StoreTest, OpensTheFilesOfVersion1AndLeavesThoseOfANewerOneAlone) {
    auto version = [&] {
        return *SQLiteConnection(std::make_shared<FileDisk>(), file(), Duration(0)).run("PRAGMA user_version")[0][0];
    };
    insertScopes({"a"});
    close();
    EXPECT_EQ(version(), "1");
    SQLiteConnection(std::make_shared<FileDisk>(), file(), Duration(0)).run("PRAGMA user_version = 0");
    EXPECT_EQ(scopes(), Texts({"a"}));
    close();
    EXPECT_EQ(version(), "0") << "nothing of it had to be changed";

    SQLiteConnection(std::make_shared<FileDisk>(), file(), Duration(0)).run("PRAGMA user_version = 7");
    auto bytes = [&] { return *FileDisk().readFile(file(), 1U << 20); };
    std::string before = bytes();
    EXPECT_EQ(insertScopes({"b"}), failed("it is of version 7, newer than 1, and stays as it is"));
    EXPECT_EQ(remove({}), failed("it is of version 7, newer than 1, and stays as it is"));
    close();
    EXPECT_EQ(bytes(), before);
}

TEST_F(StoreTest, GoesOnWhereTheDataDirectoryIsNoFolder) {
    fs::path data = folder_.path() / "data", elsewhere = folder_.path() / "elsewhere";
    fs::create_directory(elsewhere);
    checkRows<std::function<void()>>(
        {[&] { std::ofstream(data) << "x"; }, [&] { ASSERT_EQ(::mkfifo(data.c_str(), 0600), 0); },
         [&] { fs::create_symlink(elsewhere, data); }, [&] { fs::create_symlink("nowhere", data); }},
        [&](const std::function<void()>& make) {
            make();
            repository_.reset();
            VantixHost host = this->host();
            host.dataDirectory = data;
            install(std::move(host));
            EXPECT_EQ(takeErrors().size(), 1U);
            EXPECT_EQ(insertScopes({"a"}), failed(data.string() + " is no folder"));
            fs::remove(data);
        });
    EXPECT_TRUE(fs::is_empty(elsewhere));
}

TEST_F(StoreTest, AStaleLogOfADamagedFileIsNotReadIntoItsSuccessor) {
    insertScopes({"in the file"});
    close();
    insertScopes({"in the log"});
    fs::copy(file("-wal"), folder_.path() / "log");
    close();
    std::ofstream(file()) << "no database";
    fs::copy(folder_.path() / "log", file("-wal"));
    EXPECT_EQ(scopes(), Texts());
}

TEST_F(StoreTest, ASlowDiskTakesItsTimeAndStillDoesEverything) {
    Duration waited(0);
    auto slow = std::make_shared<FaultyDisk>(std::make_shared<FileDisk>(), [&](Duration time) { waited += time; });
    SQLiteConnection connection(slow, file(), Duration(0));
    slow->setFault(DiskFault::slow);
    EXPECT_EQ(waited, Duration(0));
    connection.run("CREATE TABLE T (text)");
    EXPECT_GE(waited, seconds(0.2)) << "a write and its log";
    waited = Duration(0);
    EXPECT_TRUE(slow->exists(file()));
    EXPECT_EQ(waited, seconds(0.1)) << "of one call";
}

TEST_F(StoreTest, ALossOfPowerLeavesASoundFileWithoutTheLastChangesAtMost) {
    for (std::uint32_t seed = 0; seed < 20; ++seed) {
        auto power = std::make_shared<PowerCutDisk>(std::make_shared<FileDisk>());
        auto settings = folder_.path() / "settings";
        power->replaceFile(settings, "old");
        {
            SQLiteConnection connection(power, file(std::to_string(seed)), Duration(0));
            connection.run("CREATE TABLE T (text)");
            for (std::uint32_t row = 0; row < 2 * seed; ++row) {
                connection.run("INSERT INTO T VALUES (?)", {std::string_view("some text")});
                if (row == seed) connection.run("PRAGMA wal_checkpoint");
            }
            power->replaceFile(settings, "new");
            power->cutPower();
            EXPECT_ANY_THROW(power->exists(settings));
        }
        power->restorePower(seed);
        EXPECT_EQ(power->readFile(settings, 10), "new");
        SQLiteConnection connection(power, file(std::to_string(seed)), Duration(0));
        EXPECT_EQ(connection.run("PRAGMA integrity_check")[0][0], "ok");
        if (seed < 2) continue;
        auto rows = connection.run("SELECT count(*), max(rowid) FROM T")[0];
        EXPECT_EQ(rows[0], rows[1]) << "only the last may be missing";
        EXPECT_GE(std::stoul(*rows[0]), seed + 1);
    }
}

TEST_F(StoreTest, ReportsAFileThatAnotherWriterHoldsAndStaysReadable) {
    insertScopes({"a"});
    SQLiteConnection other(std::make_shared<FileDisk>(), file(), Duration(0));
    other.run("BEGIN IMMEDIATE");
    EXPECT_EQ(insertScopes({"b"}), failed("database is locked"));
    EXPECT_EQ(scopes(), Texts({"a"}));
    other.run("COMMIT");
    EXPECT_EQ(insertScopes({"c"}), "true");
    EXPECT_EQ(scopes(), Texts({"a", "c"}));
}

TEST_F(StoreTest, WaitsForAFileAsLongAsItsDescriptionSays) {
    auto store = Installation::current()->stores()->store({"Patient.sqlite", model, true, seconds(2.5)});
    std::string timeOut;
    store->queue().async([&] {
        store->perform([&](SQLiteConnection& connection) { timeOut = *connection.run("PRAGMA busy_timeout")[0][0]; });
    });
    dispatcher().runUntilIdle();
    EXPECT_EQ(timeOut, "2500");
}

TEST_F(StoreTest, WorkThatIsUnderWayOutlivesTheRepositoryButNotTheDispatcher) {
    repository().insert({{"scope", "a"}}, {});
    close();
    repository().insert({{"scope", "dropped"}}, [](auto) { FAIL() << "called after the dispatcher's end"; });
    repository_.reset();
    install(host());
    EXPECT_EQ(scopes(), Texts({"a"}));
}

using ThreadedStoreTest = CoreFixture<ThreadedDispatcher>;

TEST_F(ThreadedStoreTest, RunsOperationsOfManyThreadsInOrderOnOneThread) {
    auto repository = makeRepository();
    Texts completed;
    std::set<std::thread::id> completingThreads;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (int number = 0; number < 50; ++number) {
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
    std::promise<Texts> stored;
    repository->fetch({}, {}, [&](const auto& result) { stored.set_value(scopesOf(result.value())); });
    EXPECT_EQ(stored.get_future().get(), completed);
    EXPECT_EQ(completed.size(), 200U);
    EXPECT_EQ(completingThreads.size(), 1U);
}

TEST_F(ThreadedStoreTest, AProgramThatEndsWaitsForNoSlowDiskAndKeepsWhatWasConfirmed) {
    auto repository = makeRepository();
    disk().setFault(DiskFault::slow);
    disk().setSlowness(std::chrono::milliseconds(5));
    std::promise<void> first;
    Texts confirmed;
    std::size_t refused = 0;
    for (int number = 0; number < 400; ++number) {
        repository->insert({{"scope", std::to_string(number)}}, [&, number](const Result<bool>& result) {
            if (number == 0) first.set_value();
            if (result) {
                confirmed.push_back(std::to_string(number));
            } else {
                ++refused;
            }
        });
    }
    first.get_future().wait();
    std::size_t calls = disk().calls();
    Vantix::endDiskUse(std::chrono::milliseconds(50));
    repository.reset();
    dispatcher().shutDown();
    EXPECT_LT(disk().calls() - calls, 100U);
    EXPECT_EQ(confirmed.size() + refused, 400U);
    EXPECT_GT(refused, 0U);
    install(host());
    std::promise<Texts> stored;
    makeRepository()->fetch({}, {}, [&](const auto& result) { stored.set_value(scopesOf(result.value())); });
    EXPECT_EQ(stored.get_future().get(), confirmed);
}

TEST(StoreOfAKilledProcess, LosesNoInsertThatWasConfirmed) {
    for (std::size_t inserts : {1U, 2U, 9U, 40U, 150U, 600U}) {
        TemporaryFolder folder;
        std::size_t confirmed = confirmedUntilKilled(inserts, [&](auto confirm) {
            InstalledHost<ThreadedDispatcher> host({.dataDirectory = folder.path()});
            auto repository = makeRepository();
            for (int number = 0;; ++number) {
                std::promise<bool> done;
                repository->insert({{"scope", std::to_string(number)}, {"body", std::string(3000, 'x')}},
                                   [&](const auto& result) { done.set_value(result.succeeded()); });
                if (done.get_future().get()) confirm();
            }
        });
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
