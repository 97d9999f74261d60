#pragma once

#include "VantixCore/ImageUtility.h"
#include "VantixCore/Images/ImageCache.h"
#include "VantixCore/Network/HTTPClient.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

class DispatchQueue;
class ImageDecoder;

/// Which image is meant, and where it may come from.
struct ImageRequest {
    std::optional<URL> url = {};
    std::optional<std::string> identifier = {};
    /// Whether it is fetched when the cache lacks it.
    bool mayFetch = true;
};

/// The work behind ImageUtility: looks into the cache, fetches, proves, keeps and decodes. Usable from any thread;
/// everything happens on its one queue, so that neither a busy utility queue nor a slow host holds up what the
/// cache has.
class ImageService : public std::enable_shared_from_this<ImageService> {
public:
    ImageService(std::shared_ptr<HTTPClient> client, std::shared_ptr<ImageDecoder> decoder,
                 std::shared_ptr<DispatchQueue> queue, std::shared_ptr<Disk> disk, std::filesystem::path folder,
                 std::uintmax_t capacity);

    void data(ImageRequest request, ImageUtility::DataCompletion completion);
    void image(ImageRequest request, PixelSize bound, ImageUtility::ImageCompletion completion);
    void removeAll();

private:
    using Bytes = std::shared_ptr<const std::string>;

    struct Waiter {
        std::optional<std::string> identifier;
        ImageUtility::DataCompletion completion;
    };
    struct Download {
        std::vector<Waiter> waiters;
        /// False once the cache was emptied after the start.
        bool isKept = true;
    };

    Bytes cached(const ImageRequest& request);
    void forget(const ImageRequest& request);
    void fetch(const ImageRequest& request, ImageUtility::DataCompletion completion);
    void startDownload(const std::string& url);
    void finishDownload(const std::string& url, const Result<HTTPResponse, VantixError>& response);
    Result<Bytes, ImageError> proven(const Result<HTTPResponse, VantixError>& response) const;
    void keep(const std::string& url, const std::string& bytes);

    std::shared_ptr<HTTPClient> client_;
    std::shared_ptr<ImageDecoder> decoder_;
    std::shared_ptr<DispatchQueue> queue_;
    ImageCache cache_;
    /// By URL.
    std::map<std::string, Download> downloads_;
};

}  // namespace vantix
