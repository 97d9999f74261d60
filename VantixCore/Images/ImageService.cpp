#include "VantixCore/Images/ImageService.h"

#include "Platform/Ports/DispatchQueue.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "VantixCore/VantixLogger.h"

#include <system_error>
#include <utility>

namespace vantix {

namespace {

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

void ImageService::data(ImageRequest request, ImageUtility::DataCompletion completion) {
    queue_->async([self = shared_from_this(), request = std::move(request), completion = std::move(completion)] {
        if (Bytes bytes = self->cached(request)) {
            if (self->decoder_->probe(*bytes)) return completion(bytes);
            self->forget(request);
        }
        self->fetch(request, completion);
    });
}

void ImageService::image(ImageRequest request, PixelSize bound, ImageUtility::ImageCompletion completion) {
    queue_->async([self = shared_from_this(), request = std::move(request), bound, completion = std::move(completion)] {
        if (Bytes bytes = self->cached(request)) {
            if (auto image = self->decoder_->decode(*bytes, bound)) return completion(image.value());
            self->forget(request);
        }
        self->fetch(request, [decoder = self->decoder_, bound, completion](const Result<Bytes, ImageError>& bytes) {
            if (!bytes) return completion(bytes.error());
            auto image = decoder->decode(*bytes.value(), bound);
            if (!image) return completion(invalidData(image.error()));
            completion(image.value());
        });
    });
}

void ImageService::removeAll() {
    queue_->async([self = shared_from_this()] {
        self->cache_.removeAll();
        for (auto& [url, download] : self->downloads_) download.isKept = false;
    });
}

ImageService::Bytes ImageService::cached(const ImageRequest& request) {
    auto bytes = cache_.find(textOf(request.url), request.identifier);
    if (!bytes) return {};
    if (request.url && request.identifier) cache_.identify(request.url->text(), *request.identifier);
    return std::make_shared<const std::string>(std::move(*bytes));
}

void ImageService::forget(const ImageRequest& request) { cache_.remove(textOf(request.url), request.identifier); }

void ImageService::fetch(const ImageRequest& request, ImageUtility::DataCompletion completion) {
    if (!request.mayFetch || !request.url) {
        return completion(ImageError{ImageError::Kind::other, "The image is not in the cache"});
    }
    const std::string& url = request.url->text();
    if (!request.url->isWebAddress()) {
        return completion(ImageError{ImageError::Kind::unsupportedURL, "Only http and https are fetched: " + url});
    }
    auto [download, isNew] = downloads_.try_emplace(url);
    download->second.waiters.push_back({request.identifier, std::move(completion)});
    if (isNew) startDownload(url);
}

void ImageService::startDownload(const std::string& url) {
    HTTPRequest request{.url = url,
                        .largestBody = NetworkPolicy::largestImage,
                        .timeOut = NetworkPolicy::imageTimeOut,
                        .connectTimeOut = NetworkPolicy::connectTimeOut};
    client_->send(std::move(request), [self = shared_from_this(), url](Result<HTTPResponse, VantixError> response) {
        self->queue_->async([self, url, response = std::move(response)] { self->finishDownload(url, response); });
    });
}

void ImageService::finishDownload(const std::string& url, const Result<HTTPResponse, VantixError>& response) {
    auto result = proven(response);
    Download download = std::move(downloads_.extract(url).mapped());
    if (result && download.isKept) keep(url, *result.value());
    for (Waiter& waiter : download.waiters) {
        if (waiter.identifier) cache_.identify(url, *waiter.identifier);
        waiter.completion(result);
    }
}

Result<ImageService::Bytes, ImageError> ImageService::proven(const Result<HTTPResponse, VantixError>& response) const {
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
        VantixLogger::error("The image with url " + url + " could not be kept: " + problem.what(),
                            {"ImageUtility", "downloadImage(with:imageIdentifier:)"});
    }
}

}  // namespace vantix
