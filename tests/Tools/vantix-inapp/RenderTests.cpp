#include "Platform/Values/Contrast.h"
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

QImage render(const Lines& options, const std::string& campaign = popup) {
    TemporaryFolder folder;
    std::ofstream(folder.path() / "campaign.json") << campaign;
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

/// The share of an area's pixels, of the whole picture's without one, that stand out from a ground.
double shareThatStandsOut(const QImage& picture, const QColor& ground, double least, const QRect& area = {}) {
    auto value = [](const QColor& color) { return Color{color.redF(), color.greenF(), color.blueF(), 1}; };
    QImage part = picture.copy(area);
    int count = 0;
    for (int y = 0; y < part.height(); ++y) {
        for (int x = 0; x < part.width(); ++x)
            count += contrast(value(part.pixelColor(x, y)), value(ground)) >= least ? 1 : 0;
    }
    return double(count) / (part.width() * part.height());
}

}  // namespace

TEST(Render, WhatACampaignLeavesOpenCanBeReadOnAnyCard) {
    EXPECT_NEAR(contrast(*colorFromText("#767676"), Color::white()), 4.54, 0.005);
    const QRect cross(450, 80, 50, 50);
    for (const char* ground : {"white", "#FFF8E7", "black", "#808080", "#3366FF", "#D02020"}) {
        for (const char* shown : {R"("message": "Hello")", R"("ctas": [{"actionText": "Open"}])"}) {
            std::string campaign =
                R"({"scope": "a", "trigger": {"eventName": "INSTANT"}, "body": {"type": "FULLSCREEN", )";
            campaign += shown + std::string(R"(}, "template": {"ctas": [{}], "layoutBackgroundColor": ")") +
                        QColor(ground).name().toStdString() + "\"}}";
            auto picture = render({"--device", "200x200@2.5"}, campaign);
            EXPECT_EQ(picture.size(), QSize(500, 500));
            EXPECT_EQ(picture.pixelColor(1, 499), QColor(ground));
            EXPECT_GT(shareThatStandsOut(picture, ground, 4.5, {0, 150, 500, 350}), 0.002) << ground << shown;
            // Whatever a photograph brings beneath the close control, its disc or its ring stands out.
            for (int color = 0; color < 512; ++color) {
                QColor beneath((color >> 6) * 36, (color >> 3 & 7) * 36, (color & 7) * 36);
                EXPECT_GT(shareThatStandsOut(picture, beneath, 3, cross), 0.1)
                    << ground << beneath.name().toStdString();
            }
        }
    }
}

TEST(Render, LargerTextCoversMorePixels) {
    int standard = pixelsOf(render({"--device", "phone"}), Qt::white);
    EXPECT_GT(standard, 0);
    EXPECT_GT(pixelsOf(render({"--device", "phone", "--text-scale", "2"}), Qt::white), 2 * standard);
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
    EXPECT_GT(pixelsOf(bare, Qt::white), pixelsOf(usual, Qt::white) / 2);
}

TEST(Render, SaysWhatWouldNotBeShownLikeThatAndMindsItWhenStrict) {
    TemporaryFolder folder;
    Lines arguments{"render", "a.json", "-o", "a.png", "--device", "100x200@1"};
    for (const std::string& line : linesOf(readFile(VANTIX_REFUSED "/findings.txt"))) {
        if (!line.starts_with("=>")) {
            std::ofstream(folder.path() / "a.json") << line;
            continue;
        }
        bool isFine = line == "=>";
        auto run = runProgram(arguments, folder.path());
        EXPECT_EQ(run.errors, isFine ? Lines{} : Lines{"a.json: " + line.substr(3)});
        EXPECT_EQ(run.status, 0);
        arguments.push_back("--strict");
        EXPECT_EQ(runProgram(arguments, folder.path()).status, isFine ? 0 : 1) << line;
        arguments.pop_back();
        EXPECT_TRUE(std::filesystem::remove(folder.path() / "a.png"));
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
