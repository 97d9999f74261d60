#include "VantixCore/ImageUtility.h"

#include "VantixCore/ImageService.h"

#include <utility>

namespace vantix {

void ImageUtility::downloadImage(const URL& url, std::optional<std::string> imageIdentifier,
                                 DataCompletion completion) {
    ImageService::current()->data({url, std::move(imageIdentifier)}, std::move(completion));
}

void ImageUtility::loadImage(const URL& url, std::optional<std::string> imageIdentifier, PixelSize bound,
                             ImageCompletion completion) {
    ImageService::current()->image({url, std::move(imageIdentifier)}, bound, std::move(completion));
}

void ImageUtility::removeAllCachedImages() { ImageService::current()->removeAll(); }

}  // namespace vantix
