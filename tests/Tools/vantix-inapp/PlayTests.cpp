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

constexpr const char* shown = R"("shown":{"scope":"s-1")";

class PlayTest : public testing::Test {
protected:
    /// Plays the steps to their end. Whether a printed line holds the text.
    bool prints(const char* text, const Lines& options, const std::string& steps) {
        Lines arguments = {"play", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        auto run = runProgram(arguments, folder.path(), "{\"configure\": {\"logLevel\": \"none\"}}\n" + steps);
        EXPECT_EQ(run.errors, Lines{});
        EXPECT_EQ(run.status, 0);
        return std::any_of(run.output.begin(), run.output.end(),
                           [&](auto& line) { return line.find(text) != std::string::npos; });
    }

    QImage picture(const char* name) const { return QImage(QString::fromStdString(folder.path() / "out" / name)); }

    TemporaryFolder folder;
};

}  // namespace

TEST_F(PlayTest, OnlyAStateDirectoryKeepsWhatIsStoredForTheNextRun) {
    EXPECT_FALSE(prints(shown, {"--state", "some/state"}, campaign));
    EXPECT_TRUE(prints(shown, {"--state", "some/state"}, launch));
    EXPECT_TRUE(prints("$BACKEND/mapp/reports", {"--state", "some/state"}, "{\"backend\": {}}\n"));
    EXPECT_FALSE(prints(shown, {}, campaign));
    EXPECT_FALSE(prints(shown, {}, launch));
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        EXPECT_FALSE(entry.path().filename().string().starts_with("vantix-inapp-")) << entry.path();
    }
}

TEST_F(PlayTest, AScreenshotShowsTheWholeScreenInItsPixels) {
    EXPECT_TRUE(
        prints(shown, {"--out", "out"},
               "{\"screenshot\": \"before.png\"}\n" + campaign + launch + "{\"screenshot\": \"in/after.png\"}\n"));
    EXPECT_EQ(picture("before.png").pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(picture("in/after.png").size(), QSize(390 * 3, 844 * 3));
    EXPECT_EQ(picture("in/after.png").pixelColor(0, 0), QColor("#0055AA"));
}

TEST_F(PlayTest, InRealTimeTheSameStepsArePlayed) {
    RunningProgram program({"play", "-", "--live"}, folder.path(), campaignFor("INSTANT") + "{\"wait\": 60}\n");
    auto line = program.readLine();
    while (line && line->find(shown) == std::string::npos) line = program.readLine();
    EXPECT_TRUE(line);
}
