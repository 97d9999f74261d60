#include "Platform/Values/JSON.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Tools/vantix-inapp/Program.h"
#include "tests/Tools/vantix-inapp/RunningProgram.h"

#include <QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <netinet/in.h>
#include <set>
#include <sys/socket.h>
#include <unistd.h>

using namespace vantix;

namespace {

using Lines = std::vector<std::string>;

constexpr const char* token = "a-token-to-keep";
constexpr const char* wrongPin = "sha256//AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=";

Dictionary parsed(const std::string& line) {
    auto value = parseJSON(line);
    EXPECT_TRUE(value && value.value().dictionary()) << line;
    return value && value.value().dictionary() ? *value.value().dictionary() : Dictionary();
}

std::string text(const Dictionary& dictionary, const char* key) {
    const std::string* found = dictionary.text(key);
    return found ? *found : "";
}

/// What stands behind the key in each line that has it.
std::vector<Dictionary> parts(const Lines& lines, const char* key) {
    std::vector<Dictionary> parts;
    for (const std::string& line : lines) {
        Dictionary whole = parsed(line);
        if (const Dictionary* part = whole.dictionary(key)) parts.push_back(*part);
    }
    return parts;
}

/// A report as both programs print it.
std::string report(const Dictionary& line) {
    const Dictionary* attributes = line.dictionary("attributes");
    return text(line, "kind") + " " + text(line, "name") + " " + (attributes ? toJSON(*attributes) : "");
}

Lines reports(const std::vector<Dictionary>& lines) {
    Lines reports;
    std::transform(lines.begin(), lines.end(), std::back_inserter(reports), report);
    return reports;
}

Lines printedReports(const Lines& played) { return reports(parts(played, "report")); }

std::string deliveryReport(const std::string& name, const std::string& scope) {
    return "delivery " + name + R"( {"scope":")" + scope +
           R"(","cuid":"customer","senderId":"","result":"success","messageId":"","gateway":"fcm"})";
}

Lines requestsTo(const std::string& ending, const Lines& played) {
    Lines urls;
    for (const Dictionary& request : parts(played, "request")) {
        if (text(request, "url").ends_with(ending)) urls.push_back(text(request, "url"));
    }
    return urls;
}

/// What the trigger sync logged.
Lines syncLog(const Lines& played) {
    Lines log;
    for (const Dictionary& line : parts(played, "log")) {
        if (text(line, "file") != "Manager/InAppMessageTriggerManager") continue;
        log.push_back(text(line, "function") + " " + text(line, "message"));
    }
    return log;
}

bool contains(const Lines& lines, const std::string& text) {
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(text) != std::string::npos; });
}

std::string popup(const std::string& scope, const std::string& event, const std::string& moreOfBody = "") {
    return R"({"cuid": "customer", "scope": ")" + scope + R"(", "trigger": {"eventName": ")" + event +
           R"("}, "body": {"type": "POPUP", "message": "Hello", "ctas": [])" + moreOfBody + "}}";
}

/// A back end on the loopback for as long as the object lives.
class RunningBackend {
public:
    RunningBackend(std::vector<std::string> options, const std::filesystem::path& folder)
        : program_(withCommand(std::move(options)), folder) {
        Dictionary first = parsed(program_.readLine().value_or("{}"));
        if (const Dictionary* address = first.dictionary("backend")) {
            baseURL = text(*address, "baseURL");
            pin = text(*address, "sslKeyHash");
        }
    }

    /// Ends it; the reports that it took.
    std::vector<Dictionary> takenReports() {
        EXPECT_EQ(program_.end(SIGTERM), 0);
        std::vector<Dictionary> taken;
        for (const std::string& line : program_.remainingLines()) taken.push_back(parsed(line));
        return taken;
    }

    std::string baseURL;
    std::string pin;

private:
    static std::vector<std::string> withCommand(std::vector<std::string> options) {
        options.insert(options.begin(), "backend");
        return options;
    }

    RunningProgram program_;
};

}  // namespace

class BackendTest : public testing::Test {
protected:
    void write(const char* file, const std::string& content) const { std::ofstream(folder.path() / file) << content; }

    /// The lines of a scenario that is played to its end against the address.
    Lines play(const std::string& baseURL, const std::string& pin, const std::string& steps) const {
        Dictionary configuration{{"baseURL", baseURL}, {"sslKeyHash", pin}, {"accessToken", token}};
        auto run =
            runProgram({"play", "-"}, folder.path(), toJSON(Dictionary{{"configure", configuration}}) + "\n" + steps);
        EXPECT_EQ(run.errors, Lines{});
        EXPECT_EQ(run.status, 0);
        EXPECT_FALSE(contains(run.output, token));
        return run.output;
    }

    TemporaryFolder folder;
};

TEST_F(BackendTest, MessagesAreFetchedAndTheirReportsArriveInOrder) {
    write("triggers.json", "[" + popup("s-1", "APP_LAUNCH") + "," + popup("s-2", "bought") + "]");
    for (bool usesTLS : {false, true}) {
        SCOPED_TRACE(usesTLS ? "https" : "http");
        std::vector<std::string> options = {"--triggers", "triggers.json"};
        if (usesTLS) options.emplace_back("--tls");
        RunningBackend backend(options, folder.path());
        EXPECT_EQ(backend.baseURL.starts_with("https://127.0.0.1:"), usesTLS) << backend.baseURL;
        EXPECT_EQ(backend.pin.starts_with("sha256//"), usesTLS) << backend.pin;

        auto played = play(backend.baseURL, backend.pin,
                           "{\"sync\": {\"cuID\": \"customer\"}}\n"
                           "{\"store\": true}\n"
                           "{\"restart\": true}\n"
                           "{\"state\": \"didBecomeActive\"}\n"
                           "{\"tap\": {\"role\": \"close\"}}\n"
                           "{\"wait\": 10}\n"
                           "{\"event\": \"bought\"}\n"
                           "{\"tap\": {\"role\": \"close\"}}\n");
        auto taken = backend.takenReports();

        EXPECT_EQ(syncLog(played), Lines{});
        EXPECT_TRUE(contains(played, R"("Authorization":"Bearer …")"));
        Lines made = {deliveryReport("inAppMessageShown", "s-1"), deliveryReport("inAppMessageDismissed", "s-1"),
                      deliveryReport("inAppMessageShown", "s-2"), deliveryReport("inAppMessageDismissed", "s-2")};
        EXPECT_EQ(printedReports(played), made);
        EXPECT_EQ(reports(taken), made);
        std::set<std::string> identities;
        for (const Dictionary& report : taken) {
            EXPECT_TRUE(identities.insert(text(report, "id")).second) << toJSON(report);
            EXPECT_EQ(toJSON(report).find(token), std::string::npos);
        }
    }
}

TEST_F(BackendTest, AnImageIsFetchedOnceAndShown) {
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(QColor("#C01020"));
    std::filesystem::create_directory(folder.path() / "images");
    ASSERT_TRUE(picture.save(QString::fromStdString((folder.path() / "images/red.png").string())));

    write("triggers.json", "[]");
    RunningBackend backend({"--triggers", "triggers.json", "--images", "images"}, folder.path());
    std::string image = R"(, "image": ")" + backend.baseURL + R"(/images/red.png")";
    write("triggers.json", "[" + popup("s-1", "APP_LAUNCH", image) + "," + popup("s-2", "bought", image) + "]");
    auto played = play(backend.baseURL, "",
                       "{\"sync\": {\"cuID\": \"customer\"}}\n"
                       "{\"restart\": true}\n"
                       "{\"state\": \"didBecomeActive\"}\n"
                       "{\"screenshot\": \"first.png\"}\n"
                       "{\"tap\": {\"role\": \"close\"}}\n"
                       "{\"wait\": 10}\n"
                       "{\"event\": \"bought\"}\n"
                       "{\"screenshot\": \"second.png\"}\n");

    EXPECT_EQ(requestsTo("/images/red.png", played).size(), 1U);
    for (const char* name : {"first.png", "second.png"}) {
        QImage screen(QString::fromStdString((folder.path() / name).string()));
        EXPECT_EQ(screen.pixelColor(screen.rect().center()), QColor("#C01020")) << name;
    }
}

TEST_F(BackendTest, ASyncThatGoesWrongStoresNothing) {
    const std::string called = "syncTriggers(withPayload:) Error: ";
    const std::string answered = "processReceived(response:requestPayload:) ";
    const std::string undecodable = answered + "Event API Response decoding failed: ";
    const std::string triggers = R"("triggers": [)" + popup("s-1", "APP_LAUNCH") + "]}";
    const std::string success = R"({"status": "200", )" + triggers;
    struct {
        const char* what;
        std::vector<std::string> options;
        std::string answer;
        /// Absent: as the back end prints it.
        std::optional<std::string> pin;
        /// How the one line that is logged begins; none is when it is empty.
        std::string problem;
    } const cases[] = {
        {"wrong pin", {"--tls"}, success, wrongPin, called + "The server's public key is not the pinned one: "},
        {"no pin", {"--tls"}, success, "", called + "No secure connection to the server: "},
        {"half an answer", {"--truncate"}, success, {}, called + "The connection failed: "},
        {"refused", {"--fail", "1"}, success, {}, answered + "Recieved nil data"},
        {"empty", {}, "", {}, answered + "Recieved nil data"},
        {"no JSON", {}, "sorry", {}, undecodable},
        {"no campaigns", {}, "[1]", {}, undecodable},
        {"no dictionary", {}, "200", {}, ""},
        {"a number as status", {}, R"({"status": 200, )" + triggers, {}, ""},
        {"another status", {}, R"({"status": "500", )" + triggers, {}, ""},
        {"a word as status", {}, R"({"status": "OK", )" + triggers, {}, ""},
        {"no status", {}, "{" + triggers, {}, ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.what);
        write("triggers.json", each.answer);
        auto options = each.options;
        options.insert(options.end(), {"--triggers", "triggers.json"});
        RunningBackend backend(options, folder.path());
        auto played = play(backend.baseURL, each.pin.value_or(backend.pin),
                           "{\"sync\": {\"cuID\": \"customer\"}}\n"
                           "{\"wait\": 600}\n"
                           "{\"store\": true}\n");

        auto log = syncLog(played);
        EXPECT_EQ(log.size(), each.problem.empty() ? 0U : 1U);
        for (const std::string& line : log) EXPECT_TRUE(line.starts_with(each.problem)) << line;
        EXPECT_EQ(requestsTo("/mapp/events", played).size(), 1U);
        EXPECT_TRUE(contains(played, R"("store":[]})"));
        EXPECT_TRUE(backend.takenReports().empty());
    }
}

TEST_F(BackendTest, APortIsNotShared) {
    RunningBackend backend({}, folder.path());
    std::string port = backend.baseURL.substr(backend.baseURL.rfind(':') + 1);
    RunningProgram second({"backend", "--port", port}, folder.path());
    ASSERT_EQ(second.readLine(), std::nullopt);
    EXPECT_EQ(second.end(0), 2);
}

TEST_F(BackendTest, RefusedReportsArriveLater) {
    RunningBackend backend({"--fail", "2"}, folder.path());
    auto played = play(backend.baseURL, "",
                       "{\"campaign\": " + popup("s-1", "INSTANT") +
                           "}\n"
                           "{\"tap\": {\"role\": \"close\"}}\n"
                           "{\"wait\": 60}\n");
    EXPECT_EQ(requestsTo("/mapp/reports", played).size(), 3U);
    EXPECT_EQ(reports(backend.takenReports()), printedReports(played));
    EXPECT_EQ(printedReports(played).size(), 2U);
}

namespace {

/// A port at which nothing listens, kept from everybody else until it is given back.
class ReservedPort {
public:
    ReservedPort() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* anyAddress = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof(address);
        EXPECT_EQ(bind(socket_, anyAddress, size), 0);
        EXPECT_EQ(getsockname(socket_, anyAddress, &size), 0);
        number_ = ntohs(address.sin_port);
    }
    ~ReservedPort() { giveBack(); }

    std::string number() const { return std::to_string(number_); }
    void giveBack() {
        if (socket_ >= 0) close(socket_);
        socket_ = -1;
    }

private:
    int socket_;
    int number_ = 0;
};

bool isSubsequence(const Lines& some, const Lines& all) {
    auto next = some.begin();
    for (const std::string& line : all) {
        if (next != some.end() && *next == line) ++next;
    }
    return next == some.end();
}

}  // namespace

/// Rounds of a scenario that makes reports, each killed at another moment, on one state directory after another.
class KillTest : public BackendTest {
protected:
    static constexpr int directories = 5;
    static constexpr int roundsEach = 24;
    static constexpr int messagesEach = 12;

    static std::string scope(int round, int message) {
        return "s-" + std::to_string(round) + "-" + std::to_string(message);
    }

    static std::string stateDirectory(int number) { return "state-" + std::to_string(number); }

    static std::string configureStep(const std::string& baseURL) {
        return toJSON(Dictionary{{"configure", Dictionary{{"baseURL", baseURL}, {"logLevel", "none"}}}}) + "\n";
    }

    /// Everything that the rounds of one state directory can report.
    static std::set<std::string> possibleReports(int directory) {
        std::set<std::string> possible;
        for (int round = directory * roundsEach; round < (directory + 1) * roundsEach; ++round) {
            for (int message = 0; message < messagesEach; ++message) {
                possible.insert(deliveryReport("inAppMessageShown", scope(round, message)));
                possible.insert(deliveryReport("inAppMessageDismissed", scope(round, message)));
            }
        }
        return possible;
    }

    /// The reports that a round printed before it was killed, after so many of its lines.
    Lines playAndKill(const std::string& baseURL, int round, int linesBefore) {
        std::string steps = configureStep(baseURL);
        for (int message = 0; message < messagesEach; ++message) {
            steps += "{\"campaign\": " + popup(scope(round, message), "INSTANT") + "}\n";
            steps += "{\"tap\": {\"role\": \"close\"}}\n{\"wait\": 10}\n";
        }
        RunningProgram program({"play", "-", "--state", stateDirectory(round / roundsEach)}, folder.path(), steps);
        Lines printed;
        while (static_cast<int>(printed.size()) < linesBefore) {
            auto line = program.readLine();
            if (!line) break;
            printed.push_back(*line);
        }
        if (program.end(SIGKILL) == -SIGKILL) ++kills;
        for (std::string& line : program.remainingLines()) printed.push_back(std::move(line));
        return printedReports(printed);
    }

    /// What the rounds of one state directory printed, in their order.
    Lines playRounds(const std::string& baseURL, int directory) {
        constexpr int mostLines = 60;
        constexpr int stride = 7;
        Lines printed;
        for (int round = directory * roundsEach; round < (directory + 1) * roundsEach; ++round) {
            for (auto& report : playAndKill(baseURL, round, round * stride % mostLines)) printed.push_back(report);
        }
        return printed;
    }

    void sendWhatWaits(const std::string& baseURL, int directory) const {
        auto run = runProgram({"play", "-", "--state", stateDirectory(directory)}, folder.path(),
                              configureStep(baseURL) + "{\"queues\": true}\n");
        EXPECT_EQ(run.status, 0);
        EXPECT_TRUE(printedReports(run.output).empty());
    }

    static void expectNothingLostOrInvented(const std::vector<Dictionary>& taken, const Lines& printed, int directory) {
        std::set<std::string> possible = possibleReports(directory);
        Lines arrived;
        for (const Dictionary& line : taken) {
            EXPECT_TRUE(possible.count(report(line))) << toJSON(line);
            if (!line.find("repeated")) arrived.push_back(report(line));
        }
        EXPECT_EQ(std::set<std::string>(arrived.begin(), arrived.end()).size(), arrived.size())
            << "one report has two identities";
        EXPECT_TRUE(isSubsequence(printed, arrived)) << "a report is lost, or came before an earlier one";
        EXPECT_FALSE(printed.empty());
    }

    void expectMostWereKilled() const { EXPECT_GT(kills, directories * roundsEach * 3 / 4); }

    int kills = 0;
};

TEST_F(KillTest, WhatWasReportedArrivesFromABackEndThatListens) {
    for (int directory = 0; directory < directories; ++directory) {
        RunningBackend backend({}, folder.path());
        Lines printed = playRounds(backend.baseURL, directory);
        sendWhatWaits(backend.baseURL, directory);
        expectNothingLostOrInvented(backend.takenReports(), printed, directory);
    }
    expectMostWereKilled();
}

TEST_F(KillTest, WhatWasReportedWaitsForABackEnd) {
    for (int directory = 0; directory < directories; ++directory) {
        ReservedPort port;
        Lines printed = playRounds("http://127.0.0.1:" + port.number(), directory);
        port.giveBack();
        RunningBackend backend({"--port", port.number()}, folder.path());
        sendWhatWaits(backend.baseURL, directory);
        expectNothingLostOrInvented(backend.takenReports(), printed, directory);
    }
    expectMostWereKilled();
}
