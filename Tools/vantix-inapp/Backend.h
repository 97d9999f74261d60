#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantix {

/// How a back end behaves.
struct BackendOptions {
    /// 0: the system chooses a free one.
    int port = 0;
    bool usesTLS = false;
    /// The answer of the events API: a JSON object is sent as it stands, a list of campaigns within a successful
    /// answer. Read anew for each call. Absent: a successful answer without messages.
    std::optional<std::filesystem::path> triggers;
    /// Served below "/images/".
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
    std::string url() const;
    /// The pin of the certificate; empty without TLS.
    std::string pin() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace vantix
