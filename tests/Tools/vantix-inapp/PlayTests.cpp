#include "tests/Support/TemporaryFolder.h"
#include "tests/Tools/vantix-inapp/Program.h"

#include <QImage>
#include <gtest/gtest.h>

#include <algorithm>

using namespace vantix;

namespace {

constexpr const char* quiet = "{\"configure\": {\"logLevel\": \"none\"}}\n";
constexpr const char* campaign =
    R"({"campaign": {"cuid": "customer", "scope": "s-1", "trigger": {"eventName": "APP_LAUNCH"}, )"
    R"("body": {"type": "POPUP", "message": "Hello", "ctas": []}, "template": {"phoneBackgroundColor": "#0055AA"}}})"
    "\n";
constexpr const char* launch =
    "{\"state\": \"willResignActive\"}\n"
    "{\"state\": \"didBecomeActive\"}\n";

bool contains(const std::vector<std::string>& lines, const std::string& text) {
    return std::any_of(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(text) != std::string::npos; });
}

}  // namespace

class PlayTest : public testing::Test {
protected:
    ProgramRun play(std::vector<std::string> options, const std::string& steps) {
        options.insert(options.begin(), {"play", "-"});
        auto run = runProgram(options, folder.path(), quiet + steps);
        EXPECT_EQ(run.errors, std::vector<std::string>{});
        EXPECT_EQ(run.status, 0);
        return run;
    }

    TemporaryFolder folder;
};

TEST_F(PlayTest, AStateDirectoryKeepsTheStoreForTheNextRun) {
    play({"--state", "some/state"}, campaign);
    EXPECT_TRUE(contains(play({"--state", "some/state"}, launch).output, R"("shown":{"scope":"s-1")"));
    EXPECT_FALSE(contains(play({}, launch).output, "shown"));
}

TEST_F(PlayTest, ATemporaryStateDirectoryIsRemoved) {
    play({}, std::string(campaign) + "{\"store\": true}");
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        EXPECT_FALSE(entry.is_directory()) << entry.path();
    }
}

TEST_F(PlayTest, AScreenshotShowsTheWholeScreenInItsPixels) {
    play({"--out", "pictures"}, "{\"screenshot\": \"before.png\"}\n" + std::string(campaign) + launch +
                                    "{\"screenshot\": \"in/after.png\"}\n");
    auto picture = [&](const char* name) {
        return QImage(QString::fromStdString((folder.path() / "pictures" / name).string()));
    };
    EXPECT_EQ(picture("before.png").pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(picture("in/after.png").size(), QSize(390 * 3, 844 * 3));
    EXPECT_EQ(picture("in/after.png").pixelColor(0, 0), QColor("#0055AA"));
}

TEST_F(PlayTest, AFolderThatTakesNoPicturesIsRefusedBeforeAnythingIsPlayed) {
    auto run =
        runProgram({"play", "-", "--out", "stdin"}, folder.path(), std::string(quiet) + "{\"screenshot\": \"a.png\"}");
    EXPECT_EQ(run.lastError(), "stdin cannot be written to");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.output.empty());
}

TEST_F(PlayTest, InRealTimeTheSameStepsArePlayed) {
    auto run = play({"--live"}, std::string(campaign) + "{\"wait\": 0}\n{\"queues\": true}\n");
    EXPECT_TRUE(contains(run.output, R"("queues":{"milestone":[],"broadcast":null,"other":[]})"));
}
