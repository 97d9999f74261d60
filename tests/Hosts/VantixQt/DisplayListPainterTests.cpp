#include "VantixQt/Drawing/Canvas.h"
#include "VantixQt/Drawing/DisplayListPainter.h"
#include "VantixQt/Drawing/QtFontCatalogue.h"
#include "VantixQt/Drawing/QtTextMeasurer.h"

#include <QColorSpace>
#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <limits>

namespace vantix {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr Color red = {1, 0, 0, 1};
constexpr Color blue = {0, 0, 1, 1};
constexpr Rect square = {{10, 10}, {20, 20}};
constexpr Rect all = {{0, 0}, {40, 40}};

const std::shared_ptr<QtFontCatalogue>& catalogue() {
    static const auto made = std::make_shared<QtFontCatalogue>();
    return made;
}

Canvas painted(const DisplayList& list, double scale = 1, double alpha = 1) {
    Canvas canvas(all.size, scale);
    DisplayListPainter painter(catalogue());
    canvas.paint(list, painter, alpha);
    return canvas;
}

std::string pixel(const Canvas& canvas, int x, int y) { return canvas.image().pixelColor(x, y).name().toStdString(); }

Image bitmap(int width, std::vector<std::uint32_t> pixels) {
    return {std::make_shared<Bitmap>(Bitmap{width, 1, std::move(pixels)}), nullptr, {1, 1}};
}

/// The smallest rectangle around everything that is not white.
QRect inked(const Canvas& canvas) {
    QRect result;
    for (int y = 0; y < canvas.image().height(); ++y) {
        for (int x = 0; x < canvas.image().width(); ++x) {
            if (canvas.image().pixelColor(x, y) != Qt::white) result |= QRect(x, y, 1, 1);
        }
    }
    return result;
}

TEST(DisplayListPainter, NestsClipsAndSurvivesUnbalancedOnes) {
    Rect rightHalf = {{20, 0}, {40, 40}};
    EXPECT_EQ(inked(painted({PushClip{square, 0}, PushClip{rightHalf, 0}, FillRect{all, 0, red}})),
              QRect(20, 10, 10, 20));
    EXPECT_EQ(inked(painted({PopClip{}, FillRect{square, 0, red}})), QRect(10, 10, 20, 20));
    QImage image(40, 40, QImage::Format_RGB32);
    QPainter target(&image);
    DisplayListPainter painter(catalogue());
    painter.paint({PushClip{square, 0}, PushClip{square, 0}}, target);
    painter.paint({FillRect{all, 0, red}}, target);
    EXPECT_EQ(image.pixelColor(1, 1), Qt::red);
}

TEST(DisplayListPainter, TintReplacesColoursAndKeepsTheShape) {
    Image shape = vectorImage(
        "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 20 20'><rect width='10' height='20' fill='red'/></svg>");
    for (int scale : {1, 2}) {
        Canvas canvas = painted({DrawImage{square, shape, Color{0, 0, 1, 0.5}}}, scale);
        EXPECT_EQ(pixel(canvas, 15 * scale, 20 * scale), "#7f7fff");
        EXPECT_EQ(inked(canvas), QRect(10 * scale, 10 * scale, 10 * scale, 20 * scale));
        // As a window of that many pixels a point has it, into which something is painted further down.
        QImage window(100 * scale, 100 * scale, QImage::Format_ARGB32_Premultiplied);
        window.setDevicePixelRatio(scale);
        window.fill(Qt::white);
        QPainter painter(&window);
        painter.translate(0, 50);
        DisplayListPainter(catalogue()).paint({DrawImage{square, shape, Color::black()}}, painter);
        EXPECT_EQ(window.pixelColor(15 * scale, 70 * scale), Qt::black);
    }
}

TEST(DisplayListPainter, ShowsTheMeanOfAPictureThatShrinks) {
    std::vector<std::uint32_t> stripes;
    for (int i = 0; i < 400; ++i) stripes.push_back(i % 8 == 0 ? 0xFFFF0000 : 0xFFFFFFFF);
    QColor mean = painted({DrawImage{square, bitmap(400, stripes), {}}}).image().pixelColor(20, 20);
    EXPECT_EQ(mean.red(), 255);
    EXPECT_NEAR(mean.green(), 223, 16);
}

TEST(DisplayListPainter, ScalesAPictureOnceAndSmoothly) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t i = 0; i < 30; ++i) pixels.push_back(0xFF000000 | i * 0x86421);
    Canvas exact = painted({DrawImage{{{2, 4}, {20, 2.0 / 3}}, bitmap(30, pixels), {}}}, 1.5);
    for (int x = 0; x < 30; ++x) EXPECT_EQ(exact.image().pixel(3 + x, 6), pixels[static_cast<std::size_t>(x)]);

    Canvas large = painted({DrawImage{square, bitmap(2, {0xFFFF0000, 0}), {}}}, 2);
    for (int x = 21; x < 60; ++x) {
        QColor left = large.image().pixelColor(x - 1, 40), right = large.image().pixelColor(x, 40);
        EXPECT_EQ(right.red(), 255) << "no fringe";
        EXPECT_GE(right.green(), left.green());
        EXPECT_LT(right.green(), left.green() + 30);
    }
    EXPECT_EQ(inked(large).left(), 20);
}

TEST(DisplayListPainter, LeavesOutWhatCannotBeShown) {
    double nan = std::numeric_limits<double>::quiet_NaN();
    Image dot = bitmap(1, {0xFFFF0000});
    const DisplayItem items[] = {
        DrawImage{square, {}, {}},
        DrawImage{square, vectorImage("no drawing"), red},
        DrawImage{{{5, 5}, {0, 0}}, dot, red},
        DrawImage{{{500, 500}, {9, 9}}, dot, red},
        DrawImage{{{0, 0}, {infinite, 9}}, dot, red},
        DrawImage{{{nan, 0}, {nan, 9}}, dot, red},
        DrawText{{10, 30}, "", Font::system(16), red, false},
        DrawText{{10, 30}, std::string(3, '\0'), Font::system(16), Color::clear(), true},
    };
    for (const DisplayItem& item : items) EXPECT_TRUE(inked(painted({item})).isEmpty());
    painted({DrawText{{10, 30}, "\xFF\xC0\x80\n\u202E\u2066", Font::system(16), red, true}});
}

TEST(DisplayListPainter, PaintsTextWhereItWasMeasured) {
    for (const char* text : {"Hx", "שלום", "中文", "aב", "สวัส", "नम", "🎉"}) {
        for (int scale : {1, 3}) {
            Font font = Font::system(14.5);
            TextLayout layout = QtTextMeasurer(catalogue()).layOut(text, font, infinite);
            QRect ink = inked(painted({DrawText{{2, 30}, text, font, red, layout.rightToLeft}}, scale));
            ASSERT_FALSE(ink.isEmpty()) << text;
            EXPECT_NEAR(ink.x(), 2 * scale, 2 * scale) << text;
            EXPECT_NEAR(ink.x() + ink.width(), (2 + layout.size.width) * scale, 2 * scale) << text;
            EXPECT_GE(ink.y(), (30 - layout.ascent) * scale - 1) << text;
            EXPECT_LE(ink.bottom(), (30 - layout.ascent + layout.lineHeight) * scale + 1) << text;
        }
    }
}

TEST(DisplayListPainter, DrawsEmojiInColourWhateverTheText) {
    for (const char* text : {"🇺🇦", "🏳️‍🌈", "❤️", "☀️", "👍🏽"}) {
        for (const Font& font : {Font::system(24), Font::system(24, FontWeight::bold), Font::italicSystem(24)}) {
            QImage image = painted({DrawText{{2, 30}, text, font, blue, false}}).image();
            int colored = 0;
            for (int at = 0; at < 1600; ++at) {
                QColor pixel = image.pixelColor(at % 40, at / 40);
                colored += pixel.red() > pixel.blue() + 40;
            }
            EXPECT_GT(colored, 50) << text;
        }
    }
}

TEST(Canvas, FadesALayerAsAWhole) {
    Canvas canvas = painted({FillRect{square, 0, red}, FillRect{square, 0, blue}}, 1, 0.5);
    QColor faded = canvas.image().pixelColor(20, 20);
    EXPECT_NEAR(faded.red(), 127, 1) << "what lies below in the same layer does not shine through";
    EXPECT_EQ(faded.blue(), 255);
    EXPECT_EQ(pixel(painted({FillRect{square, 0, red}}, 1, 0), 20, 20), "#ffffff");
}

TEST(Canvas, WritesWhatItShows) {
    QTemporaryDir folder;
    std::string path = folder.filePath("picture.png").toStdString();
    Canvas sheet({100, 50}, 1.5, blue);
    sheet.draw(painted({FillRect{square, 8, red}}), {{0, 0}, {20, 20}});
    EXPECT_EQ(pixel(sheet, 15, 15), "#ff0000");
    EXPECT_EQ(pixel(sheet, 45, 15), "#0000ff");
    ASSERT_FALSE(sheet.writePNG(path));
    QImage read(QString::fromStdString(path));
    EXPECT_EQ(read.colorSpace(), QColorSpace(QColorSpace::SRgb));
    read.setColorSpace({});
    EXPECT_EQ(read.convertToFormat(sheet.image().format()), sheet.image());

    auto failure = sheet.writePNG(folder.filePath("missing/picture.png").toStdString());
    ASSERT_TRUE(failure);
    EXPECT_NE(failure->localizedDescription.find("missing"), std::string::npos);
}

}  // namespace
}  // namespace vantix
