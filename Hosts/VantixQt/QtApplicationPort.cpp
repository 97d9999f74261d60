#include "VantixQt/QtApplicationPort.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImage>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vantix::qt {

std::vector<std::shared_ptr<Scene>> QtApplicationPort::connectedScenes() const {
    return {scenes_.begin(), scenes_.end()};
}

Image QtApplicationPort::icon() const {
    constexpr int side = 128;
    QImage image =
        QGuiApplication::windowIcon().pixmap(side, side).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return {};
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int row = 0; row < image.height(); ++row) {
        auto line = reinterpret_cast<const std::uint32_t*>(image.constScanLine(row));
        pixels.insert(pixels.end(), line, line + image.width());
    }
    return bitmapImage(image.width(), image.height(), std::move(pixels));
}

bool QtApplicationPort::isReady() const {
    auto front = std::find_if(scenes_.begin(), scenes_.end(), [](const auto& scene) {
        return scene->activationState() == SceneActivationState::foregroundActive;
    });
    return front != scenes_.end() && (*front)->isReady();
}

void QtApplicationPort::add(std::shared_ptr<WindowScene> scene) { scenes_.insert(scenes_.begin(), std::move(scene)); }

void QtApplicationPort::remove(const WindowScene& scene) {
    std::erase_if(scenes_, [&](const auto& other) { return other.get() == &scene; });
}

void QtApplicationPort::bringToFront(const WindowScene& scene) {
    auto found = std::find_if(scenes_.begin(), scenes_.end(), [&](const auto& other) { return other.get() == &scene; });
    if (found != scenes_.end()) std::rotate(scenes_.begin(), found, found + 1);
}

}  // namespace vantix::qt
