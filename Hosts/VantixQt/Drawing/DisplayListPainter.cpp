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

        painter_.save();
        painter_.resetTransform();
        painter_.drawImage(pixels.topLeft(), layer);
        painter_.restore();
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
        QRectF device(0, 0, painter_.device()->width(), painter_.device()->height());
        return pixels.intersected(device).toAlignedRect();
    }

    void drawPicture(QPainter& target, const Rect& frame, const Image& image) {
        if (image.bitmap) {
            drawBitmap(target, frame, view(*image.bitmap));
        } else if (QSvgRenderer* renderer = vectorImages_.renderer(image.vector)) {
            renderer->render(&target, toQt(frame));
        }
    }

    /// Qt's smooth drawing looks at four pixels only, so a picture that shrinks by more than half is scaled first.
    static void drawBitmap(QPainter& target, const Rect& frame, QImage bitmap) {
        QSizeF size = target.deviceTransform().mapRect(toQt(frame)).size();
        if (size.width() * 2 < bitmap.width() || size.height() * 2 < bitmap.height()) {
            QSize smaller = size.boundedTo(bitmap.size()).toSize().expandedTo({1, 1});
            bitmap = bitmap.scaled(smaller, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        }
        target.drawImage(toQt(frame), bitmap);
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
