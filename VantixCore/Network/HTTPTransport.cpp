#include "VantixCore/Network/HTTPTransport.h"

#include "Platform/Ports/Dispatcher.h"
#include "VantixCore/Network/BrokenPipeGuard.h"
#include "VantixCore/Network/NetworkPolicy.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <limits>
#include <list>
#include <mutex>
#include <utility>

namespace vantix {

namespace {

template <auto release>
struct Releaser {
    template <typename T>
    void operator()(T* resource) const {
        release(resource);
    }
};

using EasyHandle = std::unique_ptr<CURL, Releaser<curl_easy_cleanup>>;
using MultiHandle = std::unique_ptr<CURLM, Releaser<curl_multi_cleanup>>;
using ParsedURL = std::unique_ptr<CURLU, Releaser<curl_url_cleanup>>;
using HeaderList = std::unique_ptr<curl_slist, Releaser<curl_slist_free_all>>;

VantixError::Kind kindOf(CURLcode code) {
    switch (code) {
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
            return VantixError::Kind::nameResolution;
        case CURLE_OPERATION_TIMEDOUT:
            return VantixError::Kind::timeOut;
        case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
            return VantixError::Kind::pin;
        case CURLE_FILESIZE_EXCEEDED:
            return VantixError::Kind::tooLarge;
        case CURLE_URL_MALFORMAT:
            return VantixError::Kind::refused;
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_SSL_CERTPROBLEM:
        case CURLE_SSL_CIPHER:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_ISSUER_ERROR:
        case CURLE_SSL_INVALIDCERTSTATUS:
        case CURLE_USE_SSL_FAILED:
            return VantixError::Kind::tls;
        default:
            return VantixError::Kind::connection;
    }
}

std::string wordsFor(VantixError::Kind kind) {
    switch (kind) {
        case VantixError::Kind::nameResolution:
            return "The host was not found";
        case VantixError::Kind::timeOut:
            return "The request timed out";
        case VantixError::Kind::pin:
            return "The server's public key is not the pinned one";
        case VantixError::Kind::tooLarge:
            return "The answer is too large";
        case VantixError::Kind::refused:
            return "The address cannot be fetched";
        case VantixError::Kind::tls:
            return "No secure connection to the server";
        default:
            return "The connection failed";
    }
}

VantixError makeError(VantixError::Kind kind, const std::string& detail) {
    return {kind, 0, wordsFor(kind) + ": " + detail};
}

/// Why a request is not even sent, if so. (libcurl takes a pin of another form for the name of a file.)
std::optional<VantixError> objectionTo(const HTTPRequest& request) {
    auto isControl = [](char character) { return std::iscntrl(static_cast<unsigned char>(character)) != 0; };
    for (const auto& [name, value] : request.headers) {
        if (std::ranges::any_of(name + value, isControl)) {
            return VantixError(VantixError::Kind::configuration, 0, "A header holds a control character: " + name);
        }
    }
    bool isPinned = !request.pin.empty() && !request.url.starts_with("http:");
    if (isPinned && !request.pin.starts_with("sha256//")) {
        return makeError(VantixError::Kind::pin, "a pin is written as sha256//BASE64");
    }
    return {};
}

HeaderList makeHeaders(const HTTPRequest& request) {
    HeaderList list;
    auto append = [&list](const std::string& line) { list.reset(curl_slist_append(list.release(), line.c_str())); };
    for (const auto& [name, value] : request.headers) append(value.empty() ? name + ";" : name + ": " + value);
    // What libcurl would add by itself to a request with a body.
    append("Expect:");
    if (!request.headers.contains("Content-Type")) append("Content-Type:");
    return list;
}

long milliseconds(Duration duration) {
    return static_cast<long>(std::max(std::chrono::ceil<std::chrono::milliseconds>(duration).count(), std::int64_t{1}));
}

/// One exchange on its way. Stays where it is made, since libcurl keeps pointers into it.
class Transfer {
public:
    Transfer(HTTPRequest request, HTTPTransport::Completion completion)
        : request_(std::move(request)),
          completion_(std::move(completion)),
          origin_(HTTPTransport::originOf(request_.url)) {}

    const std::string& origin() const { return origin_; }

    CURL* start() {
        easy_.reset(curl_easy_init());
        headers_ = makeHeaders(request_);
        setDestination();
        setTrust();
        setLimits();
        set(CURLOPT_ERRORBUFFER, errorText_.data());
        set(CURLOPT_WRITEDATA, static_cast<void*>(this));
        set(CURLOPT_WRITEFUNCTION, &Transfer::receive);
        return easy_.get();
    }

    CURL* handle() const { return easy_.get(); }

    void finish(CURLcode code) {
        if (code == CURLE_OK) {
            completion_(response());
        } else if (isTooLarge_) {
            fail(VantixError::Kind::tooLarge, "more than " + std::to_string(request_.largestBody) + " bytes");
        } else {
            fail(kindOf(code), errorText_[0] != '\0' ? errorText_.data() : curl_easy_strerror(code));
        }
    }

    void fail(VantixError::Kind kind, const std::string& detail) { completion_(makeError(kind, detail)); }

private:
    template <typename T>
    void set(CURLoption option, T value) {
        curl_easy_setopt(easy_.get(), option, value);
    }

    void setDestination() {
        set(CURLOPT_URL, request_.url.c_str());
        set(CURLOPT_PROTOCOLS_STR, "http,https");
        if (request_.body) {
            set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body->size()));
            set(CURLOPT_POSTFIELDS, request_.body->data());
        }
        set(CURLOPT_CUSTOMREQUEST, request_.method.c_str());
        set(CURLOPT_HTTPHEADER, headers_.get());
        set(CURLOPT_ACCEPT_ENCODING, "gzip");
    }

    void setTrust() {
        if (request_.pin.empty()) return;
        set(CURLOPT_PINNEDPUBLICKEY, request_.pin.c_str());
        set(CURLOPT_SSL_VERIFYPEER, 0L);
        set(CURLOPT_SSL_VERIFYHOST, 0L);
    }

    void setLimits() {
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_TIMEOUT_MS, milliseconds(request_.timeOut));
        set(CURLOPT_CONNECTTIMEOUT_MS, milliseconds(request_.connectTimeOut));
        set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(request_.largestBody));
    }

    static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* transfer) {
        return static_cast<Transfer*>(transfer)->append(bytes, size * count);
    }

    std::size_t append(const char* bytes, std::size_t count) {
        isTooLarge_ = count > request_.largestBody - body_.size();
        if (isTooLarge_) return 0;
        body_.append(bytes, count);
        return count;
    }

    HTTPResponse response() {
        long status = 0;
        curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
        const char* redirectURL = nullptr;
        curl_easy_getinfo(easy_.get(), CURLINFO_REDIRECT_URL, &redirectURL);
        curl_off_t microseconds = 0;
        curl_easy_getinfo(easy_.get(), CURLINFO_TOTAL_TIME_T, &microseconds);
        curl_off_t retryAfter = 0;
        curl_easy_getinfo(easy_.get(), CURLINFO_RETRY_AFTER, &retryAfter);
        constexpr curl_off_t year = 365 * 24 * 60 * 60;
        return {static_cast<int>(status), std::move(body_), redirectURL ? redirectURL : "",
                std::chrono::microseconds(microseconds), std::chrono::seconds(std::min(retryAfter, year))};
    }

    HTTPRequest request_;
    HTTPTransport::Completion completion_;
    std::string origin_;
    EasyHandle easy_;
    HeaderList headers_;
    std::array<char, CURL_ERROR_SIZE> errorText_{};
    std::string body_;
    bool isTooLarge_ = false;
};

using TransferList = std::list<Transfer>;

void initializeCurl() { [[maybe_unused]] static const CURLcode once = curl_global_init(CURL_GLOBAL_DEFAULT); }

MultiHandle makeMultiHandle() {
    initializeCurl();
    return MultiHandle(curl_multi_init());
}

}  // namespace

/// Drives the transfers. `underWay_` belongs to the network queue, the fields behind the mutex to everyone.
class HTTPTransport::Driver : public std::enable_shared_from_this<Driver> {
public:
    Driver(std::shared_ptr<DispatchQueue> queue, std::size_t mostTransfers)
        : queue_(std::move(queue)), mostTransfers_(mostTransfers) {}

    ~Driver() {
        BrokenPipeGuard guard;
        multi_.reset();
    }

    void handOver(HTTPRequest request, Completion completion) {
        if (auto objection = objectionTo(request)) {
            queue_->async([objection, completion = std::move(completion)] { completion(*objection); });
            return;
        }
        std::lock_guard lock(mutex_);
        waiting_.emplace_back(std::move(request), std::move(completion));
        callDriver();
    }

    void cancelAll() {
        std::lock_guard lock(mutex_);
        cancelled_.splice(cancelled_.end(), waiting_);
        isCancelling_ = true;
        callDriver();
    }

private:
    void callDriver() {
        if (isDriving_) {
            curl_multi_wakeup(multi_.get());
        } else {
            isDriving_ = true;
            queue_->async([self = shared_from_this()] { self->drive(); });
        }
    }

    void drive() {
        BrokenPipeGuard guard;
        while (true) {
            cancelAsAsked();
            startWaiting();
            if (rests()) return;
            int running = 0;
            curl_multi_perform(multi_.get(), &running);
            if (!finishDone()) curl_multi_poll(multi_.get(), nullptr, 0, std::numeric_limits<int>::max(), nullptr);
        }
    }

    void cancelAsAsked() {
        TransferList cancelled;
        {
            std::lock_guard lock(mutex_);
            if (!std::exchange(isCancelling_, false)) return;
            cancelled.swap(cancelled_);
        }
        for (Transfer& transfer : underWay_) curl_multi_remove_handle(multi_.get(), transfer.handle());
        cancelled.splice(cancelled.begin(), underWay_);
        for (Transfer& transfer : cancelled) transfer.fail(VantixError::Kind::connection, "it was cancelled");
    }

    void startWaiting() {
        {
            std::lock_guard lock(mutex_);
            for (auto next = waiting_.begin(); next != waiting_.end() && underWay_.size() < mostTransfers_;) {
                auto candidate = next++;
                if (hasRoomFor(candidate->origin())) underWay_.splice(underWay_.end(), waiting_, candidate);
            }
        }
        for (Transfer& transfer : underWay_) {
            if (!transfer.handle()) curl_multi_add_handle(multi_.get(), transfer.start());
        }
    }

    bool hasRoomFor(const std::string& origin) const {
        auto isSame = [&origin](const Transfer& transfer) { return transfer.origin() == origin; };
        auto share = static_cast<std::size_t>(std::ranges::count_if(underWay_, isSame));
        return share < NetworkPolicy::mostTransfersPerOrigin;
    }

    /// Ends the driving when nothing is left to drive.
    bool rests() {
        std::lock_guard lock(mutex_);
        isDriving_ = isCancelling_ || !waiting_.empty() || !underWay_.empty();
        return !isDriving_;
    }

    bool finishDone() {
        bool anyDone = false;
        int left = 0;
        while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
            if (message->msg != CURLMSG_DONE) continue;
            finish(message->easy_handle, message->data.result);
            anyDone = true;
        }
        return anyDone;
    }

    void finish(CURL* handle, CURLcode code) {
        curl_multi_remove_handle(multi_.get(), handle);
        auto isMeant = [handle](const Transfer& transfer) { return transfer.handle() == handle; };
        TransferList done;
        done.splice(done.end(), underWay_, std::ranges::find_if(underWay_, isMeant));
        done.front().finish(code);
    }

    std::shared_ptr<DispatchQueue> queue_;
    std::size_t mostTransfers_;
    MultiHandle multi_ = makeMultiHandle();
    TransferList underWay_;

    std::mutex mutex_;
    TransferList waiting_;
    TransferList cancelled_;
    bool isCancelling_ = false;
    bool isDriving_ = false;
};

HTTPTransport::HTTPTransport(Dispatcher& dispatcher, std::size_t maximumConcurrentTransfers)
    : driver_(std::make_shared<Driver>(dispatcher.makeSerialQueue("network", QualityOfService::utility),
                                       std::max(maximumConcurrentTransfers, std::size_t{1}))) {}

void HTTPTransport::send(HTTPRequest request, Completion completion) {
    driver_->handOver(std::move(request), std::move(completion));
}

std::string HTTPTransport::originOf(const std::string& url) {
    ParsedURL parsed(curl_url());
    curl_url_set(parsed.get(), CURLUPART_URL, url.c_str(), 0);
    std::string origin;
    for (CURLUPart part : {CURLUPART_SCHEME, CURLUPART_HOST, CURLUPART_PORT}) {
        char* text = nullptr;
        if (curl_url_get(parsed.get(), part, &text, CURLU_DEFAULT_PORT) == CURLUE_OK) origin.append(text).append(" ");
        curl_free(text);
    }
    return origin;
}

void HTTPTransport::cancelAll() { driver_->cancelAll(); }

}  // namespace vantix
