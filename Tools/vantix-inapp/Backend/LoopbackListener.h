#pragma once

#include "Tools/certificate/ThrowAwayCertificate.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace httplib {
class Server;
}

namespace vantix {

class BoundedServer;

/// An HTTP server on loopback, with threads of its own, from its making to its end; answers one call a connection.
class LoopbackListener {
public:
    /// Port 0: the system chooses a free one. With TLS the certificate is made on the spot. `addRoutes` says what is
    /// answered. Throws BadInput when the port cannot be had, also while another program listens there.
    LoopbackListener(int port, bool usesTLS, const std::function<void(httplib::Server&)>& addRoutes);
    /// Waits until every call is answered that has come.
    ~LoopbackListener();

    /// "http://127.0.0.1:PORT", or with https.
    const std::string& url() const { return url_; }
    /// The pin of the certificate; absent without TLS.
    std::optional<std::string> pin() const;

private:
    std::optional<ThrowAwayCertificate> certificate_;
    std::unique_ptr<BoundedServer> server_;
    std::string url_;
    std::thread thread_;
};

}  // namespace vantix
