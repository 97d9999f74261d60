#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Ports/ImageDecoder.h"
#include "Platform/Values/URL.h"
#include "VantixCore/ImageCompletion.h"
#include "VantixCore/Images/DecodedImages.h"
#include "VantixCore/Images/DecodingQueues.h"
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
    /// Whether a download that failed some seconds ago is an answer, so that a message whose image was fetched before
    /// it is shown does not fetch it again.
    bool acceptsRecentFailure = false;
};

/// The work behind ImageUtility: looks into the cache, fetches, proves, keeps and decodes. Usable from any thread. The
/// books are kept on one queue, so that neither a busy utility queue nor a slow host holds up what the cache has; what
/// takes long, decoding, happens beside it. Those who ask for one image share its download, which ends when the last of
/// them lets go. A download is proven by decoding it, and the picture stays at hand for a short time, so that showing
/// it needs no second decoding.
class ImageService : public std::enable_shared_from_this<ImageService> {
public:
    /// `queue` and each of the decoding queues are serial and for this service alone.
    ImageService(std::shared_ptr<HTTPClient> client, std::shared_ptr<ImageDecoder> decoder,
                 std::shared_ptr<DispatchQueue> queue, std::vector<std::shared_ptr<DispatchQueue>> decodingQueues,
                 std::shared_ptr<Disk> disk, std::filesystem::path folder, std::uintmax_t capacity);

    TransferHandle data(ImageRequest request, ImageDataCompletion completion);
    TransferHandle image(ImageRequest request, PixelSize bound, ImageCompletion completion);
    void removeAll();

private:
    using Claim = std::shared_ptr<CallClaim>;

    /// An image that was fetched, and the picture that proves it.
    struct Fetched {
        ImageData data;
        Image picture;
    };
    using FetchCompletion = std::function<void(const Result<Fetched, ImageError>&)>;

    struct Waiter {
        std::optional<std::string> identifier;
        Claim claim;
        FetchCompletion completion;
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
    void findPicture(const ImageRequest& request, PixelSize bound, const Claim& claim, const ImageCompletion& answer);
    void answerReduced(const Fetched& fetched, PixelSize bound, const Claim& claim, const ImageCompletion& answer);
    void decode(const ImageData& data, PixelSize bound, std::function<bool()> isWanted,
                std::function<void(Result<Image>)> completion);

    void fetch(const ImageRequest& request, const Claim& claim, FetchCompletion completion);
    TransferHandle startDownload(const URL& url, const std::shared_ptr<Download>& download);
    void prove(const std::string& url, const std::shared_ptr<Download>& download, HTTPOutcome response);
    void finishDownload(const std::string& url, Download& download, const Result<Fetched, ImageError>& result);
    void endUnwantedDownloads();
    void keep(const std::string& url, const Fetched& fetched);
    void rememberFailure(const std::string& url, const ImageError& error);

    std::shared_ptr<HTTPClient> client_;
    std::shared_ptr<ImageDecoder> decoder_;
    std::shared_ptr<DispatchQueue> queue_;

    // On the queue only.
    ImageCache cache_;
    std::shared_ptr<DecodingQueues> decoding_;
    std::shared_ptr<DecodedImages> pictures_;
    /// By URL.
    std::map<std::string, std::shared_ptr<const ImageError>> recentFailures_;
    /// By URL.
    std::map<std::string, std::shared_ptr<Download>> downloads_;
};

}  // namespace vantix
