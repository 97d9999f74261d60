#include "Tools/vantix-inapp/Backend/Backend.h"

#include "Tools/vantix-inapp/Backend/BoundedServer.h"
#include "Tools/vantix-inapp/Backend/EventsAnswer.h"
#include "Tools/vantix-inapp/Backend/LoopbackListener.h"
#include "Tools/vantix-inapp/Backend/ReportIntake.h"
#include "Tools/vantix-inapp/Input/InputFile.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/API/InAppTriggersRequest.h"

#include <algorithm>
#include <condition_variable>
#include <httplib.h>
#include <mutex>
#include <optional>
#include <system_error>

namespace vantix {

namespace {

using httplib::Request;
using httplib::Response;
using HandlerResponse = httplib::Server::HandlerResponse;

constexpr const char* json = "application/json";
constexpr const char* taken = R"({"status":"200"})";

/// The file of that name, unless it is none or a link leads out of the folder.
std::optional<std::string> fileWithin(const std::filesystem::path& folder, const std::string& name) {
    if (name.find('\0') != std::string::npos) return {};
    std::error_code problem;
    auto root = std::filesystem::canonical(folder, problem);
    auto file = std::filesystem::canonical(folder / name, problem);
    if (problem || !std::filesystem::is_regular_file(file, problem)) return {};
    bool isInside = std::mismatch(root.begin(), root.end(), file.begin(), file.end()).first == root.end();
    return isInside ? std::optional(file.string()) : std::nullopt;
}

}  // namespace

class Backend::Server {
public:
    Server(const BackendOptions& options, std::function<void(const std::string&)> onReport)
        : options_(options),
          reports_(std::move(onReport)),
          failuresLeft_(options.failures),
          listener_(options.port, options.usesTLS, [this](httplib::Server& server) { addRoutes(server); }) {}

    ~Server() {
        std::lock_guard lock(mutex_);
        isStopping_ = true;
        stopped_.notify_all();
    }

    const LoopbackListener& listener() const { return listener_; }

private:
    void addRoutes(httplib::Server& server) {
        server.set_pre_routing_handler([this](const Request& request, Response& response) {
            return refuses(request, response) || misbehaves(response) ? HandlerResponse::Handled
                                                                      : HandlerResponse::Unhandled;
        });
        server.Get(VantixConstants::API::TriggerPath, [this](const Request&, Response& response) {
            answer(response, options_.triggers ? eventsAnswer(options_.triggers(listener_.url())) : taken, json);
        });
        server.Post(VantixConstants::API::ReportPath, [this](const Request& request, Response& response) {
            reports_.take(request.body);
            answer(response, taken, json);
        });
        server.Get("/images/([^/]+)",
                   [this](const Request& request, Response& response) { serveImage(request.matches[1], response); });
        server.set_exception_handler([](const Request&, Response& response, const std::exception_ptr&) {
            response.status = 500;
            response.set_content("the triggers or the reports cannot be read", "text/plain");
        });
    }

    /// Before a body is read: one that is too large, or that could be once it is unpacked.
    static bool refuses(const Request& request, Response& response) {
        bool isPacked = request.has_header("Content-Encoding");
        bool isLarge = request.get_header_value<std::uint64_t>("Content-Length") > BoundedServer::largestRequest;
        if (isPacked) response.status = 415;
        if (isLarge) response.status = 413;
        return isPacked || isLarge;
    }

    /// Waits, and refuses, as asked.
    bool misbehaves(Response& response) {
        std::unique_lock lock(mutex_);
        stopped_.wait_for(lock, std::chrono::duration<double>(options_.delay), [this] { return isStopping_; });
        if (failuresLeft_ == 0) return false;
        --failuresLeft_;
        response.status = 503;
        return true;
    }

    void serveImage(const std::string& name, Response& response) const {
        auto file = options_.images ? fileWithin(*options_.images, name) : std::nullopt;
        if (file) {
            answer(response, readInputFile(*file), "application/octet-stream");
        } else {
            response.status = 404;
        }
    }

    void answer(Response& response, const std::string& body, const char* type) const {
        if (!options_.truncates) return response.set_content(body, type);
        response.set_content_provider(
            body.size(), type,
            [half = body.substr(0, body.size() / 2)](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                return offset == 0 && sink.write(half.data(), half.size());
            });
    }

    BackendOptions options_;
    ReportIntake reports_;
    std::mutex mutex_;
    std::condition_variable stopped_;
    bool isStopping_ = false;
    int failuresLeft_;
    /// The last, so that its threads end before what they use.
    LoopbackListener listener_;
};

Backend::Backend(const BackendOptions& options, std::function<void(const std::string&)> onReport)
    : server_(std::make_unique<Server>(options, std::move(onReport))) {}

Backend::~Backend() = default;

const std::string& Backend::url() const { return server_->listener().url(); }

std::optional<std::string> Backend::pin() const { return server_->listener().pin(); }

}  // namespace vantix
