#include "Hosts/Qt/Canvas.h"

#include "Hosts/Qt/DisplayListPainter.h"
#include "Hosts/Qt/QtConversions.h"
#include "Hosts/Qt/QtEnvironment.h"

#include <QImageWriter>
#include <QPainter>

#include <cmath>

namespace vantix {

namespace {

int pixels(double points, double scale) { return std::max(1, static_cast<int>(std::lround(points * scale))); }

QImage transparentImage(const QSize& size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

}  // namespace

Canvas::Canvas(Size size, double scale)
    : image_(transparentImage({pixels(size.width, scale), pixels(size.height, scale)})), scale_(scale) {}

void Canvas::fill(const Color& color) {
    QPainter painter(&image_);
    painter.fillRect(image_.rect(), toQt(color));
}

void Canvas::paint(const DisplayList& list, DisplayListPainter& painter, double alpha) {
    QtEnvironment::start();
    if (alpha <= 0) return;
    bool isOpaque = alpha >= 1;
    QImage layer = isOpaque ? QImage() : transparentImage(image_.size());

    QPainter listPainter(isOpaque ? &image_ : &layer);
    listPainter.scale(scale_, scale_);
    painter.paint(list, listPainter);
    listPainter.end();
    if (isOpaque) return;

    QPainter layerPainter(&image_);
    layerPainter.setOpacity(alpha);
    layerPainter.drawImage(0, 0, layer);
}

std::optional<Error> Canvas::writePNG(const std::string& path) const {
    QImageWriter writer(QString::fromStdString(path), "png");
    writer.setCompression(1);
    if (writer.write(image_)) return std::nullopt;
    return Error{path + ": " + writer.errorString().toStdString()};
}

}  // namespace vantix
