#include "VantixQt/QtEnvironment.h"
#include "tests/Pictures/PictureComparison.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <gtest/gtest.h>

using namespace vantix;

namespace {

/// How a card with a text, a divider, a star and a button is drawn.
struct Drawing {
    QPointF textOffset = {};
    QPointF buttonOffset = {};
    enum class Glyphs { scaledDown, cached, outlines } glyphs = Glyphs::scaledDown;
    bool smoothsEdges = true;
    /// By how much the glyphs' outlines are wider.
    double boldness = 0;
    QColor buttonColor = QColor("#0055AA");
    QColor starColor = QColor("#FFCC00");
    bool hasDivider = true;
    int width = 320;
};

using Glyphs = Drawing::Glyphs;

void drawText(QPainter& painter, const Drawing& drawing, QPointF baseline, QColor color, const QString& text) {
    painter.setPen(color);
    if (drawing.glyphs == Glyphs::cached) return painter.drawText(baseline, text);
    if (drawing.glyphs == Glyphs::scaledDown) {
        constexpr int scale = 4;
        QFont large = painter.font();
        large.setPixelSize(large.pixelSize() * scale);
        painter.save();
        painter.setFont(large);
        painter.scale(1.0 / scale, 1.0 / scale);
        painter.drawText(baseline * scale, text);
        return painter.restore();
    }
    QPainterPath outlines;
    outlines.addText(baseline, painter.font(), text);
    painter.setPen(drawing.boldness > 0 ? QPen(color, drawing.boldness) : QPen(Qt::NoPen));
    painter.setBrush(color);
    painter.drawPath(outlines);
}

QImage draw(const Drawing& drawing) {
    QtEnvironment::start();
    QImage picture(drawing.width, 200, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QFont font("Inter");
    font.setPixelSize(16);
    font.setHintingPreference(QFont::PreferNoHinting);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing, drawing.smoothsEdges);
    painter.setFont(font);
    drawText(painter, drawing, QPointF(20, 30) + drawing.textOffset, Qt::black, "Two autumn jackets for the price");
    drawText(painter, drawing, QPointF(20, 50) + drawing.textOffset, Qt::black, "of one, this weekend only");
    if (drawing.hasDivider) painter.fillRect(16, 80, 288, 1, Qt::black);
    painter.setPen(Qt::NoPen);
    painter.setBrush(drawing.starColor);
    painter.drawEllipse(150, 90, 20, 20);
    painter.setBrush(drawing.buttonColor);
    painter.drawRoundedRect(QRectF(16, 130, 288, 40).translated(drawing.buttonOffset), 5, 5);
    drawText(painter, drawing, QPointF(110, 156) + drawing.buttonOffset, Qt::white, "To the shop");
    return picture;
}

}  // namespace

TEST(PictureComparisonTest, PassesAnotherRasteriserAndNothingElse) {
    const struct {
        const char* what;
        Drawing drawing;
        bool areAlike;
    } cases[] = {
        {"the same", {}, true},
        {"glyphs at whole pixels", {.glyphs = Glyphs::cached}, true},
        {"glyphs filled as outlines", {.glyphs = Glyphs::outlines}, true},
        {"edges without smoothing", {.smoothsEdges = false}, true},
        {"bolder glyphs", {.glyphs = Glyphs::outlines, .boldness = 0.1}, true},
        {"text a pixel lower", {.textOffset = {0, 1}}, true},
        {"text a pixel to the right", {.textOffset = {1, 0}}, true},
        {"text 4 points lower", {.textOffset = {0, 4}}, false},
        {"text 4 points to the right", {.textOffset = {4, 0}}, false},
        {"button 4 points lower", {.buttonOffset = {0, 4}}, false},
        {"button 4 points higher", {.buttonOffset = {0, -4}}, false},
        {"button 4 points to the left", {.buttonOffset = {-4, 0}}, false},
        {"glyphs of another weight", {.glyphs = Glyphs::outlines, .boldness = 2}, false},
        {"another button colour", {.buttonColor = QColor("#0088AA")}, false},
        {"another star colour", {.starColor = Qt::gray}, false},
        {"no divider", {.hasDivider = false}, false},
        {"another size", {.width = 321}, false},
    };
    QImage stored = draw({});
    for (const auto& [what, drawing, areAlike] : cases) {
        PictureComparison comparison(stored, draw(drawing));
        EXPECT_EQ(comparison.areAlike(), areAlike) << what << ": " << comparison.difference();
    }
}

TEST(PictureComparisonTest, ShowsBothPicturesAndMarksWhereTheyDiffer) {
    PictureComparison comparison(draw({}), draw({.starColor = Qt::gray}));
    QImage sheet = comparison.sideBySide();
    QPoint star(160, 100);
    EXPECT_EQ(sheet.pixelColor(star), QColor("#FFCC00"));
    EXPECT_EQ(sheet.pixelColor(star + QPoint(330, 0)), QColor(Qt::gray));
    EXPECT_EQ(sheet.pixelColor(star + QPoint(660, 0)), QColor(Qt::red));
    EXPECT_EQ(sheet.pixelColor(680, 150), QColor(Qt::white));
    EXPECT_LT((comparison.place() - star).manhattanLength(), 10);
}
