#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "Platform/Values/Color.h"
#include "VantixCore/VantixConstants.h"
#include "VantixCore/VantixCore.h"
#include "VantixCore/VantixError.h"
#include "tests/VantixCore/InstalledHost.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <thread>

using namespace vantix;

namespace {

using Texts = std::vector<std::string>;

using Host = InstalledHost<VirtualDispatcher>;

std::string read(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::shared_ptr<VantixCore> makeCore(LogLevel level = LogLevel::debug) {
    return VantixCore::generate(std::make_shared<VantixConfiguration>(), {}, false, {}, {}, Env::dev, level);
}

constexpr LegacyLogSource source{"Manager/Test", "log(message:)"};
constexpr int lineOfFirstLog = __LINE__ + 3;

void logAtEveryLevel() {
    VantixLogger::debug("d", source);
    VantixLogger::info("i", source);
    VantixLogger::error("e", source);
}

}  // namespace

TEST(Log, HandsTheSinkWhatItsLevelLetsThrough) {
    struct Case {
        LogLevel level;
        std::string expected;
    };
    std::string lines;
    Host host({.logSink = [&](const LogLine& line) {
        EXPECT_EQ(line.file + " " + line.function, "Manager/Test log(message:)");
        EXPECT_EQ(line.location.line, lineOfFirstLog + static_cast<int>(line.level));
        lines += std::string(logLevelName(line.level)) + ":" + line.message + " ";
    }});
    const std::vector<Case> cases = {{LogLevel::debug, "debug:d info:i error:e "},
                                     {LogLevel::info, "info:i error:e "},
                                     {LogLevel::error, "error:e "},
                                     {LogLevel::none, ""}};
    for (const auto& test : cases) {
        lines.clear();
        VantixLogger::setConsoleLogLevel(test.level);
        logAtEveryLevel();
        EXPECT_EQ(lines, test.expected) << logLevelName(test.level);
    }
    makeCore(LogLevel::debug);
    EXPECT_TRUE(VantixLogger::isEnabled(LogLevel::debug)) << "a core sets the level, the program may change it then";
}

TEST(Log, GoesToStandardErrorWithoutASink) {
    VantixLogger::setConsoleLogLevel(LogLevel::info);
    testing::internal::CaptureStderr();
    std::thread other(logAtEveryLevel);
    other.join();
    std::string text = testing::internal::GetCapturedStderr();
    VantixLogger::setConsoleLogLevel(LogLevel::debug);

    EXPECT_NE(text.find(" info Manager/Test log(message:): i\n"), std::string::npos) << text;
    EXPECT_NE(text.find(" error Manager/Test log(message:): e\n"), std::string::npos) << text;
    EXPECT_EQ(text.find(" d\n"), std::string::npos) << text;
}

TEST(ColorText, ReadsThreeFormsAndNothingElse) {
    struct Case {
        std::string text;
        std::optional<Color> expected;
    };
    const std::vector<Case> cases = {
        {"#FF8000", Color{1, 128 / 255.0, 0, 1}},
        {"#ff8000", Color{1, 128 / 255.0, 0, 1}},
        {"#1a9", Color{17 / 255.0, 170 / 255.0, 153 / 255.0, 1}},
        {"#80Ff8001", Color{1, 128 / 255.0, 1 / 255.0, 128 / 255.0}},
        {"", {}},
        {"#", {}},
        {"FF8000", {}},
        {"#FF800", {}},
        {"#FF80000", {}},
        {"#FF8000000", {}},
        {"#12345G", {}},
        {"# FF800", {}},
        {"#FF8000 ", {}},
        {" #FF8000", {}},
        {"#0xFF80", {}},
        {"0xFF8000", {}},
        {"#+FF800", {}},
        {"#-F8000", {}},
        {"red", {}},
        {std::string("#FF800\0", 7), {}},
    };
    for (const auto& test : cases) EXPECT_EQ(colorFromText(test.text), test.expected) << test.text;
}

TEST(SharedSettings, LastBeyondTheProcessForThisUserAlone) {
    TemporaryFolder folder;
    auto file = folder.path() / "data" / "settings.json";
    {
        Host host({.dataDirectory = folder.path() / "data"});
        auto settings = Vantix::getSharedUserDefaults();
        EXPECT_EQ(settings->customerId(), std::nullopt);
        settings->setCustomerId("first");
        settings->setCustomerId("");
        EXPECT_EQ(Vantix::getSharedUserDefaults()->customerId(), "") << "an empty id is not an absent one";
        EXPECT_FALSE(std::filesystem::exists(file)) << "written on a queue of its own";
        host.dispatcher->runUntilIdle();
    }
    EXPECT_EQ(std::filesystem::status(file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    {
        Host host({.dataDirectory = folder.path() / "data"});
        EXPECT_EQ(Vantix::getSharedUserDefaults()->customerId(), "");
        Vantix::getSharedUserDefaults()->setCustomerId({});
        host.dispatcher->runUntilIdle();
    }
    Host host({.dataDirectory = folder.path() / "data"});
    EXPECT_EQ(Vantix::getSharedUserDefaults()->customerId(), std::nullopt);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path() / "data"), {}), 1);
}

TEST(SharedSettings, AreAbsentWithoutAnAppGroup) {
    TemporaryFolder folder;
    Host host({.dataDirectory = folder.path(), .appGroup = false});
    EXPECT_EQ(Vantix::getSharedUserDefaults(), nullptr);
}

TEST(SharedSettings, ReadWhateverStandsInTheFile) {
    struct Case {
        std::string text;
        std::optional<std::string> customerId;
        std::size_t errors;
        std::string rewritten;
    };
    const std::vector<Case> cases = {
        {R"({"other":[1],"customerId":"c"})", "c", 0, R"({"other":[1],"customerId":"new"})"},
        {R"({"customerId":7})", {}, 0, R"({"customerId":"new"})"},
        {R"({"customerId":"c")", {}, 1, R"({"customerId":"new"})"},
        {R"(["customerId"])", {}, 1, R"({"customerId":"new"})"},
        {"", {}, 1, R"({"customerId":"new"})"},
    };
    for (const auto& test : cases) {
        TemporaryFolder folder;
        std::ofstream(folder.path() / "settings.json") << test.text;
        std::size_t errors = 0;
        Host host({.dataDirectory = folder.path(), .logSink = [&](const LogLine&) { ++errors; }});
        auto settings = Vantix::getSharedUserDefaults();
        EXPECT_EQ(settings->customerId(), test.customerId) << test.text;
        EXPECT_EQ(errors, test.errors) << test.text;
        settings->setCustomerId("new");
        host.dispatcher->runUntilIdle();
        EXPECT_EQ(read(folder.path() / "settings.json"), test.rewritten);
    }
}

TEST(SharedSettings, StayInMemoryWhenTheyCannotBeWritten) {
    TemporaryFolder folder;
    std::ofstream(folder.path() / "data") << "a file where the folder should be";
    Texts errors;
    Host host({.dataDirectory = folder.path() / "data",
               .logSink = [&](const LogLine& line) { errors.push_back(line.message); }});
    Vantix::getSharedUserDefaults()->setCustomerId("c");
    host.dispatcher->runUntilIdle();

    EXPECT_EQ(Vantix::getSharedUserDefaults()->customerId(), "c");
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].find("The settings could not be written: "), 0U);
}

TEST(SharedSettings, MayBeUsedByManyThreads) {
    TemporaryFolder folder;
    Host host({.dataDirectory = folder.path()});
    std::vector<std::thread> threads;
    for (const char* id : {"a", "b", "c"}) {
        threads.emplace_back([id] {
            for (int round = 0; round < 50; ++round) {
                Vantix::getSharedUserDefaults()->setCustomerId(id);
                EXPECT_TRUE(Vantix::getSharedUserDefaults()->customerId());
            }
        });
    }
    for (auto& thread : threads) thread.join();
    host.dispatcher->runUntilIdle();
    EXPECT_EQ(read(folder.path() / "settings.json"),
              "{\"customerId\":\"" + *Vantix::getSharedUserDefaults()->customerId() + "\"}");
}

TEST(CapturedEvent, IsPostedOnTheCallingThread) {
    Host host({});
    std::shared_ptr<const EventProtocol> seen;
    auto observation = Platform::current()->notificationCenter->addObserver(
        VantixNotification::didCaptureInAppTrigger, [&](const Notification& notification) {
            seen = std::any_cast<std::shared_ptr<const EventProtocol>>(notification.object);
        });
    Vantix::captureEvent("purchase", Dictionary{{"price", 3}});

    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->name, "purchase");
    EXPECT_EQ(seen->attributes, (Dictionary{{"price", 3}}));
}

TEST(Core, NeedsAConfiguration) {
    try {
        VantixCore::generate(nullptr, {}, false, {}, {}, Env::dev);
        FAIL() << "a core without configuration";
    } catch (const VantixError& error) {
        EXPECT_EQ(error.kind(), VantixError::Kind::configuration);
    }
}

TEST(Core, FollowsACallToActionByItsType) {
    struct Case {
        const char* type;
        const char* action;
        Texts expected;
    };
    const std::vector<Case> cases = {
        {"EXTERNAL", "https://a.example", {"cta https://a.example", "open https://a.example"}},
        {"EXTERNAL", "", {"cta "}},
        {"DEEPLINK", "app://a", {"cta app://a", "link app://a"}},
        {"external", "https://a.example", {"cta https://a.example"}},
        {"RATING", "https://a.example", {"cta https://a.example"}},
        {"CLOSE", "", {"cta "}},
    };
    Texts told;
    Host host({.openURL = [&](const std::string& url) { told.push_back("open " + url); },
               .handleDeepLink = [&](const std::string& link) { told.push_back("link " + link); },
               .onCallToAction = [&](const CTA& cta, const Dictionary&) { told.push_back("cta " + cta.action); }});
    for (const auto& test : cases) {
        told.clear();
        makeCore()->performCTAAction({{}, test.action, test.type}, {});
        EXPECT_EQ(told, test.expected) << test.type;
    }
    Vantix::install({});
    makeCore()->performCTAAction({{}, "https://a.example", "EXTERNAL"}, {});
}

TEST(Core, TellsTheHostOfReports) {
    Texts told;
    TemporaryFolder folder;
    Host host({.dataDirectory = folder.path(),
               .onReport = [&](const char* kind, std::string_view name, const Dictionary& attributes) {
                   told.push_back(std::string(kind) + " " + std::string(name) + " " + *attributes.text("scope"));
               }});
    auto core = makeCore();
    core->reportDLREvent(VantixDLREvents::inAppMessageShown, {{"scope", "a"}},
                         [&](bool taken) { told.push_back(taken ? "taken" : "refused"); });
    core->reportDLREvent(VantixDLREvents::inAppMessageDismissed, {{"scope", "b"}});
    core->reportBehavioralEvent(rawValue(VantixBehavioralEvents::inAppMessageRating), {{"scope", "c"}});

    EXPECT_EQ(told, Texts({"delivery inAppMessageShown a", "taken", "delivery inAppMessageDismissed b",
                           "behavioral inAppMessageRating c"}));
}
