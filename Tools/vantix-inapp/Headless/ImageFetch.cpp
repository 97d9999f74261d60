#include "Tools/vantix-inapp/Headless/ImageFetch.h"

#include "Tools/vantix-inapp/Headless/Pace.h"
#include "VantixCore/ImageUtility.h"

#include <optional>

namespace vantix {

Result<ImageData, ImageError> fetchImage(const URL& url, Pace& pace) {
    std::optional<Result<ImageData, ImageError>> fetched;
    auto transfer = ImageUtility::downloadImage(url, {}, [&](const auto& image) { fetched = image; });
    pace.settle();
    if (!fetched) return ImageError{ImageError::Kind::imageDownloadingFailed, "no answer arrived"};
    return *fetched;
}

}  // namespace vantix
