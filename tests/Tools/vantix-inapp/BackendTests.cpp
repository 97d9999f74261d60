#include "Platform/Values/JSON.h"
#include "tests/Support/RunningProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>
#include <set>

using namespace vantix;

namespace {

constexpr const char* nobody = "http://127.0.0.1:1";
constexpr const char* token = "a-token-to-keep";

Dictionary parsed(const std::string& line) {
    auto value = parseJSON(line);
    EXPECT_TRUE(value && value.value().dictionary()) << line;
    return value && value.value().dictionary() ? *value.value().dictionary() : Dictionary();
}

std::string text(const Dictionary& dictionary, const char* key) {
    const std::string* found = dictionary.text(key);
    return found ? *found : "";
}

/// A report as both programs print it, but for its identity.
std::string report(const Dictionary& line) {
    const Dictionary* attributes = line.dictionary("attributes");
    return text(line, "kind") + " " + text(line, "name") + " " + (attributes ? toJSON(*attributes) : "");
}

std::string deliveryReport(const std::string& name, const std::string& scope) {
    return "delivery " + name + R"( {"scope":")" + scope +
           R"(","cuid":"customer","senderId":"","result":"success","messageId":"","gateway":"fcm"})";
}

Lines printedReports(const Lines& played) {
    Lines reports;
    for (const std::string& line : played) {
        Dictionary whole = parsed(line);
        if (const Dictionary* part = whole.dictionary("report")) reports.push_back(report(*part));
    }
    return reports;
}

std::string configureStep(const std::string& baseURL, const std::string& pin = "") {
    Dictionary configuration{{"baseURL", baseURL}, {"sslKeyHash", pin}, {"accessToken", token}, {"logLevel", "error"}};
    return toJSON(Dictionary{{"configure", configuration}}) + "\n";
}

std::string popup(const std::string& scope, const std::string& event) {
    return R"({"cuid": "customer", "scope": ")" + scope + R"(", "trigger": {"eventName": ")" + event +
           R"("}, "body": {"type": "POPUP", "message": "Hello", "ctas": []}})";
}

/// The back end command, on loopback for as long as the object lives.
class RunningBackend {
public:
    explicit RunningBackend(const std::filesystem::path& folder, Lines options = {})
        : program_(words(options), folder) {
        Dictionary first = parsed(program_.readLine().value_or("{}"));
        if (const Dictionary* address = first.dictionary("backend")) {
            baseURL = text(*address, "baseURL");
            pin = text(*address, "sslKeyHash");
        }
    }

    /// Ends it; the reports that it took.
    std::vector<Dictionary> takenReports() {
        EXPECT_EQ(program_.end(SIGTERM), 0);
        Lines lines = program_.remainingLines();
        std::vector<Dictionary> taken;
        std::transform(lines.begin(), lines.end(), std::back_inserter(taken), parsed);
        return taken;
    }

    std::string baseURL;
    std::string pin;

private:
    static Lines words(Lines options) {
        options.insert(options.begin(), "backend");
        return options;
    }

    RunningProgram program_;
};

class BackendTest : public testing::Test {
protected:
    BackendTest() { std::filesystem::create_directory(backendFolder); }

    TemporaryFolder folder;
    std::filesystem::path backendFolder = folder.path() / "backend";
};

}  // namespace

TEST_F(BackendTest, TheCommandAnswersAndPrintsWhatItTook) {
    std::ofstream(backendFolder / "triggers.json") << "[" << popup("s-1", "APP_LAUNCH") << "]";
    RunningBackend backend(backendFolder, {"--tls", "--triggers", "triggers.json"});
    const std::string steps =
        "{\"sync\": {\"cuID\": \"customer\"}}\n{\"restart\": true}\n"
        "{\"state\": \"didBecomeActive\"}\n{\"tap\": {\"role\": \"close\"}}\n";
    auto played = runProgram({"play", "-"}, folder.path(), configureStep(backend.baseURL, backend.pin) + steps);
    auto taken = backend.takenReports();
    Lines made = {deliveryReport("inAppMessageShown", "s-1"), deliveryReport("inAppMessageDismissed", "s-1")};
    EXPECT_EQ(printedReports(played.output), made);
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(Lines({report(taken[0]), report(taken[1])}), made);
    EXPECT_NE(text(taken[0], "id"), text(taken[1], "id"));
    for (const std::string& line : played.output) EXPECT_EQ(line.find(token), std::string::npos) << line;
}

TEST_F(BackendTest, WhatComesAgainIsMarked) {
    RunningBackend backend(backendFolder, {"--truncate"});
    runProgram({"play", "-"}, folder.path(),
               configureStep(backend.baseURL) + "{\"campaign\": " + popup("s-1", "INSTANT") + "}\n{\"wait\": 5}\n");
    auto taken = backend.takenReports();
    ASSERT_EQ(taken.size(), 2U);
    taken[0].set("repeated", true);
    EXPECT_EQ(toJSON(taken[0]), toJSON(taken[1]));
}

TEST_F(BackendTest, APortIsNotShared) {
    RunningBackend backend(backendFolder);
    std::string port = backend.baseURL.substr(backend.baseURL.rfind(':') + 1);
    RunningProgram second({"backend", "--port", port}, folder.path());
    EXPECT_EQ(second.readLine(), std::nullopt);
    EXPECT_EQ(second.end(SIGTERM), 2);
    EXPECT_EQ(second.errors(), Lines{"port " + port + " cannot be had"});
}

namespace {

/// Rounds of a scenario that makes reports, each killed at another moment, on one state directory.
class KillTest : public BackendTest, public testing::WithParamInterface<bool> {
protected:
    static constexpr int rounds = 24;
    static constexpr int messagesEach = 12;

    static std::string scope(int round, int message) {
        return "s-" + std::to_string(round) + "-" + std::to_string(message);
    }

    /// The reports that a round printed before it was killed, some lines after its start.
    Lines playAndKill(const std::string& baseURL, int round) {
        constexpr int mostLines = 60, stride = 7;
        std::string steps = configureStep(baseURL);
        for (int message = 0; message < messagesEach; ++message) {
            steps += "{\"campaign\": " + popup(scope(round, message), "INSTANT") + "}\n";
            steps += "{\"tap\": {\"role\": \"close\"}}\n{\"wait\": 10}\n";
        }
        RunningProgram program({"play", "-", "--state", "state"}, folder.path(), steps);
        Lines printed;
        for (int line = round * stride % mostLines; line > 0; --line)
            printed.push_back(program.readLine().value_or("{}"));
        kills += program.end(SIGKILL) == -SIGKILL;
        for (std::string& line : program.remainingLines()) printed.push_back(std::move(line));
        return printedReports(printed);
    }

    /// Everything that the rounds can report.
    static std::set<std::string> possibleReports() {
        std::set<std::string> possible;
        for (int round = 0; round < rounds; ++round) {
            for (int message = 0; message < messagesEach; ++message) {
                possible.insert(deliveryReport("inAppMessageShown", scope(round, message)));
                possible.insert(deliveryReport("inAppMessageDismissed", scope(round, message)));
            }
        }
        return possible;
    }

    int kills = 0;
};

}  // namespace

TEST_P(KillTest, NoReportIsLostOrInvented) {
    RunningBackend backend(backendFolder);
    Lines printed;
    for (int round = 0; round < rounds; ++round) {
        Lines reports = playAndKill(GetParam() ? backend.baseURL : nobody, round);
        printed.insert(printed.end(), reports.begin(), reports.end());
    }
    EXPECT_GT(kills, rounds * 3 / 4);
    auto last = runProgram({"play", "-", "--state", "state"}, folder.path(),
                           configureStep(backend.baseURL) + "{\"queues\": true}\n");
    EXPECT_EQ(printedReports(last.output), Lines{});

    const auto possible = possibleReports();
    std::set<std::string> arrived;
    auto awaited = printed.begin();
    for (const Dictionary& line : backend.takenReports()) {
        EXPECT_TRUE(possible.count(report(line))) << toJSON(line);
        if (line.find("repeated")) continue;
        EXPECT_TRUE(arrived.insert(report(line)).second) << "two identities: " << toJSON(line);
        if (awaited != printed.end() && *awaited == report(line)) ++awaited;
    }
    EXPECT_FALSE(printed.empty());
    EXPECT_EQ(awaited, printed.end()) << "lost, or came before an earlier one: " << *awaited;
}

INSTANTIATE_TEST_SUITE_P(Kill, KillTest, testing::Bool(), [](const auto& listens) {
    return listens.param ? "WhileTheBackEndListens" : "WhileNobodyListens";
});
