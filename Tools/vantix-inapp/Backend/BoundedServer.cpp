#include "Tools/vantix-inapp/Backend/BoundedServer.h"

#include <algorithm>
#include <openssl/bio.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vantix {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// How many clients may be listened to at a time.
constexpr std::size_t threads = 32;

/// Waits for the socket, and takes that from what is left of a time; false when nothing is left.
bool waitFor(socket_t socket, short event, milliseconds& left) {
    pollfd polled{socket, event, 0};
    auto begin = steady_clock::now();
    bool isReady = left.count() > 0 && poll(&polled, 1, static_cast<int>(left.count())) > 0;
    left -= std::chrono::ceil<milliseconds>(steady_clock::now() - begin);
    return isReady;
}

/// What a client asks and is answered, within the server's bounds.
class BoundedStream final : public httplib::Stream {
public:
    /// The socket stays the caller's.
    BoundedStream(socket_t socket, SSL_CTX* tls) : socket_(socket), bio_(nullptr, BIO_free_all) {
        BIO_socket_nbio(socket, 1);
        bio_.reset(BIO_new_socket(socket, BIO_NOCLOSE));
        if (tls) bio_.reset(BIO_push(BIO_new_ssl(tls, 0), bio_.release()));
    }

    ssize_t read(char* data, std::size_t size) override {
        size = std::min(size, bytesLeft_);
        if (size == 0) return -1;
        int length = transfer(askingLeft_, [&] { return BIO_read(bio_.get(), data, static_cast<int>(size)); });
        bytesLeft_ -= static_cast<std::size_t>(std::max(length, 0));
        return length;
    }

    ssize_t write(const char* data, std::size_t size) override {
        constexpr std::size_t most = 1U << 20;
        return transfer(answeringLeft_,
                        [&] { return BIO_write(bio_.get(), data, static_cast<int>(std::min(size, most))); });
    }

    void sayThatAllIsSaid() { BIO_ssl_shutdown(bio_.get()); }

    /// Hangs up, and takes what the client still sends: unread, it would cost the client the answer.
    void close() {
        ::shutdown(socket_, SHUT_WR);
        char ignored[16 * 1024];
        ssize_t length = 0;
        do {
            length = waitFor(socket_, POLLIN, askingLeft_) ? recv(socket_, ignored, sizeof ignored, 0) : 0;
            bytesLeft_ -= std::min(bytesLeft_, static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
        } while (length > 0 && bytesLeft_ > 0);
    }

    bool is_readable() const override { return bytesLeft_ > 0 && askingLeft_.count() > 0; }
    bool is_writable() const override { return answeringLeft_.count() > 0; }
    void get_remote_ip_and_port(std::string&, int&) const override {}
    void get_local_ip_and_port(std::string&, int&) const override {}
    socket_t socket() const override { return socket_; }

private:
    template <typename Attempt>
    int transfer(milliseconds& left, Attempt attempt) {
        while (true) {
            int length = attempt();
            if (length > 0 || !BIO_should_retry(bio_.get())) return length;
            if (!waitFor(socket_, BIO_should_read(bio_.get()) ? POLLIN : POLLOUT, left)) return -1;
        }
    }

    socket_t socket_;
    std::unique_ptr<BIO, void (*)(BIO*)> bio_;
    std::size_t bytesLeft_ = BoundedServer::largestRequest;
    milliseconds askingLeft_ = BoundedServer::longestAsking;
    milliseconds answeringLeft_ = BoundedServer::longestAnswering;
};

}  // namespace

BoundedServer::BoundedServer(const ThrowAwayCertificate* certificate) : tls_(nullptr, SSL_CTX_free) {
    new_task_queue = [] { return new httplib::ThreadPool(threads); };
    if (!certificate) return;
    tls_.reset(SSL_CTX_new(TLS_server_method()));
    SSL_CTX_use_certificate(tls_.get(), certificate->certificate());
    SSL_CTX_use_PrivateKey(tls_.get(), certificate->key());
}

void BoundedServer::stopListening() {
    stop();
    std::lock_guard lock(mutex_);
    isStopping_ = true;
    for (socket_t socket : connections_) ::shutdown(socket, SHUT_RD);
}

bool BoundedServer::process_and_close_socket(socket_t socket) {
    {
        std::lock_guard lock(mutex_);
        connections_.insert(socket);
        if (isStopping_) ::shutdown(socket, SHUT_RD);
    }
    BoundedStream stream(socket, tls_.get());
    bool isClosed = false;
    bool isAnswered = process_request(stream, true, isClosed, {});
    if (isAnswered) stream.sayThatAllIsSaid();
    stream.close();

    std::lock_guard lock(mutex_);
    connections_.erase(socket);
    ::close(socket);
    return isAnswered;
}

}  // namespace vantix
