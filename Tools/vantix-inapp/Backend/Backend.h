#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

/// How a back end behaves.
struct BackendOptions {
    static constexpr double longestDelay = 3600;

    /// 0: the system chooses a free one.
    int port = 0;
    bool usesTLS = false;
    /// What eventsAnswer makes the answer of the events API from; asked for each call, on a thread of the server, with
    /// the back end's address. Empty: a successful answer without messages.
    std::function<std::string(const std::string& address)> triggers;
    /// A folder that is served below "/images/".
    std::optional<std::filesystem::path> images;
    /// Seconds before each answer.
    double delay = 0;
    /// So many calls are answered with status 503 first.
    int failures = 0;
    /// Every answer breaks off in its middle.
    bool truncates = false;
};

/// A back end on loopback to develop against: answers the events API, takes reported events, serves images. Threads of
/// its own, from its making to its end.
class Backend {
public:
    /// `onReport` is told of each reported event, as JSON, with `"repeated": true` for an identity that came before;
    /// one call at a time, on a thread of the server. Throws BadInput when the port cannot be had.
    Backend(const BackendOptions& options, std::function<void(const std::string& event)> onReport);
    ~Backend();

    /// "http://127.0.0.1:PORT", or with https.
    const std::string& url() const;
    /// The pin of the certificate; absent without TLS.
    std::optional<std::string> pin() const;

private:
    class Server;
    std::unique_ptr<Server> server_;
};

}  // namespace vantix
