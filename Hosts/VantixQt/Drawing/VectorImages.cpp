#include "VantixQt/Drawing/VectorImages.h"

#include <QByteArray>
#include <QSvgRenderer>

namespace vantix {

namespace {

constexpr std::size_t capacity = 64;

}  // namespace

VectorImages::VectorImages() = default;
VectorImages::~VectorImages() = default;

QSvgRenderer* VectorImages::renderer(const std::shared_ptr<const std::string>& drawing) {
    if (renderers_.size() == capacity && !renderers_.contains(drawing)) renderers_.clear();
    std::unique_ptr<QSvgRenderer>& renderer = renderers_[drawing];
    if (!renderer) renderer = std::make_unique<QSvgRenderer>(QByteArray::fromStdString(*drawing));
    return renderer->isValid() ? renderer.get() : nullptr;
}

}  // namespace vantix
