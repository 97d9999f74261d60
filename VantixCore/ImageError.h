#pragma once

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
    /// Whether there is nothing at a URL that might have led to an image.
    bool isImageLost() const { return kind == Kind::invalidImageData || kind == Kind::imageDownloadingFailed; }
};

}  // namespace vantix
