#include "tests/Support/RunningProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <QImage>
#include <gtest/gtest.h>

#include <algorithm>

using namespace vantix;

namespace {

std::string campaignFor(const std::string& event) {
    return R"({"campaign": {"cuid": "customer", "scope": "s-1", "trigger": {"eventName": ")" + event +
           R"("}, "body": {"type": "POPUP", "message": "Hello", "ctas": []},)"
           R"("template": {"phoneBackgroundColor": "#0055AA"}}})"
           "\n";
}
const std::string campaign = campaignFor("APP_LAUNCH");
constexpr const char* launch =
    "{\"state\": \"willResignActive\"}\n"
    "{\"state\": \"didBecomeActive\"}\n";

bool isShown(const std::string& line) { return line.find(R"("shown":{"scope":"s-1")") != std::string::npos; }

class PlayTest : public testing::Test {
protected:
    /// Whether the message is in what the scenario prints.
    bool showsMessage(const Lines& options, const std::string& steps) {
        Lines arguments = {"play", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        auto run = runProgram(arguments, folder.path(), "{\"configure\": {\"logLevel\": \"none\"}}\n" + steps);
        EXPECT_EQ(run.errors, Lines{});
        EXPECT_EQ(run.status, 0);
        return std::any_of(run.output.begin(), run.output.end(), isShown);
    }

    QImage picture(const char* name) const { return QImage(QString::fromStdString(folder.path() / "out" / name)); }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(PlayTest, OnlyAStateDirectoryKeepsTheStoreForTheNextRun) {
    showsMessage({"--state", "some/state"}, campaign);
    EXPECT_TRUE(showsMessage({"--state", "some/state"}, launch));
    EXPECT_FALSE(showsMessage({}, campaign));
    EXPECT_FALSE(showsMessage({}, launch));
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        EXPECT_FALSE(entry.path().filename().string().starts_with("vantix-inapp-")) << entry.path();
    }
}

TEST_F(PlayTest, AScreenshotShowsTheWholeScreenInItsPixels) {
    EXPECT_TRUE(showsMessage({"--out", "out"}, "{\"screenshot\": \"before.png\"}\n" + campaign + launch +
                                                   "{\"screenshot\": \"in/after.png\"}\n"));
    EXPECT_EQ(picture("before.png").pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(picture("in/after.png").size(), QSize(390 * 3, 844 * 3));
    EXPECT_EQ(picture("in/after.png").pixelColor(0, 0), QColor("#0055AA"));
}

TEST_F(PlayTest, InRealTimeTheSameStepsArePlayed) {
    RunningProgram program({"play", "-", "--live"}, folder.path(), campaignFor("INSTANT") + "{\"wait\": 60}\n");
    auto line = program.readLine();
    while (line && !isShown(*line)) line = program.readLine();
    EXPECT_TRUE(line);
}
