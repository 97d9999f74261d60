#pragma once

#include "Platform/Values/URL.h"
#include "VantixCore/ImageCompletion.h"
#include "VantixCore/TransferHandle.h"

#include <optional>
#include <string>

namespace vantix {

/// Fetches images and keeps them on disk. Usable from any thread; nothing blocks. Completions run on the image thread,
/// one at a time, at most once, and must not block; the handle that belongs to one lets go of it.
class ImageUtility {
public:
    /// The bytes of the image at the URL, from the cache or else over the network, proven to be decodable. The cache
    /// finds them again by URL and by identifier. Requests for one image that is under way join it.
    static TransferHandle downloadImage(const URL& url, std::optional<std::string> imageIdentifier,
                                        ImageDataCompletion completion);

    /// Empties the cache.
    static void removeAllCachedImages();
};

}  // namespace vantix
