#include "VantixQtQuick/MessagePicture.h"

#include "VantixQt/Windows/MessageSurface.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>
#include <memory>
#include <utility>

namespace vantix::qt {

namespace {

constexpr double opacitySteps = 255;

}  // namespace

MessagePicture::MessagePicture(MessageSurface& surface, QQuickItem& holder) : QQuickItem(&holder), surface_(surface) {
    setFlag(ItemHasContents);
    connect(&surface_, &MessageSurface::updateNeeded, this, &QQuickItem::polish);
    connect(&surface_, &MessageSurface::moved, this, &MessagePicture::place);
}

void MessagePicture::place() {
    double scale = surface_.traits().scale;
    QPointF displacement = surface_.displacement();
    setPosition({std::round(displacement.x() * scale) / scale, std::round(displacement.y() * scale) / scale});
    // The software renderer takes a last step that is too small to be seen for none.
    setOpacity(std::round(surface_.opacity() * opacitySteps) / opacitySteps);
}

void MessagePicture::updatePolish() {
    const SceneTraits& traits = surface_.traits();
    QSize pixels(static_cast<int>(std::ceil(traits.size.width * traits.scale)),
                 static_cast<int>(std::ceil(traits.size.height * traits.scale)));
    if (pixels.isEmpty()) return;
    if (image_.size() != pixels) image_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    image_.setDevicePixelRatio(traits.scale);
    image_.fill(Qt::transparent);
    QPainter painter(&image_);
    painter.setRenderHint(QPainter::Antialiasing);
    surface_.paintInPlace(painter);
    setSize(image_.deviceIndependentSize());
    isNew_ = true;
    update();
}

QSGNode* MessagePicture::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    if (image_.isNull()) return node;
    auto picture = static_cast<QSGImageNode*>(node);
    if (!picture) {
        picture = window()->createImageNode();
        picture->setOwnsTexture(true);
        picture->setFiltering(QSGTexture::Nearest);
        isNew_ = true;
    }
    if (std::exchange(isNew_, false)) {
        picture->setTexture(window()->createTextureFromImage(image_, QQuickWindow::TextureHasAlphaChannel));
        picture->setRect(boundingRect());
    }
    return picture;
}

}  // namespace vantix::qt
