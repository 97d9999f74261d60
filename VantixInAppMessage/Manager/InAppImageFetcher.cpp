#include "VantixInAppMessage/Manager/InAppImageFetcher.h"

#include "Platform/Ports/DispatchGroup.h"
#include "Platform/Ports/Dispatcher.h"
#include "Platform/Ports/Platform.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/VantixLogger.h"
#include "VantixInAppMessage/Manager/InAppMessageQueueManager.h"

#include <string>
#include <utility>

namespace vantix {

namespace {

/// Its log lines are the display manager's, which fetches through it.
constexpr LogSource log{"Manager/InAppDisplayManager"};

}  // namespace

InAppImageFetcher::InAppImageFetcher(std::shared_ptr<InAppMessageQueueManager> queueManager)
    : queueManager_(std::move(queueManager)) {}

void InAppImageFetcher::downloadInAppMessageImageIfAvailable(const SharedPayload& message, bool asynchronousDownload) {
    if (!message->getImageURL()) return;
    if (asynchronousDownload) return fetchImage(message, [] {});

    auto group = Platform::current()->dispatcher->makeGroup();
    group->enter();
    fetchImage(message, [group] { group->leave(); });
    group->wait();
}

void InAppImageFetcher::fetchImage(const SharedPayload& message, std::function<void()> completion) {
    auto url = message->getImageURL();
    if (!url) return completion();
    downloadImageAsynchronously(message, *url, std::move(completion));
}

void InAppImageFetcher::downloadImageAsynchronously(const SharedPayload& message, const URL& imageURL,
                                                    std::function<void()> completion) {
    auto handleError = whileAlive(weak_from_this(), [message](InAppImageFetcher& fetcher, const ImageError& error) {
        fetcher.handleImageError(*message, error);
    });
    auto ended = [handleError, completion = std::move(completion)](const auto& result) {
        if (!result) handleError(result.error());
        completion();
    };
    // Whoever stored the message waits for the end, whatever becomes of this object.
    ImageUtility::downloadImage(imageURL, message->imageIdentifier, ended).detach();
}

void InAppImageFetcher::handleImageError(const VantixInAppMessagePayload& message, const ImageError& error) {
    constexpr auto function = "downloadImageAsynchronously(for:imageURL:dispatchGroup:)";
    if (!error.isImageDownloadError()) {
        return log.error(function, [&] {
            return "Failed to download in-app message image due to error:" + error.localizedDescription;
        });
    }
    if (!error.isImageLost() || !message.canDeleteInAppMessageWhenImageDownloadingFailed()) return;
    log.error(function, [&] {
        return "Removed the in-app message " + message.description() + " of type " +
               std::string(rawValue(message.body.type)) + " as downloading failed for image with url " +
               message.body.image;
    });
    queueManager_->removeInAppMessage(message);
}

}  // namespace vantix
