#pragma once

#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Values/Image.h"
#include "Platform/Values/Result.h"
#include "Platform/Values/URL.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

/// Why there is no image.
struct ImageError {
    enum class Kind {
        /// The bytes cannot be decoded.
        invalidImageData,
        /// No connection, a time-out, a status outside 200 to 299, or too large.
        imageDownloadingFailed,
        /// The URL is none that is ever fetched (only http and https are).
        unsupportedURL,
        /// No error of the download: the disk, for example.
        other,
    };
    Kind kind = Kind::other;
    std::string localizedDescription;

    bool isImageDownloadError() const { return kind != Kind::other; }
};

/// Fetches images and keeps them on disk. Usable from any thread; nothing blocks. Completions run on the image thread,
/// one at a time, and must not block.
class ImageUtility {
public:
    using DataCompletion = std::function<void(Result<std::shared_ptr<const std::string>, ImageError>)>;
    using ImageCompletion = std::function<void(Result<Image, ImageError>)>;

    /// The bytes of the image at the URL, from the cache or else over the network, proven to be decodable. The cache
    /// finds them again by URL and by identifier. Requests for one image that is under way join it.
    static void downloadImage(const URL& url, std::optional<std::string> imageIdentifier, DataCompletion completion);

    /// The same, decoded at no more than `bound` pixels.
    static void loadImage(const URL& url, std::optional<std::string> imageIdentifier, PixelSize bound,
                          ImageCompletion completion);

    /// Empties the cache.
    static void removeAllCachedImages();
};

}  // namespace vantix
