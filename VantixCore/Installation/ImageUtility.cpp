#include "VantixCore/ImageUtility.h"

#include "VantixCore/Images/ImageService.h"
#include "VantixCore/Installation/Installation.h"

#include <utility>

namespace vantix {

TransferHandle ImageUtility::downloadImage(const URL& url, std::optional<std::string> imageIdentifier,
                                           ImageDataCompletion completion) {
    return Installation::current()->images()->data({url, std::move(imageIdentifier)}, std::move(completion));
}

void ImageUtility::removeAllCachedImages() { Installation::current()->images()->removeAll(); }

}  // namespace vantix
