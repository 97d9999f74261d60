#include "VantixCore/Network/CurlTransfer.h"

#include "VantixCore/Network/TransferError.h"

#include <curl/curl.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace vantix {

namespace {

long milliseconds(Duration duration) {
    return static_cast<long>(std::max(std::chrono::ceil<std::chrono::milliseconds>(duration).count(), std::int64_t{1}));
}

curl_slist* makeHeaders(const HTTPRequest& request) {
    curl_slist* list = nullptr;
    auto append = [&list](const std::string& line) { list = curl_slist_append(list, line.c_str()); };
    for (const auto& [name, value] : request.headers) append(value.empty() ? name + ";" : name + ": " + value);
    // What libcurl would add by itself to a request with a body.
    append("Expect:");
    if (!request.headers.contains("Content-Type")) append("Content-Type:");
    return list;
}

}  // namespace

void CurlTransfer::Release::operator()(void* easy) const { curl_easy_cleanup(easy); }

void CurlTransfer::Release::operator()(curl_slist* list) const { curl_slist_free_all(list); }

template <typename Value>
void CurlTransfer::set(int option, Value value) {
    curl_easy_setopt(easy_.get(), static_cast<CURLoption>(option), value);
}

template <typename Value>
Value CurlTransfer::info(int which) const {
    Value value{};
    curl_easy_getinfo(easy_.get(), static_cast<CURLINFO>(which), &value);
    return value;
}

CurlTransfer::CurlTransfer(HTTPRequest request)
    : request_(std::move(request)),
      headers_(makeHeaders(request_)),
      easy_(curl_easy_init()),
      errorText_(CURL_ERROR_SIZE, '\0') {
    setDestination();
    setTrust();
    setLimits();
    setReceiver();
}

CurlTransfer::~CurlTransfer() = default;

CurlTransfer& CurlTransfer::of(void* handle) {
    char* transfer = nullptr;
    curl_easy_getinfo(handle, CURLINFO_PRIVATE, &transfer);
    return *reinterpret_cast<CurlTransfer*>(transfer);
}

void CurlTransfer::setDestination() {
    set(CURLOPT_URL, request_.url.text().c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    if (request_.body) {
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body->size()));
        set(CURLOPT_POSTFIELDS, request_.body->data());
    }
    set(CURLOPT_CUSTOMREQUEST, request_.method.c_str());
    set(CURLOPT_HTTPHEADER, headers_.get());
    set(CURLOPT_ACCEPT_ENCODING, "gzip");
}

void CurlTransfer::setTrust() {
    if (request_.pin.empty()) return;
    set(CURLOPT_PINNEDPUBLICKEY, request_.pin.c_str());
    set(CURLOPT_SSL_VERIFYPEER, 0L);
    set(CURLOPT_SSL_VERIFYHOST, 0L);
}

void CurlTransfer::setLimits() {
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_TIMEOUT_MS, milliseconds(request_.timeOut));
    set(CURLOPT_CONNECTTIMEOUT_MS, milliseconds(request_.connectTimeOut.value_or(request_.timeOut)));
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(request_.largestBody));
}

void CurlTransfer::setReceiver() {
    set(CURLOPT_PRIVATE, static_cast<void*>(this));
    set(CURLOPT_ERRORBUFFER, errorText_.data());
    set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    set(CURLOPT_WRITEFUNCTION, &CurlTransfer::receive);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    set(CURLOPT_HEADERFUNCTION, &CurlTransfer::receiveHeader);
}

std::size_t CurlTransfer::receiveHeader(char* bytes, std::size_t size, std::size_t count, void* transfer) {
    std::string_view line(bytes, size * count);
    bool isEnd = line == "\r\n" || line == "\n";
    if (isEnd || line.starts_with("HTTP/")) static_cast<CurlTransfer*>(transfer)->hasWholeHead_ = isEnd;
    return line.size();
}

std::size_t CurlTransfer::receive(char* bytes, std::size_t size, std::size_t count, void* transfer) {
    return static_cast<CurlTransfer*>(transfer)->append(bytes, size * count);
}

std::size_t CurlTransfer::append(const char* bytes, std::size_t count) {
    isTooLarge_ = count > request_.largestBody - body_.size();
    if (isTooLarge_) return 0;
    body_.append(bytes, count);
    return count;
}

HTTPOutcome CurlTransfer::outcome(int code) {
    if (code == CURLE_OK && hasWholeHead_) return response();
    if (code == CURLE_OK) return transferError(VantixError::Kind::connection, "the answer broke off in its headers");
    if (isTooLarge_) {
        return transferError(VantixError::Kind::tooLarge,
                             "more than " + std::to_string(request_.largestBody) + " bytes");
    }
    const char* why = errorText_[0] != '\0' ? errorText_.data() : curl_easy_strerror(static_cast<CURLcode>(code));
    return transferError(transferErrorKind(code), why);
}

HTTPResponse CurlTransfer::response() {
    constexpr curl_off_t year = 365 * 24 * 60 * 60;
    const char* redirectURL = info<const char*>(CURLINFO_REDIRECT_URL);
    return {static_cast<int>(info<long>(CURLINFO_RESPONSE_CODE)), std::move(body_), redirectURL ? redirectURL : "",
            std::chrono::microseconds(info<curl_off_t>(CURLINFO_TOTAL_TIME_T)),
            std::chrono::seconds(std::min(info<curl_off_t>(CURLINFO_RETRY_AFTER), year))};
}

}  // namespace vantix
