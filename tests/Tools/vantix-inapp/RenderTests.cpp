#include "tests/Support/RunningProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <QImage>
#include <gtest/gtest.h>

#include <fstream>

using namespace vantix;

namespace {

constexpr const char* popup = R"({
    "scope": "a",
    "trigger": {"eventName": "INSTANT"},
    "body": {"type": "POPUP", "message": "Hello", "ctas": []},
    "template": {"phoneBackgroundColor": "#0055AA"}
})";

QImage render(const Lines& options) {
    TemporaryFolder folder;
    std::ofstream(folder.path() / "campaign.json") << popup;
    Lines arguments = {"render", "campaign.json", "-o", "pictures/picture.png"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    auto run = runProgram(arguments, folder.path());
    EXPECT_EQ(run.errors, Lines{});
    EXPECT_EQ(run.status, 0);
    return QImage(QString::fromStdString(folder.path() / "pictures/picture.png"));
}

int pixelsOf(const QImage& picture, const QColor& color) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) == color;
    }
    return count;
}

}  // namespace

TEST(Render, PaintsOneDeviceInItsPixels) {
    auto picture = render({"--device", "100x200@2.5"});
    EXPECT_EQ(picture.size(), QSize(250, 500));
    EXPECT_EQ(picture.pixelColor(1, 499), QColor("#0055AA"));
}

TEST(Render, LargerTextCoversMorePixels) {
    int standard = pixelsOf(render({"--device", "phone"}), Qt::black);
    EXPECT_GT(standard, 0);
    EXPECT_GT(pixelsOf(render({"--device", "phone", "--text-scale", "2"}), Qt::black), 3 * standard);
}

TEST(Render, AMachineWithOneFontPaintsWithIt) {
    QImage usual = render({"--device", "phone"});
    TemporaryFolder folder;
    std::ofstream(folder.path() / "fonts.conf") << "<fontconfig><dir>/usr/share/fonts/truetype/dejavu</dir><cachedir>"
                                                << folder.path().string() << "</cachedir></fontconfig>";
    setenv("FONTCONFIG_FILE", (folder.path() / "fonts.conf").c_str(), 1);
    QImage bare = render({"--device", "phone"});
    unsetenv("FONTCONFIG_FILE");
    EXPECT_NE(bare, usual);
    EXPECT_GT(pixelsOf(bare, Qt::black), pixelsOf(usual, Qt::black) / 2);
}

TEST(Render, SaysWhatWouldNotBeShownAndMindsItWhenStrict) {
    TemporaryFolder folder;
    std::ofstream(folder.path() / "popup.json") << popup;
    std::ofstream(folder.path() / "badge.json") << R"({"scope": "a", "trigger": {"eventName": "b"}})";
    auto run = [&](const Lines& options) {
        Lines arguments = {"render", "-o", "a.png", "--device", "100x200@1"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runProgram(arguments, folder.path());
    };
    EXPECT_EQ(run({"popup.json", "--strict"}).status, 0);
    for (int strict : {0, 1}) {
        auto badge = strict ? run({"badge.json", "--strict"}) : run({"badge.json"});
        EXPECT_EQ(badge.status, strict);
        EXPECT_EQ(badge.errors, Lines{"badge.json: a message of type BADGE is never shown"});
    }
}

TEST(Render, TheSheetShowsEveryDeviceUprightAndTurned) {
    auto sheet = render({});
    // Below each other the tallest upright and the tallest turned device, side by side the four turned ones.
    EXPECT_GT(sheet.height(), 1180 + 820);
    EXPECT_GT(sheet.width(), 844 + 667 + 932 + 1180);
    // Two pictures of each device, but for their texts.
    EXPECT_GT(pixelsOf(sheet, QColor("#0055AA")), 0.97 * 2 * (390 * 844 + 375 * 667 + 430 * 932 + 820 * 1180));
}
