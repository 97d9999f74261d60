#pragma once

#include "VantixCore/Network/HTTPRequest.h"
#include "VantixCore/Network/HTTPResponse.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

struct curl_slist;

namespace vantix {

/// One exchange in the hands of libcurl, which keeps pointers into it.
class CurlTransfer {
public:
    explicit CurlTransfer(HTTPRequest request);
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// libcurl's handle (CURL).
    void* handle() const { return easy_.get(); }

    /// The transfer that a handle belongs to.
    static CurlTransfer& of(void* handle);

    /// How it came out, from the code (CURLcode) with which libcurl ended it; call it once.
    HTTPOutcome outcome(int code);

private:
    struct Release {
        void operator()(void* easy) const;
        void operator()(curl_slist* list) const;
    };

    template <typename Value>
    void set(int option, Value value);
    template <typename Value>
    Value info(int which) const;

    void setDestination();
    void setTrust();
    void setLimits();
    void setReceiver();

    static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* transfer);
    static std::size_t receiveHeader(char* bytes, std::size_t size, std::size_t count, void* transfer);
    std::size_t append(const char* bytes, std::size_t count);
    HTTPResponse response();

    HTTPRequest request_;
    std::unique_ptr<curl_slist, Release> headers_;
    std::unique_ptr<void, Release> easy_;
    /// libcurl's own words for what went wrong.
    std::vector<char> errorText_;
    std::string body_;
    bool isTooLarge_ = false;
    /// libcurl takes the end of the connection for the end of the headers.
    bool hasWholeHead_ = false;
};

}  // namespace vantix
