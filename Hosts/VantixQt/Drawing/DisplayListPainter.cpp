#include "VantixQt/Drawing/DisplayListPainter.h"

#include "VantixQt/Drawing/QtConversions.h"
#include "VantixQt/Drawing/RequiredApplication.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vantix {

namespace {

QPainterPath roundedRectangle(const Rect& frame, double cornerRadius) {
    QPainterPath path;
    double radius = std::min({cornerRadius, frame.size.width / 2, frame.size.height / 2});
    if (radius > 0) {
        path.addRoundedRect(toQt(frame), radius, radius);
    } else {
        path.addRect(toQt(frame));
    }
    return path;
}

/// The bitmap's own pixels, which must outlive the result.
QImage view(const Bitmap& bitmap) {
    const auto* pixels = reinterpret_cast<const uchar*>(bitmap.pixels.data());
    return QImage(pixels, bitmap.width, bitmap.height, QImage::Format_ARGB32_Premultiplied);
}

/// Paints the items of one list, one after the other.
class ItemPainter {
public:
    ItemPainter(QPainter& painter, const TextShaping& shaping, VectorImages& vectorImages)
        : painter_(painter), shaping_(shaping), vectorImages_(vectorImages) {}

    void operator()(const FillRect& item) {
        painter_.fillPath(roundedRectangle(item.frame, item.cornerRadius), toQt(item.color));
    }

    void operator()(const StrokeRect& item) {
        painter_.strokePath(roundedRectangle(item.frame, item.cornerRadius), QPen(toQt(item.color), item.lineWidth));
    }

    void operator()(const FillEllipse& item) {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(toQt(item.color));
        painter_.drawEllipse(toQt(item.frame));
    }

    void operator()(const StrokeEllipse& item) {
        painter_.setPen(QPen(toQt(item.color), item.lineWidth));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawEllipse(toQt(item.frame));
    }

    void operator()(const DrawText& item) {
        ReferenceFont reference = shaping_.font(item.font);
        QTextLayout layout(QString::fromUtf8(item.text.data(), static_cast<qsizetype>(item.text.size())),
                           reference.font);
        shaping_.substituteFonts(layout, item.font);
        layout.setTextOption(TextShaping::option(item.rightToLeft, QTextOption::NoWrap));
        layout.beginLayout();
        QTextLine line = layout.createLine();
        if (!line.isValid()) return;
        line.setLineWidth(std::numeric_limits<int>::max());
        layout.endLayout();

        painter_.save();
        painter_.translate(toQt(item.origin));
        painter_.scale(reference.scale, reference.scale);
        painter_.setPen(toQt(item.color));
        layout.draw(&painter_, {0, -line.ascent()});
        painter_.restore();
    }

    void operator()(const DrawImage& item) {
        QRect pixels = visiblePixels(item.frame);
        if (item.image.isNull() || pixels.isEmpty()) return;
        if (!item.tint) return drawPicture(painter_, item.frame, item.image);

        QImage layer(pixels.size(), QImage::Format_ARGB32_Premultiplied);
        layer.fill(Qt::transparent);
        QPainter layerPainter(&layer);
        layerPainter.setRenderHints(painter_.renderHints());
        layerPainter.setTransform(painter_.deviceTransform() * QTransform::fromTranslate(-pixels.x(), -pixels.y()));
        drawPicture(layerPainter, item.frame, item.image);
        layerPainter.resetTransform();
        layerPainter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        layerPainter.fillRect(layer.rect(), toQt(*item.tint));
        layerPainter.end();

        drawPixels(painter_, pixels.topLeft(), layer);
    }

    void operator()(const PushClip& item) {
        painter_.save();
        painter_.setClipPath(roundedRectangle(item.frame, item.cornerRadius), Qt::IntersectClip);
        ++clips_;
    }

    void operator()(const PopClip&) {
        if (clips_ == 0) return;
        painter_.restore();
        --clips_;
    }

    /// Ends the clips that the list left open.
    void closeClips() {
        while (clips_ > 0) operator()(PopClip());
    }

private:
    QRect visiblePixels(const Rect& frame) const {
        QRectF pixels = painter_.deviceTransform().mapRect(toQt(frame));
        if (!std::isfinite(pixels.x() + pixels.y() + pixels.width() + pixels.height())) return {};
        // A widget may lie anywhere in the pixels of its window, and count in points.
        QTransform toDevice = painter_.worldTransform().inverted() * painter_.deviceTransform();
        QRectF device = toDevice.mapRect(QRectF(0, 0, painter_.device()->width(), painter_.device()->height()));
        return pixels.intersected(device).toAlignedRect();
    }

    /// One to one, from this device pixel on.
    static void drawPixels(QPainter& target, QPoint from, const QImage& pixels) {
        target.save();
        target.setWorldTransform(target.deviceTransform().inverted() * target.worldTransform());
        target.drawImage(from, pixels);
        target.restore();
    }

    void drawPicture(QPainter& target, const Rect& frame, const Image& image) {
        if (image.bitmap) {
            drawBitmap(target, frame, view(*image.bitmap));
        } else if (QSvgRenderer* renderer = vectorImages_.renderer(image.vector)) {
            renderer->render(&target, toQt(frame));
        }
    }

    /// Scales once, to the pixels that the frame covers.
    static void drawBitmap(QPainter& target, const Rect& frame, const QImage& bitmap) {
        const QTransform toPixels = target.deviceTransform();
        const QRect pixels = toPixels.mapRect(toQt(frame)).toRect();
        if (toPixels.type() > QTransform::TxScale || !isAffordable(pixels, *target.device())) {
            return target.drawImage(toQt(frame), bitmap);
        }
        QImage scaled = bitmap;
        if (pixels.size() != bitmap.size()) {
            scaled = bitmap.scaled(pixels.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        }
        drawPixels(target, pixels.topLeft(), scaled);
    }

    /// Whether a picture is not so much larger than what is seen of it that scaling it as a whole would be a waste.
    static bool isAffordable(const QRect& picture, const QPaintDevice& device) {
        return !picture.isEmpty() && picture.width() <= 2 * device.width() && picture.height() <= 2 * device.height();
    }

    QPainter& painter_;
    const TextShaping& shaping_;
    VectorImages& vectorImages_;
    int clips_ = 0;
};

}  // namespace

DisplayListPainter::DisplayListPainter(std::shared_ptr<const QtFontCatalogue> catalogue)
    : shaping_(std::move(catalogue)) {
    requireApplication("DisplayListPainter");
}

void DisplayListPainter::paint(const DisplayList& list, QPainter& painter) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    ItemPainter itemPainter(painter, shaping_, vectorImages_);
    for (const DisplayItem& item : list) std::visit(itemPainter, item);
    itemPainter.closeClips();
    painter.restore();
}

}  // namespace vantix
