#include "Tools/vantix-inapp/Backend/LoopbackListener.h"

#include "Tools/vantix-inapp/Backend/BoundedServer.h"
#include "Tools/vantix-inapp/Input/BadInput.h"

#include <sys/socket.h>

namespace vantix {

namespace {

constexpr const char* loopback = "127.0.0.1";

/// Lets a port be had again at once, but never by two; the server library would let them share it.
void refuseSharing(int socket) {
    int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

int bind(httplib::Server& server, int port) {
    if (port == 0) return server.bind_to_any_port(loopback);
    if (!server.bind_to_port(loopback, port)) throw BadInput("port " + std::to_string(port) + " cannot be had");
    return port;
}

}  // namespace

LoopbackListener::LoopbackListener(int port, bool usesTLS, const std::function<void(httplib::Server&)>& addRoutes) {
    if (usesTLS) certificate_.emplace();
    server_ = std::make_unique<BoundedServer>(certificate_ ? &*certificate_ : nullptr);
    server_->set_socket_options(refuseSharing);
    addRoutes(*server_);
    url_ = (usesTLS ? "https://" : "http://") + std::string(loopback) + ":" + std::to_string(bind(*server_, port));
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    while (!server_->is_running()) std::this_thread::yield();
}

LoopbackListener::~LoopbackListener() {
    server_->stopListening();
    thread_.join();
}

std::optional<std::string> LoopbackListener::pin() const {
    if (!certificate_) return {};
    return certificate_->pin();
}

}  // namespace vantix
