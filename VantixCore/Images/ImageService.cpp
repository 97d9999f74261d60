#include "VantixCore/Images/ImageService.h"

#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/WhileAlive.h"
#include "VantixCore/Images/ReducedImage.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "VantixCore/VantixLogger.h"

#include <system_error>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Images/ImageService"};

/// A download is decoded at this size: enough for the screens of most phones.
constexpr PixelSize proof{1280, 2400};
/// For the pictures that stay at hand: one of that size, or many smaller ones.
constexpr std::size_t mostPictureBytes = 12U << 20;
constexpr Duration pictureLifetime = seconds(30);

/// Longer than it takes from the fetching of an image to the showing of its message; shorter than the pause between two
/// messages.
constexpr Duration failureLifetime = seconds(5);

std::optional<std::string> textOf(const std::optional<URL>& url) {
    return url ? std::optional(url->text()) : std::nullopt;
}

ImageError downloadingFailed(std::string why) { return {ImageError::Kind::imageDownloadingFailed, std::move(why)}; }

ImageError invalidData(const Error& error) { return {ImageError::Kind::invalidImageData, error.localizedDescription}; }

std::optional<ImageError> objectionTo(const HTTPOutcome& response) {
    if (!response) return downloadingFailed(response.error().localizedDescription());
    int status = response.value().status;
    if (status >= 200 && status <= 299) return {};
    return downloadingFailed("The server answered with status " + std::to_string(status));
}

}  // namespace

ImageService::ImageService(std::shared_ptr<HTTPClient> client, std::shared_ptr<ImageDecoder> decoder,
                           std::shared_ptr<DispatchQueue> queue,
                           std::vector<std::shared_ptr<DispatchQueue>> decodingQueues, std::shared_ptr<Disk> disk,
                           std::filesystem::path folder, std::uintmax_t capacity)
    : client_(std::move(client)),
      decoder_(std::move(decoder)),
      queue_(std::move(queue)),
      cache_(std::move(disk), std::move(folder), capacity),
      decoding_(std::make_shared<DecodingQueues>(queue_, std::move(decodingQueues))),
      pictures_(std::make_shared<DecodedImages>(queue_, mostPictureBytes, pictureLifetime)) {}

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
        self->fetch(request, claim, [answer](const auto& fetched) {
            if (!fetched) return answer(fetched.error());
            answer(fetched.value().data);
        });
    });
}

TransferHandle ImageService::image(ImageRequest request, PixelSize bound, ImageCompletion completion) {
    auto claim = std::make_shared<CallClaim>();
    auto answer = [claim, completion = std::move(completion)](const Result<Image, ImageError>& image) {
        if (claim->take()) completion(image);
    };
    return start(claim, [self = shared_from_this(), claim, request = std::move(request), bound, answer] {
        self->findPicture(request, bound, claim, answer);
    });
}

void ImageService::findPicture(const ImageRequest& request, PixelSize bound, const Claim& claim,
                               const ImageCompletion& answer) {
    auto fetchAndAnswer = [self = shared_from_this(), request, bound, claim, answer] {
        self->fetch(request, claim, [self, bound, claim, answer](const auto& fetched) {
            if (!fetched) return answer(fetched.error());
            self->answerReduced(fetched.value(), bound, claim, answer);
        });
    };
    ImageData data = cached(request);
    if (!data) return fetchAndAnswer();

    auto picture = request.url ? pictures_->find(request.url->text()) : std::nullopt;
    if (picture) return answerReduced({data, *picture}, bound, claim, answer);
    auto decoded = [self = shared_from_this(), request, answer, fetchAndAnswer](const Result<Image>& image) {
        if (image) return answer(image.value());
        self->forget(request);
        fetchAndAnswer();
    };
    decode(
        data, bound, [claim] { return !claim->isTaken(); }, decoded);
}

/// From the picture that is at hand, unless that has too few pixels.
void ImageService::answerReduced(const Fetched& fetched, PixelSize bound, const Claim& claim,
                                 const ImageCompletion& answer) {
    auto make = [decoder = decoder_, fetched, bound]() -> Result<Image> {
        if (auto image = reduced(fetched.picture, bound)) return *image;
        return decoder->decode(*fetched.data, bound);
    };
    auto answerImage = [answer](const Result<Image>& image) {
        if (!image) return answer(invalidData(image.error()));
        answer(image.value());
    };
    decoding_->run({make, [claim] { return !claim->isTaken(); }, answerImage});
}

void ImageService::decode(const ImageData& data, PixelSize bound, std::function<bool()> isWanted,
                          std::function<void(Result<Image>)> completion) {
    auto make = [decoder = decoder_, data, bound] { return decoder->decode(*data, bound); };
    decoding_->run({make, std::move(isWanted), std::move(completion)});
}

void ImageService::removeAll() {
    queue_->async([self = shared_from_this()] {
        self->cache_.removeAll();
        self->pictures_->removeAll();
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
    if (request.url) pictures_->remove(request.url->text());
}

void ImageService::fetch(const ImageRequest& request, const Claim& claim, FetchCompletion completion) {
    assertOnQueue(*queue_, "ImageService::fetch");
    if (!request.mayFetch || !request.url) {
        return completion(ImageError{ImageError::Kind::other, "The image is not in the cache"});
    }
    const std::string& url = request.url->text();
    if (!request.url->isWebAddress()) {
        return completion(ImageError{ImageError::Kind::unsupportedURL, "Only http and https are fetched: " + url});
    }
    auto failure = recentFailures_.find(url);
    if (request.acceptsRecentFailure && failure != recentFailures_.end()) return completion(*failure->second);

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
                        .connectTimeOut = NetworkPolicy::imageConnectTimeOut,
                        .purpose = TransferPurpose::image};
    auto prove = [self = shared_from_this(), url = url.text(), started = std::weak_ptr(download)](auto& response) {
        if (auto underWay = started.lock()) self->prove(url, underWay, std::move(response));
    };
    return client_->send(std::move(request), [queue = queue_, prove = std::move(prove)](HTTPOutcome response) {
        queue->async([prove, response = std::make_shared<HTTPOutcome>(std::move(response))] { prove(*response); });
    });
}

void ImageService::prove(const std::string& url, const std::shared_ptr<Download>& download, HTTPOutcome response) {
    assertOnQueue(*queue_, "ImageService::prove");
    if (auto objection = objectionTo(response)) return finishDownload(url, *download, *objection);

    auto data = std::make_shared<const std::string>(std::move(std::move(response).value().body));
    std::weak_ptr proven = download;
    auto decoded = whileAlive(proven, [self = shared_from_this(), url, data](Download& ended, const auto& picture) {
        if (!picture) return self->finishDownload(url, ended, invalidData(picture.error()));
        self->finishDownload(url, ended, Fetched{data, picture.value()});
    });
    decode(
        data, proof, [proven] { return !proven.expired(); }, decoded);
}

void ImageService::finishDownload(const std::string& url, Download& download,
                                  const Result<Fetched, ImageError>& result) {
    assertOnQueue(*queue_, "ImageService::finishDownload");
    auto ended = downloads_.extract(url);
    if (!result) rememberFailure(url, result.error());
    if (result && download.isKept) keep(url, result.value());
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

void ImageService::keep(const std::string& url, const Fetched& fetched) {
    pictures_->insert(url, fetched.picture);
    try {
        cache_.insert(url, *fetched.data);
    } catch (const std::system_error& problem) {
        log.error("keep(url:bytes:)",
                  [&] { return "The image with url " + url + " could not be kept: " + problem.what(); });
    }
}

void ImageService::rememberFailure(const std::string& url, const ImageError& error) {
    auto failure = std::make_shared<const ImageError>(error);
    recentFailures_.insert_or_assign(url, failure);
    auto forget = whileAlive(weak_from_this(), [url, failure](ImageService& self) {
        // A later failure is forgotten in its own time.
        auto known = self.recentFailures_.find(url);
        if (known != self.recentFailures_.end() && known->second == failure) self.recentFailures_.erase(known);
    });
    queue_->asyncAfter(failureLifetime, forget);
}

}  // namespace vantix
