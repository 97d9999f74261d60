#include "VantixQt/Drawing/Canvas.h"

#include "VantixQt/Drawing/DisplayListPainter.h"
#include "VantixQt/Drawing/QtConversions.h"
#include "VantixQt/Drawing/RequiredApplication.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <png.h>

namespace vantix {

namespace {

int pixels(double points, double scale) { return std::max(1, static_cast<int>(std::lround(points * scale))); }

}  // namespace

Canvas::Canvas(Size size, double scale, const Color& background)
    : image_(pixels(size.width, scale), pixels(size.height, scale), QImage::Format_RGB888), scale_(scale) {
    requireApplication("Canvas");
    image_.fill(toQt(background));
}

void Canvas::paint(const DisplayList& list, DisplayListPainter& painter, double alpha) {
    if (alpha <= 0) return;
    if (alpha >= 1) {
        QPainter listPainter(&image_);
        listPainter.scale(scale_, scale_);
        return painter.paint(list, listPainter);
    }
    QImage layer(image_.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    QPainter listPainter(&layer);
    listPainter.scale(scale_, scale_);
    painter.paint(list, listPainter);
    listPainter.end();

    QPainter layerPainter(&image_);
    layerPainter.setOpacity(alpha);
    layerPainter.drawImage(0, 0, layer);
}

void Canvas::draw(const Canvas& picture, const Rect& frame) {
    // Averages the areas that a pixel stands for, so that hairlines survive.
    QSize pixels(qRound(frame.size.width * scale_), qRound(frame.size.height * scale_));
    QPainter painter(&image_);
    painter.drawImage(QPointF(frame.origin.x * scale_, frame.origin.y * scale_),
                      picture.image_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

/// Libpng's own writer for large pictures takes a third of the time that Qt's takes.
std::optional<Error> Canvas::writePNG(const std::string& path) const {
    png_image header = {};
    header.version = PNG_IMAGE_VERSION;
    header.width = static_cast<png_uint_32>(image_.width());
    header.height = static_cast<png_uint_32>(image_.height());
    header.format = PNG_FORMAT_RGB;
    header.flags = PNG_IMAGE_FLAG_FAST;
    constexpr int keepFullColor = 0;
    auto bytesPerRow = static_cast<png_int_32>(image_.bytesPerLine());
    if (png_image_write_to_file(&header, path.c_str(), keepFullColor, image_.constBits(), bytesPerRow, nullptr)) {
        return std::nullopt;
    }
    return Error{path + ": " + header.message};
}

}  // namespace vantix
