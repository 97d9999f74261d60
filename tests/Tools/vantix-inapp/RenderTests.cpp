#include "tests/Support/TemporaryFolder.h"
#include "tests/Tools/vantix-inapp/Program.h"

#include <QImage>
#include <gtest/gtest.h>

#include <fstream>

using namespace vantix;

namespace {

constexpr const char* popup = R"({
    "body": {"type": "POPUP", "message": "Hello", "ctas": []},
    "template": {"phoneBackgroundColor": "#0055AA"}
})";

}  // namespace

class RenderTest : public testing::Test {
protected:
    QImage render(std::vector<std::string> options) {
        std::ofstream(folder.path() / "campaign.json") << popup;
        options.insert(options.begin(), {"render", "campaign.json", "-o", "pictures/picture.png"});
        auto run = runProgram(options, folder.path());
        EXPECT_EQ(run.errors, std::vector<std::string>{});
        EXPECT_EQ(run.status, 0);
        return QImage(QString::fromStdString(folder.path() / "pictures/picture.png"));
    }

    TemporaryFolder folder;
};

TEST_F(RenderTest, PaintsOneDeviceInItsPixels) {
    auto picture = render({"--device", "100x200@2.5"});
    EXPECT_EQ(picture.size(), QSize(250, 500));
    EXPECT_EQ(picture.pixelColor(1, 499), QColor("#0055AA"));
}

TEST_F(RenderTest, LargerTextCoversMorePixels) {
    auto darkPixels = [](const QImage& picture) {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) == QColor(Qt::black);
        }
        return count;
    };
    int standard = darkPixels(render({"--device", "phone"}));
    EXPECT_GT(standard, 0);
    EXPECT_GT(darkPixels(render({"--device", "phone", "--text-scale", "2"})), 3 * standard);
}

TEST_F(RenderTest, TheSheetShowsEveryDeviceUprightAndTurned) {
    auto sheet = render({});
    // Below each other the tallest upright and the tallest turned device, side by side the four turned ones.
    EXPECT_GT(sheet.height(), 1180 + 820);
    EXPECT_GT(sheet.width(), 844 + 667 + 932 + 1180);
    int covered = 0;
    for (int y = 0; y < sheet.height(); ++y) {
        for (int x = 0; x < sheet.width(); ++x) covered += sheet.pixelColor(x, y) == QColor("#0055AA");
    }
    // Two pictures of each device, but for their texts.
    EXPECT_GT(covered, 0.97 * 2 * (390 * 844 + 375 * 667 + 430 * 932 + 820 * 1180));
}
