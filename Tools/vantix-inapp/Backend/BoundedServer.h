#pragma once

#include "Tools/certificate/ThrowAwayCertificate.h"

#include <chrono>
#include <cstddef>
#include <httplib.h>
#include <memory>
#include <mutex>
#include <set>

namespace vantix {

/// An HTTP server that no client can hold up: each connection is for one call, asks within a time and a size, and takes
/// its answer within a time; what the server does in between does not count.
class BoundedServer final : public httplib::Server {
public:
    static constexpr std::chrono::milliseconds longestAsking{5'000};
    static constexpr std::chrono::milliseconds longestAnswering{30'000};
    static constexpr std::size_t largestRequest = 16U << 20;

    /// Over TLS when there is a certificate.
    explicit BoundedServer(const ThrowAwayCertificate* certificate);

    /// Ends the server, from any thread: no client is listened to any more, what has been asked is answered.
    void stopListening();

private:
    bool process_and_close_socket(socket_t socket) override;

    std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> tls_;
    std::mutex mutex_;
    bool isStopping_ = false;
    std::set<socket_t> connections_;
};

}  // namespace vantix
