#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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
    void waitForRequests(std::size_t count) const;

    std::string url(const std::string& path = "") const;
    /// The pin of the certificate's public key.
    std::string pin() const;
    std::vector<Request> requests() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace vantix
