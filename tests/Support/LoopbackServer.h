#pragma once

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace httplib {
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace vantix {

/// A scripted HTTP server on loopback, on a port that the kernel chooses. Ends with its object. Usable from any thread.
class LoopbackServer {
public:
    struct Request {
        std::string method;
        std::string path;
        /// Names in lower case.
        std::map<std::string, std::string> headers;
        std::string body;
    };

    struct Reply {
        int status = 200;
        std::string body = {};
        std::map<std::string, std::string> headers = {};
        /// Announces this length, and breaks off after the body.
        std::optional<std::size_t> announcedLength = {};
        /// Repeats the body for ever.
        bool isEndless = false;
    };

    /// Over TLS the certificate is made for this server, signed by itself.
    enum class Security { plain, selfSigned, expired };

    explicit LoopbackServer(Security security = Security::plain);
    ~LoopbackServer();

    /// The reply for a path; any other path is answered with status 404.
    void reply(const std::string& path, Reply reply);

    /// From now on replies wait for `release`.
    void hold();
    void release();
    /// False when so many have not come after ten seconds.
    bool waitForRequests(std::size_t count) const;

    std::string url(const std::string& path = "") const { return address_ + path; }
    /// The pin of the certificate's public key.
    const std::string& pin() const { return pin_; }
    std::vector<Request> requests() const;

private:
    void makeServer(Security security);
    Reply replyTo(const httplib::Request& request);
    void write(const Reply& reply, httplib::Response& response);

    std::unique_ptr<httplib::Server> server_;
    std::string pin_;
    std::string address_;
    std::thread thread_;

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::map<std::string, Reply> replies_;
    std::vector<Request> requests_;
    bool isHeld_ = false;
    std::atomic<bool> isStopping_ = false;
};

}  // namespace vantix
