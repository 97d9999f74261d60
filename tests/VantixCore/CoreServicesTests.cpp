#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "VantixCore/Settings/FileUserDefaults.h"
#include "VantixCore/VantixCore.h"
#include "tests/Support/Table.h"
#include "tests/VantixCore/CoreFixture.h"

#include <fstream>
#include <iterator>
#include <thread>

using namespace vantix;

namespace fs = std::filesystem;

namespace {

using Texts = std::vector<std::string>;
using Host = InstalledHost<VirtualDispatcher>;

constexpr LogSource log{"Manager/Test"};
constexpr int lineOfFirstLog = __LINE__ + 4;

int logAtEveryLevel() {
    int textsMade = 0;
    log.debug("log(message:)", [&] { return ++textsMade, "d"; });
    log.info("log(message:)", [&] { return ++textsMade, "i"; });
    log.error("log(message:)", [&] { return ++textsMade, "e"; });
    return textsMade;
}

class SharedSettingsTest : public CoreFixture<> {
protected:
    fs::path file() const { return folder_.path() / "data" / "settings.json"; }

    void startProcess() {
        VantixHost host = this->host();
        host.dataDirectory /= "data";
        install(std::move(host));
    }

    std::string written() {
        dispatcher().runUntilIdle();
        return textOf(file());
    }

    static std::string textOf(const fs::path& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static std::optional<std::string> customerId() { return Vantix::getSharedUserDefaults()->customerId(); }
    static void setCustomerId(std::optional<std::string> id) {
        Vantix::getSharedUserDefaults()->setCustomerId(std::move(id));
    }
};

}  // namespace

TEST(Log, HandsTheSinkWhatItsLevelLetsThrough) {
    struct Case {
        LogLevel level;
        std::string expected;
        int textsMade;
    };
    std::string lines;
    Host host({.logSink = [&](const LogLine& line) {
        EXPECT_EQ(line.file + " " + line.function, "Manager/Test log(message:)");
        EXPECT_EQ(line.location.line, lineOfFirstLog + static_cast<int>(line.level));
        lines += std::string(logLevelWords.word(line.level)) + ":" + line.message + " ";
    }});
    checkRows<Case>({{LogLevel::info, "info:i error:e ", 2},
                     {LogLevel::error, "error:e ", 1},
                     {LogLevel::none, "", 0},
                     {LogLevel::debug, "debug:d info:i error:e ", 3}},
                    [&](const Case& test) {
                        lines.clear();
                        VantixCore::generate(std::make_shared<VantixConfiguration>(), {}, false, {}, {}, Env::dev,
                                             test.level);
                        EXPECT_EQ(logAtEveryLevel(), test.textsMade);
                        EXPECT_EQ(lines, test.expected);
                    });
}

TEST(Log, GoesToStandardErrorWithoutASink) {
    VantixLogger::setConsoleLogLevel(LogLevel::info);
    testing::internal::CaptureStderr();
    std::thread(logAtEveryLevel).join();
    std::string text = testing::internal::GetCapturedStderr();
    VantixLogger::setConsoleLogLevel(LogLevel::debug);
    EXPECT_NE(text.find(" info Manager/Test log(message:): i\n"), std::string::npos) << text;
    EXPECT_NE(text.find(" error Manager/Test log(message:): e\n"), std::string::npos) << text;
    EXPECT_EQ(text.find(" d\n"), std::string::npos) << text;
}

TEST_F(SharedSettingsTest, LastBeyondTheProcessForThisUserAlone) {
    startProcess();
    EXPECT_EQ(customerId(), std::nullopt);
    setCustomerId("");
    EXPECT_EQ(customerId(), "") << "an empty id is not an absent one";
    EXPECT_FALSE(fs::exists(file())) << "written on a queue of its own";
    dispatcher().runUntilIdle();
    EXPECT_EQ(fs::status(file()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(file().parent_path()).permissions(), fs::perms::owner_all);
    startProcess();
    EXPECT_EQ(customerId(), "");
    setCustomerId({});
    dispatcher().runUntilIdle();
    startProcess();
    EXPECT_EQ(customerId(), std::nullopt);
}

TEST_F(SharedSettingsTest, ReadWhateverStandsInTheFile) {
    struct Case {
        std::string text;
        std::optional<std::string> customerId;
        std::string rewritten;
        std::string aside;
    };
    const std::string alone = R"({"customerId":"new","version":1})", newer = R"({"customerId":"c","version":2})";
    fs::create_directory(file().parent_path());
    checkRows<Case>({{R"({"other":[1],"customerId":"c"})", "c", R"({"other":[1],"customerId":"new","version":1})", ""},
                     {newer, {}, newer, ""},
                     {R"({"customerId":7})", {}, alone, R"({"customerId":7})"},
                     {R"({"version":"1"})", {}, alone, R"({"version":"1"})"},
                     {R"({"customerId":"c")", {}, alone, R"({"customerId":"c")"},
                     {R"(["customerId"])", {}, alone, R"(["customerId"])"}},
                    [&](const Case& test) {
                        std::ofstream(file()) << test.text;
                        startProcess();
                        EXPECT_EQ(customerId(), test.customerId);
                        bool isSound = test.customerId.has_value();
                        EXPECT_EQ(takeErrors().size(), isSound ? 0U : 1U);
                        setCustomerId("new");
                        EXPECT_EQ(written(), test.rewritten);
                        EXPECT_EQ(customerId(), "new");
                        fs::path aside = file() += ".damaged-1";
                        EXPECT_EQ(textOf(aside), test.aside);
                        fs::remove(aside);
                    });
}

TEST_F(SharedSettingsTest, WaitForADiskThatFailsToReadThem) {
    fs::create_directory(file().parent_path());
    std::ofstream(file()) << R"({"other":1,"customerId":"old"})";
    disk().failAfter(0);
    auto settings = std::make_shared<FileUserDefaults>(
        Platform::current()->disk, file(), dispatcher().makeSerialQueue("settings", QualityOfService::utility));
    EXPECT_EQ(takeErrors().size(), 1U);
    settings->customerId();
    dispatcher().runUntilIdle();
    EXPECT_EQ(settings->customerId(), "old");
    settings->setCustomerId("new");
    EXPECT_EQ(written(), R"({"other":1,"customerId":"new","version":1})");
}

TEST_F(SharedSettingsTest, StayInMemoryWhileTheDiskRefusesThem) {
    startProcess();
    disk().setFault(DiskFault::full);
    setCustomerId("c");
    EXPECT_EQ(written(), "");
    EXPECT_EQ(customerId(), "c");
    EXPECT_EQ(takeErrors(),
              Texts{"Settings/FileUserDefaults write(): The settings could not be written: No space left on device"});
    disk().setFault(DiskFault::none);
    setCustomerId("c");
    EXPECT_EQ(written(), R"({"customerId":"c","version":1})");
}

TEST_F(SharedSettingsTest, MayBeUsedByManyThreads) {
    startProcess();
    std::vector<std::thread> threads;
    for (const char* id : {"a", "b", "c"}) {
        threads.emplace_back([id] {
            for (int round = 0; round < 50; ++round) {
                setCustomerId(id);
                EXPECT_TRUE(customerId());
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(written(), R"({"customerId":")" + *customerId() + R"(","version":1})");
}
