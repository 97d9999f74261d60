#include "VantixCore/ImageUtility.h"

#include "VantixCore/Images/ImageService.h"
#include "VantixCore/Installation/Installation.h"

#include <utility>

namespace vantix {

void ImageUtility::downloadImage(const URL& url, std::optional<std::string> imageIdentifier,
                                 DataCompletion completion) {
    Installation::current()->images()->data({url, std::move(imageIdentifier)}, std::move(completion));
}

void ImageUtility::loadImage(const URL& url, std::optional<std::string> imageIdentifier, PixelSize bound,
                             ImageCompletion completion) {
    Installation::current()->images()->image({url, std::move(imageIdentifier)}, bound, std::move(completion));
}

void ImageUtility::removeAllCachedImages() { Installation::current()->images()->removeAll(); }

}  // namespace vantix
