#include "VantixCore/Network/CurlMulti.h"

#include "VantixCore/Network/BrokenPipeGuard.h"

#include <curl/curl.h>

#include <algorithm>
#include <limits>

namespace vantix {

namespace {

void* makeMulti() {
    [[maybe_unused]] static const CURLcode initialized = curl_global_init(CURL_GLOBAL_DEFAULT);
    return curl_multi_init();
}

}  // namespace

/// Closing the kept connections may write to them.
void CurlMulti::Release::operator()(void* multi) const {
    BrokenPipeGuard guard;
    curl_multi_cleanup(multi);
}

CurlMulti::CurlMulti() : multi_(makeMulti()) {}

CurlMulti::~CurlMulti() = default;

void CurlMulti::add(CurlTransfer& transfer) { curl_multi_add_handle(multi_.get(), transfer.handle()); }

void CurlMulti::remove(CurlTransfer& transfer) { curl_multi_remove_handle(multi_.get(), transfer.handle()); }

std::vector<CurlMulti::Ended> CurlMulti::perform() {
    int count = 0;
    curl_multi_perform(multi_.get(), &count);
    std::vector<Ended> ended;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &count)) {
        if (message->msg != CURLMSG_DONE) continue;
        ended.push_back({CurlTransfer::of(message->easy_handle), message->data.result});
        remove(ended.back().transfer);
    }
    return ended;
}

void CurlMulti::wait(Duration atMost) {
    constexpr std::chrono::milliseconds longest(std::numeric_limits<int>::max());
    auto time = std::min(std::chrono::ceil<std::chrono::milliseconds>(atMost), longest);
    curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(time.count()), nullptr);
}

void CurlMulti::wakeUp() { curl_multi_wakeup(multi_.get()); }

}  // namespace vantix
