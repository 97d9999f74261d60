#pragma once

#include "VantixCore/ImageUtility.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"

#include <functional>
#include <memory>

namespace vantix {

class InAppMessageQueueManager;

/// Fetches the images of messages into the cache, before the messages are shown, and removes the messages that make no
/// sense without theirs. Usable from any thread.
class InAppImageFetcher : public std::enable_shared_from_this<InAppImageFetcher> {
public:
    explicit InAppImageFetcher(std::shared_ptr<InAppMessageQueueManager> queueManager);

    /// Fetches the message's image, if it has one. Synchronously the call blocks until the download has ended: never on
    /// the main thread. Asynchronously it returns at once.
    void downloadInAppMessageImageIfAvailable(const SharedPayload& message, bool asynchronousDownload);
    /// The same without a thread that waits. The completion is called once, in any case: when the download has ended,
    /// on the image thread, which it must not hold up; or within this call when the message has no image.
    void fetchImage(const SharedPayload& message, std::function<void()> completion);

private:
    void downloadImageAsynchronously(const SharedPayload& message, const URL& imageURL,
                                     std::function<void()> completion);
    void handleImageError(const VantixInAppMessagePayload& message, const ImageError& error);

    std::shared_ptr<InAppMessageQueueManager> queueManager_;
};

}  // namespace vantix
