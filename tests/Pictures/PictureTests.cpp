#include "tests/Support/LoopbackServer.h"
#include "tests/Support/RunningProgram.h"
#include "tests/Support/TemporaryFolder.h"

#include <QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

using namespace vantix;

namespace {

/// The picture as a short-sighted eye sees it: how edges are smoothed and glyphs are shaped hardly matters any more.
QImage blurred(const QImage& picture) {
    constexpr int blur = 8;
    return picture.scaled(picture.size() / blur, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB888);
}

/// The largest difference of a channel, 0 to 255; 255 for pictures of different sizes.
int difference(const QImage& stored, const QImage& drawn) {
    if (stored.size() != drawn.size() || stored.isNull()) return 255;
    QImage from = blurred(stored), to = blurred(drawn);
    int largest = 0;
    for (int y = 0; y < from.height(); ++y) {
        for (int at = 0; at < from.width() * 3; ++at) {
            largest = std::max(largest, std::abs(from.constScanLine(y)[at] - to.constScanLine(y)[at]));
        }
    }
    return largest;
}

std::vector<std::string> subjects() {
    std::vector<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(VANTIX_PICTURES "/subjects")) {
        names.push_back(file.path().stem());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// A subject is a scenario that takes "picture.png", one pixel for each point; PICTURE_URL stands for its image's URL.
class PictureTest : public testing::TestWithParam<std::string> {
protected:
    QImage draw() {
        server.reply("/picture.png",
                     {.body = readFile(VANTIX_PICTURES "/picture.png"), .headers = {{"Content-Type", "image/png"}}});
        std::string scenario = readFile(VANTIX_PICTURES "/subjects/" + GetParam() + ".jsonl");
        const std::string placeholder = "PICTURE_URL";
        if (auto at = scenario.find(placeholder); at != std::string::npos) {
            scenario.replace(at, placeholder.size(), server.url("/picture.png"));
        }
        EXPECT_EQ(runProgram({"play", "-"}, folder.path(), scenario).errors, std::vector<std::string>{});
        return QImage(QString::fromStdString(folder.path() / "picture.png"));
    }

    LoopbackServer server;
    TemporaryFolder folder;
};

}  // namespace

TEST_P(PictureTest, LooksAsStored) {
    constexpr int tolerance = 20;
    std::string storedFile = VANTIX_PICTURES "/stored/" + GetParam() + ".png";
    QImage drawn = draw();
    if (std::getenv("VANTIX_STORE_PICTURES")) {
        ASSERT_TRUE(drawn.save(QString::fromStdString(storedFile)));
        GTEST_SKIP() << "stored anew: " << storedFile;
    }
    int found = difference(QImage(QString::fromStdString(storedFile)), drawn);
    if (found <= tolerance) return;

    std::filesystem::create_directories(VANTIX_DIFFERENCES);
    std::string drawnFile = VANTIX_DIFFERENCES "/" + GetParam() + ".png";
    drawn.save(QString::fromStdString(drawnFile));
    ADD_FAILURE() << drawnFile << " differs from " << storedFile << " by " << found << " of 255";
}

INSTANTIATE_TEST_SUITE_P(Pictures, PictureTest, testing::ValuesIn(subjects()), [](const auto& subject) {
    std::string name = subject.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});
