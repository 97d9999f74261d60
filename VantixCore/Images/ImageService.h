#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Values/URL.h"
#include "VantixCore/ImageCompletion.h"
#include "VantixCore/Images/ImageCache.h"
#include "VantixCore/Network/CallClaim.h"
#include "VantixCore/Network/HTTPClient.h"
#include "VantixCore/TransferHandle.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// Which image is meant, and where it may come from.
struct ImageRequest {
    std::optional<URL> url = {};
    std::optional<std::string> identifier = {};
    /// Whether it is fetched when the cache lacks it.
    bool mayFetch = true;
};

/// The work behind ImageUtility: looks into the cache, fetches, proves, keeps and decodes. Usable from any thread;
/// everything happens on its one queue, so that neither a busy utility queue nor a slow host holds up what the
/// cache has. Those who ask for one image share its download, which ends when the last of them lets go.
class ImageService : public std::enable_shared_from_this<ImageService> {
public:
    ImageService(std::shared_ptr<HTTPClient> client, std::shared_ptr<ImageDecoder> decoder,
                 std::shared_ptr<DispatchQueue> queue, std::shared_ptr<Disk> disk, std::filesystem::path folder,
                 std::uintmax_t capacity);

    TransferHandle data(ImageRequest request, ImageDataCompletion completion);
    TransferHandle image(ImageRequest request, PixelSize bound, ImageCompletion completion);
    void removeAll();

private:
    using Claim = std::shared_ptr<CallClaim>;

    struct Waiter {
        std::optional<std::string> identifier;
        Claim claim;
        ImageDataCompletion completion;
    };
    struct Download {
        std::vector<Waiter> waiters = {};
        TransferHandle transfer = {};
        /// False once the cache was emptied after the start.
        bool isKept = true;
    };

    /// Runs the work on the queue, unless the handle is dropped before.
    template <typename Work>
    TransferHandle start(const Claim& claim, Work work);

    ImageData cached(const ImageRequest& request);
    void forget(const ImageRequest& request);
    void fetch(const ImageRequest& request, const Claim& claim, ImageDataCompletion completion);
    TransferHandle startDownload(const URL& url, const std::shared_ptr<Download>& download);
    void finishDownload(const std::string& url, Download& download, const HTTPOutcome& response);
    void endUnwantedDownloads();
    Result<ImageData, ImageError> proven(const HTTPOutcome& response) const;
    void keep(const std::string& url, const std::string& bytes);

    std::shared_ptr<HTTPClient> client_;
    std::shared_ptr<ImageDecoder> decoder_;
    std::shared_ptr<DispatchQueue> queue_;

    // On the queue only.
    ImageCache cache_;
    /// By URL.
    std::map<std::string, std::shared_ptr<Download>> downloads_;
};

}  // namespace vantix
