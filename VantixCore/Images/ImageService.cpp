#include "VantixCore/Images/ImageService.h"

#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "VantixCore/VantixLogger.h"

#include <system_error>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Images/ImageService"};

/// At this size an image is decoded for no other purpose than to know that it can be.
constexpr PixelSize proof{64, 64};

std::optional<std::string> textOf(const std::optional<URL>& url) {
    return url ? std::optional(url->text()) : std::nullopt;
}

ImageError downloadingFailed(std::string why) { return {ImageError::Kind::imageDownloadingFailed, std::move(why)}; }

ImageError invalidData(const Error& error) { return {ImageError::Kind::invalidImageData, error.localizedDescription}; }

}  // namespace

ImageService::ImageService(std::shared_ptr<HTTPClient> client, std::shared_ptr<ImageDecoder> decoder,
                           std::shared_ptr<DispatchQueue> queue, std::shared_ptr<Disk> disk,
                           std::filesystem::path folder, std::uintmax_t capacity)
    : client_(std::move(client)),
      decoder_(std::move(decoder)),
      queue_(std::move(queue)),
      cache_(std::move(disk), std::move(folder), capacity) {}

template <typename Work>
TransferHandle ImageService::start(const Claim& claim, Work work) {
    queue_->async([claim, work = std::move(work)] {
        if (!claim->isTaken()) work();
    });
    auto letGo = whileAlive(weak_from_this(), [](ImageService& service) {
        service.queue_->async([self = service.shared_from_this()] { self->endUnwantedDownloads(); });
    });
    return TransferHandle([claim, letGo] {
        if (claim->take()) letGo();
    });
}

TransferHandle ImageService::data(ImageRequest request, ImageDataCompletion completion) {
    auto claim = std::make_shared<CallClaim>();
    auto answer = [claim, completion = std::move(completion)](const Result<ImageData, ImageError>& data) {
        if (claim->take()) completion(data);
    };
    return start(claim, [self = shared_from_this(), claim, request = std::move(request), answer = std::move(answer)] {
        if (ImageData data = self->cached(request)) {
            if (self->decoder_->probe(*data)) return answer(data);
            self->forget(request);
        }
        self->fetch(request, claim, answer);
    });
}

TransferHandle ImageService::image(ImageRequest request, PixelSize bound, ImageCompletion completion) {
    auto claim = std::make_shared<CallClaim>();
    auto answer = [claim, completion = std::move(completion)](const Result<Image, ImageError>& image) {
        if (claim->take()) completion(image);
    };
    auto decodeAndAnswer = [decoder = decoder_, bound, claim, answer](const Result<ImageData, ImageError>& data) {
        if (!data) return answer(data.error());
        if (claim->isTaken()) return;
        auto image = decoder->decode(*data.value(), bound);
        if (!image) return answer(invalidData(image.error()));
        answer(image.value());
    };
    return start(claim, [self = shared_from_this(), claim, request = std::move(request), bound,
                         answer = std::move(answer), decodeAndAnswer = std::move(decodeAndAnswer)] {
        if (ImageData data = self->cached(request)) {
            if (auto image = self->decoder_->decode(*data, bound)) return answer(image.value());
            self->forget(request);
        }
        self->fetch(request, claim, decodeAndAnswer);
    });
}

void ImageService::removeAll() {
    queue_->async([self = shared_from_this()] {
        self->cache_.removeAll();
        for (auto& [url, download] : self->downloads_) download->isKept = false;
    });
}

ImageData ImageService::cached(const ImageRequest& request) {
    assertOnQueue(*queue_, "ImageService::cached");
    auto bytes = cache_.find(textOf(request.url), request.identifier);
    if (!bytes) return {};
    if (request.url && request.identifier) cache_.identify(request.url->text(), *request.identifier);
    return std::make_shared<const std::string>(std::move(*bytes));
}

void ImageService::forget(const ImageRequest& request) {
    assertOnQueue(*queue_, "ImageService::forget");
    cache_.remove(textOf(request.url), request.identifier);
}

void ImageService::fetch(const ImageRequest& request, const Claim& claim, ImageDataCompletion completion) {
    assertOnQueue(*queue_, "ImageService::fetch");
    if (!request.mayFetch || !request.url) {
        return completion(ImageError{ImageError::Kind::other, "The image is not in the cache"});
    }
    const std::string& url = request.url->text();
    if (!request.url->isWebAddress()) {
        return completion(ImageError{ImageError::Kind::unsupportedURL, "Only http and https are fetched: " + url});
    }
    auto& download = downloads_[url];
    if (!download) {
        download = std::make_shared<Download>();
        download->transfer = startDownload(*request.url, download);
    }
    download->waiters.push_back({request.identifier, claim, std::move(completion)});
}

TransferHandle ImageService::startDownload(const URL& url, const std::shared_ptr<Download>& download) {
    HTTPRequest request{.url = url,
                        .largestBody = NetworkPolicy::largestImage,
                        .timeOut = NetworkPolicy::imageTimeOut,
                        .connectTimeOut = NetworkPolicy::imageConnectTimeOut};
    auto finish = whileAlive(std::weak_ptr(download), [self = shared_from_this(), url = url.text()](
                                                          Download& ended, const HTTPOutcome& response) {
        self->finishDownload(url, ended, response);
    });
    return client_->send(std::move(request), [queue = queue_, finish = std::move(finish)](HTTPOutcome response) {
        queue->async([finish, response = std::move(response)] { finish(response); });
    });
}

void ImageService::finishDownload(const std::string& url, Download& download, const HTTPOutcome& response) {
    assertOnQueue(*queue_, "ImageService::finishDownload");
    downloads_.erase(url);
    auto result = proven(response);
    if (result && download.isKept) keep(url, *result.value());
    for (Waiter& waiter : download.waiters) {
        if (waiter.identifier) cache_.identify(url, *waiter.identifier);
        waiter.completion(result);
    }
}

void ImageService::endUnwantedDownloads() {
    assertOnQueue(*queue_, "ImageService::endUnwantedDownloads");
    std::erase_if(downloads_, [](auto& entry) {
        auto& waiters = entry.second->waiters;
        std::erase_if(waiters, [](const Waiter& waiter) { return waiter.claim->isTaken(); });
        return waiters.empty();
    });
}

Result<ImageData, ImageError> ImageService::proven(const HTTPOutcome& response) const {
    if (!response) return downloadingFailed(response.error().localizedDescription());
    const HTTPResponse& answer = response.value();
    if (answer.status < 200 || answer.status > 299) {
        return downloadingFailed("The server answered with status " + std::to_string(answer.status));
    }
    if (auto image = decoder_->decode(answer.body, proof); !image) return invalidData(image.error());
    return std::make_shared<const std::string>(answer.body);
}

void ImageService::keep(const std::string& url, const std::string& bytes) {
    try {
        cache_.insert(url, bytes);
    } catch (const std::system_error& problem) {
        log.error("keep(url:bytes:)",
                  [&] { return "The image with url " + url + " could not be kept: " + problem.what(); });
    }
}

}  // namespace vantix
