#include "VantixQt/Canvas.h"
#include "VantixQt/DisplayListPainter.h"
#include "VantixQt/QtFontCatalogue.h"
#include "VantixQt/QtTextMeasurer.h"

#include <QColorSpace>
#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <limits>

namespace vantix {
namespace {

constexpr Color red = {1, 0, 0, 1};
constexpr Color blue = {0, 0, 1, 1};
constexpr Rect square = {{10, 10}, {20, 20}};

const auto catalogue = std::make_shared<QtFontCatalogue>();

Canvas painted(const DisplayList& list, double scale = 1, double alpha = 1) {
    Canvas canvas({40, 40}, scale);
    DisplayListPainter painter(catalogue);
    canvas.paint(list, painter, alpha);
    return canvas;
}

std::string pixel(const Canvas& canvas, int x, int y) { return canvas.image().pixelColor(x, y).name().toStdString(); }

Image bitmap(int width, int height, std::vector<std::uint32_t> pixels) {
    return {std::make_shared<Bitmap>(Bitmap{width, height, std::move(pixels)}), nullptr, {1, 1}};
}

Image drawing(const std::string& shapes) {
    std::string text = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 20 20'>" + shapes + "</svg>";
    return {nullptr, std::make_shared<const std::string>(text), {20, 20}};
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

TEST(DisplayListPainter, PaintsShapes) {
    struct Case {
        const char* name;
        DisplayItem item;
        std::string corner, edge, center;
    };
    const Case cases[] = {
        {"rectangle", FillRect{square, 0, red}, "#ff0000", "#ff0000", "#ff0000"},
        {"rounded", FillRect{square, 8, red}, "#ffffff", "#ff0000", "#ff0000"},
        {"radius beyond half", FillRect{square, 99, red}, "#ffffff", "#ff0000", "#ff0000"},
        {"circle", FillEllipse{square, red}, "#ffffff", "#ff0000", "#ff0000"},
        {"ring", StrokeEllipse{square, 4, red}, "#ffffff", "#ff0000", "#ffffff"},
        {"half transparent", FillRect{square, 0, {1, 0, 0, 0.5}}, "#ff7f7f", "#ff7f7f", "#ff7f7f"},
    };
    for (const auto& [name, item, corner, edge, center] : cases) {
        for (int scale : {1, 3}) {
            Canvas canvas = painted({item}, scale);
            EXPECT_EQ(pixel(canvas, 10 * scale, 10 * scale), corner) << name;
            EXPECT_EQ(pixel(canvas, 20 * scale, 10 * scale + 1), edge) << name;
            EXPECT_EQ(pixel(canvas, 20 * scale, 20 * scale), center) << name;
            EXPECT_EQ(pixel(canvas, 35 * scale, 35 * scale), "#ffffff") << name;
        }
    }
}

TEST(DisplayListPainter, ClipsToRoundedCornersAndNests) {
    constexpr Rect all = {{0, 0}, {40, 40}};
    Canvas canvas = painted({PushClip{square, 8}, FillRect{all, 0, red}, PushClip{{{20, 0}, {40, 40}}, 0},
                             FillRect{all, 0, blue}, PopClip{}, PopClip{}, FillRect{{{0, 36}, {40, 4}}, 0, blue}});
    EXPECT_EQ(pixel(canvas, 10, 10), "#ffffff") << "the corner is clear";
    EXPECT_EQ(pixel(canvas, 15, 20), "#ff0000");
    EXPECT_EQ(pixel(canvas, 25, 20), "#0000ff");
    EXPECT_EQ(pixel(canvas, 35, 20), "#ffffff") << "the outer clip still holds within the inner one";
    EXPECT_EQ(pixel(canvas, 5, 38), "#0000ff") << "after the last pop nothing is clipped";

    bool hasSoftPixel = false;
    for (int x = 10; x < 18; ++x)
        hasSoftPixel |= pixel(canvas, x, 11) != "#ffffff" && pixel(canvas, x, 11) != "#ff0000";
    EXPECT_TRUE(hasSoftPixel) << "the corner is antialiased";
}

TEST(DisplayListPainter, SurvivesUnbalancedClips) {
    EXPECT_EQ(pixel(painted({PopClip{}, FillRect{square, 0, red}}), 20, 20), "#ff0000");
    QImage image(40, 40, QImage::Format_RGB32);
    QPainter target(&image);
    DisplayListPainter painter(catalogue);
    painter.paint({PushClip{square, 0}, PushClip{square, 0}}, target);
    painter.paint({FillRect{{{0, 0}, {40, 40}}, 0, red}}, target);
    EXPECT_EQ(image.pixelColor(1, 1), Qt::red) << "a clip ends with its list";
}

TEST(DisplayListPainter, PaintsPictures) {
    constexpr std::uint32_t opaqueRed = 0xFFFF0000, opaqueBlue = 0xFF0000FF;
    Canvas canvas = painted({DrawImage{square, bitmap(2, 1, {opaqueRed, opaqueBlue}), {}}});
    EXPECT_EQ(pixel(canvas, 11, 20), "#ff0000");
    EXPECT_EQ(pixel(canvas, 28, 20), "#0000ff");
    EXPECT_EQ(inked(canvas), QRect(10, 10, 20, 20));

    std::vector<std::uint32_t> stripes;
    for (int i = 0; i < 400; ++i) stripes.push_back(i % 8 == 0 ? opaqueRed : 0xFFFFFFFF);
    EXPECT_EQ(painted({DrawImage{square, bitmap(400, 1, stripes), {}}}).image().pixelColor(20, 20).red(), 255);
    EXPECT_NEAR(painted({DrawImage{square, bitmap(400, 1, stripes), {}}}).image().pixelColor(20, 20).green(), 223, 16)
        << "a picture that shrinks shows the mean of its pixels";

    Image halfDrawn = drawing("<rect width='10' height='20' fill='#ff0000'/>");
    Canvas untinted = painted({DrawImage{square, halfDrawn, {}}});
    EXPECT_EQ(pixel(untinted, 15, 20), "#ff0000");
    EXPECT_EQ(inked(untinted), QRect(10, 10, 10, 20));
}

TEST(DisplayListPainter, TintReplacesColoursAndKeepsTheShape) {
    Image shape = drawing("<rect width='10' height='20' fill='#ff0000'/>");
    for (int scale : {1, 2}) {
        Canvas canvas = painted({DrawImage{square, shape, blue}}, scale);
        EXPECT_EQ(pixel(canvas, 15 * scale, 20 * scale), "#0000ff");
        EXPECT_EQ(inked(canvas), QRect(10 * scale, 10 * scale, 10 * scale, 20 * scale));
    }
    EXPECT_EQ(pixel(painted({DrawImage{square, shape, Color{0, 0, 1, 0.5}}}), 15, 20), "#7f7fff");
    EXPECT_EQ(pixel(painted({DrawImage{square, bitmap(1, 1, {0xFFFF0000}), blue}}), 20, 20), "#0000ff");

    DisplayList clipped = {PushClip{{{0, 0}, {40, 15}}, 0}, DrawImage{square, shape, blue}, PopClip{}};
    EXPECT_EQ(inked(painted(clipped)), QRect(10, 10, 10, 5)) << "a tinted picture is clipped, too";
}

TEST(DisplayListPainter, LeavesOutWhatCannotBeShown) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    double nan = std::numeric_limits<double>::quiet_NaN();
    Image noDrawing = {nullptr, std::make_shared<const std::string>("no drawing"), {1, 1}};
    const DisplayItem items[] = {
        DrawImage{square, {}, {}},
        DrawImage{square, noDrawing, red},
        DrawImage{{{5, 5}, {0, 0}}, bitmap(1, 1, {0xFFFF0000}), red},
        DrawImage{{{500, 500}, {9, 9}}, bitmap(1, 1, {0xFFFF0000}), red},
        DrawImage{{{0, 0}, {infinity, 9}}, bitmap(1, 1, {0xFFFF0000}), red},
        DrawImage{{{nan, 0}, {nan, 9}}, bitmap(1, 1, {0xFFFF0000}), red},
        DrawText{{10, 30}, "", Font::system(16), red, false},
        DrawText{{10, 30}, std::string(3, '\0'), Font::system(16), Color::clear(), true},
    };
    for (const DisplayItem& item : items) EXPECT_TRUE(inked(painted({item})).isEmpty());
    painted({DrawText{{10, 30}, "\xFF\xC0\x80\n\u202E\u2066", Font::system(16), red, true}});
}

TEST(DisplayListPainter, PaintsTextWhereItWasMeasured) {
    QtTextMeasurer measurer(catalogue);
    for (const char* text : {"Hx", "שלום", "مرحبا", "中文", "aב"}) {
        for (double size : {10.0, 14.5}) {
            for (int scale : {1, 3}) {
                Font font = Font::system(size);
                TextLayout layout = measurer.layOut(text, font, std::numeric_limits<double>::infinity());
                Canvas canvas = painted({DrawText{{2, 30}, text, font, red, layout.rightToLeft}}, scale);
                QRect ink = inked(canvas);
                ASSERT_FALSE(ink.isEmpty()) << text;
                EXPECT_NEAR(ink.x(), 2 * scale, 2 * scale) << text << " at " << size;
                EXPECT_NEAR(ink.x() + ink.width(), (2 + layout.size.width) * scale, 2 * scale)
                    << text << " at " << size;
                EXPECT_GE(ink.y(), (30 - layout.ascent) * scale - 1) << text;
                EXPECT_LE(ink.bottom(), (30 - layout.ascent + layout.lineHeight) * scale + 1) << text;
            }
        }
    }
}

TEST(Canvas, FadesALayerAsAWhole) {
    Canvas canvas = painted({FillRect{square, 0, red}, FillRect{square, 0, blue}}, 1, 0.5);
    EXPECT_NEAR(canvas.image().pixelColor(20, 20).green(), 127, 1);
    EXPECT_EQ(canvas.image().pixelColor(20, 20).blue(), 255)
        << "what lies below in the same layer does not shine through";
    EXPECT_EQ(pixel(painted({FillRect{square, 0, red}}, 1, 0), 20, 20), "#ffffff");
}

TEST(Canvas, WritesWhatItShows) {
    QTemporaryDir folder;
    std::string path = folder.filePath("picture.png").toStdString();
    Canvas canvas = painted({FillRect{square, 8, red}}, 1.5);
    Canvas sheet({100, 50}, 1, blue);
    sheet.draw(canvas, {{0, 0}, {20, 20}});
    EXPECT_EQ(pixel(sheet, 10, 10), "#ff0000");
    EXPECT_EQ(pixel(sheet, 30, 10), "#0000ff");
    for (const Canvas* picture : {&canvas, &sheet}) {
        ASSERT_FALSE(picture->writePNG(path));
        QImage read(QString::fromStdString(path));
        EXPECT_EQ(read.colorSpace(), QColorSpace(QColorSpace::SRgb));
        read.setColorSpace({});
        EXPECT_EQ(read.convertToFormat(picture->image().format()), picture->image());
    }
    auto failure = canvas.writePNG(folder.filePath("missing/picture.png").toStdString());
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->localizedDescription.find("missing") != std::string::npos);
}

}  // namespace
}  // namespace vantix
