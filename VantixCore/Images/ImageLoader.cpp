#include "VantixCore/Images/ImageLoader.h"

#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/WhileAlive.h"

#include <algorithm>
#include <utility>

namespace vantix {

namespace {

/// Takes room and shows nothing.
Image clearImage() { return {std::make_shared<const Bitmap>(Bitmap{1, 1, {0}}), {}, {1, 1}}; }

}  // namespace

ImageLoader::ImageLoader(std::shared_ptr<ImageService> images, std::shared_ptr<const Platform> platform,
                         ImageRequest request, std::function<void()> onChange)
    : images_(std::move(images)),
      platform_(std::move(platform)),
      request_(std::move(request)),
      onChange_(std::move(onChange)) {
    request_.acceptsRecentFailure = true;
}

void ImageLoader::start() {
    assertOnQueue(platform_->dispatcher->mainQueue(), "ImageLoader::start");

    auto take = whileAlive(weak_from_this(), [](ImageLoader& self, PixelSize size) { self.takeSize(size); });
    auto probe = [take](const Platform& platform, const auto& bytes) {
        if (!bytes) return;
        auto size = platform.imageDecoder->probe(*bytes.value());
        if (!size) return;
        platform.dispatcher->mainQueue().async([take, size = size.value()] { take(size); });
    };
    finding_ = images_->data(request_, whileAlive(std::weak_ptr(platform_), probe));
}

void ImageLoader::setPlaceholder(Image placeholder) {
    assertOnQueue(platform_->dispatcher->mainQueue(), "ImageLoader::setPlaceholder");
    placeholder_ = std::move(placeholder);
}

Image ImageLoader::currentImage() const {
    assertOnQueue(platform_->dispatcher->mainQueue(), "ImageLoader::currentImage");

    if (!picture_.isNull() || !naturalSize_) return picture_.isNull() ? placeholder_ : picture_;
    Image standIn = placeholder_.isNull() ? clearImage() : placeholder_;
    standIn.naturalSize = {static_cast<double>(naturalSize_->width), static_cast<double>(naturalSize_->height)};
    return standIn;
}

void ImageLoader::needed(int pixelWidth, int pixelHeight) {
    assertOnQueue(platform_->dispatcher->mainQueue(), "ImageLoader::needed");

    if (!naturalSize_ || (pixelWidth <= bound_.width && pixelHeight <= bound_.height)) return;
    bool hasAllPixels = bound_.width >= naturalSize_->width && bound_.height >= naturalSize_->height;
    if (hasAllPixels) return;
    bound_ = {std::max(pixelWidth, bound_.width), std::max(pixelHeight, bound_.height)};
    decode();
}

void ImageLoader::takeSize(PixelSize naturalSize) {
    naturalSize_ = naturalSize;
    onChange_();
}

void ImageLoader::decode() {
    auto take = whileAlive(weak_from_this(), [](ImageLoader& self, Image picture) { self.takePicture(picture); });
    auto handOver = [take](const Platform& platform, const auto& image) {
        if (image) platform.dispatcher->mainQueue().async([take, image = image.value()] { take(image); });
    };
    decoding_ = images_->image(request_, bound_, whileAlive(std::weak_ptr(platform_), handOver));
}

void ImageLoader::takePicture(Image picture) {
    picture_ = std::move(picture);
    onChange_();
}

}  // namespace vantix
