#include "Platform/Dispatchers/VirtualDispatcher.h"
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
        std::ifstream stream(file());
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
        std::size_t errors;
        std::string rewritten;
    };
    const std::string alone = R"({"customerId":"new"})";
    fs::create_directory(file().parent_path());
    checkRows<Case>({{R"({"other":[1],"customerId":"c"})", "c", 0, R"({"other":[1],"customerId":"new"})"},
                     {R"({"customerId":7})", {}, 0, alone},
                     {R"({"customerId":"c")", {}, 1, alone},
                     {R"(["customerId"])", {}, 1, alone},
                     {"", {}, 1, alone}},
                    [&](const Case& test) {
                        std::ofstream(file()) << test.text;
                        startProcess();
                        EXPECT_EQ(customerId(), test.customerId);
                        EXPECT_EQ(takeErrors().size(), test.errors);
                        setCustomerId("new");
                        EXPECT_EQ(written(), test.rewritten);
                    });
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
    EXPECT_EQ(written(), R"({"customerId":"c"})");
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
    EXPECT_EQ(written(), R"({"customerId":")" + *customerId() + "\"}");
}
