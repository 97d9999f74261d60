#include "Tools/vantix-inapp/Backend.h"

#include "Platform/Values/JSON.h"
#include "Tools/certificate/ThrowAwayCertificate.h"
#include "Tools/vantix-inapp/BadInput.h"
#include "Tools/vantix-inapp/Campaign.h"
#include "Tools/vantix-inapp/InputFile.h"
#include "VantixCore/VantixConstants.h"
#include "VantixInAppMessage/API/InAppTriggersRequest.h"

#include <condition_variable>
#include <httplib.h>
#include <mutex>
#include <set>
#include <sys/socket.h>
#include <thread>

namespace vantix {

namespace {

constexpr const char* json = "application/json";
constexpr const char* taken = R"({"status":"200"})";

/// Lets a port be had again at once, but never by two; the server library would let them share it.
void refuseSharing(int socket) {
    int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

/// The answer that a triggers file stands for.
std::string eventsAnswer(const std::filesystem::path& file) {
    std::string text = readInputFile(file.string());
    auto content = parseJSON(text);
    const List* campaigns = content ? content.value().list() : nullptr;
    if (!campaigns) return text;

    List triggers;
    for (const Value& campaign : *campaigns) triggers.emplace_back(pushOfCampaign(toJSON(campaign)));
    return toJSON(Dictionary{{"status", "200"}, {"message", "OK"}, {"triggers", triggers}});
}

}  // namespace

struct Backend::Implementation {
    BackendOptions options;
    std::function<void(const std::string&)> onReport;
    ThrowAwayCertificate certificate;
    std::unique_ptr<httplib::Server> server;
    int port = 0;
    std::thread thread;

    std::mutex mutex;
    std::condition_variable stopped;
    bool isStopping = false;
    int failuresLeft;
    std::set<std::string> knownReports;

    Implementation(const BackendOptions& theOptions, std::function<void(const std::string&)> reportHandler)
        : options(theOptions), onReport(std::move(reportHandler)), failuresLeft(theOptions.failures) {
        if (options.usesTLS) {
            server = std::make_unique<httplib::SSLServer>(certificate.certificate(), certificate.key());
        } else {
            server = std::make_unique<httplib::Server>();
        }
        // The server library leaves the body of a GET unread, so that nothing may follow on the connection.
        server->set_keep_alive_max_count(1);
        server->set_socket_options(refuseSharing);
        addRoutes();
        port = options.port == 0 ? server->bind_to_any_port("127.0.0.1") : options.port;
        if (port < 0 || (options.port != 0 && !server->bind_to_port("127.0.0.1", port))) {
            throw BadInput("port " + std::to_string(options.port) + " cannot be had");
        }
        thread = std::thread([this] { server->listen_after_bind(); });
        while (!server->is_running()) std::this_thread::yield();
    }

    ~Implementation() {
        {
            std::lock_guard lock(mutex);
            isStopping = true;
        }
        stopped.notify_all();
        server->stop();
        thread.join();
    }

    void addRoutes() {
        server->set_pre_routing_handler(
            [this](const httplib::Request&, httplib::Response& response) { return misbehave(response); });
        server->Get(VantixConstants::API::TriggerPath, [this](const httplib::Request&, httplib::Response& response) {
            answer(response, options.triggers ? eventsAnswer(*options.triggers) : taken, json);
        });
        server->Post(VantixConstants::API::ReportPath,
                     [this](const httplib::Request& request, httplib::Response& response) {
                         takeReports(request.body);
                         answer(response, taken, json);
                     });
        server->Get("/images/([^/]+)", [this](const httplib::Request& request, httplib::Response& response) {
            serveImage(request.matches[1], response);
        });
        server->set_exception_handler([](const httplib::Request&, httplib::Response& response, std::exception_ptr) {
            response.status = 500;
            response.set_content("the triggers file or the reports cannot be read", "text/plain");
        });
    }

    /// Waits, and refuses, as asked.
    httplib::Server::HandlerResponse misbehave(httplib::Response& response) {
        std::unique_lock lock(mutex);
        stopped.wait_for(lock, std::chrono::duration<double>(options.delay), [this] { return isStopping; });
        if (failuresLeft == 0) return httplib::Server::HandlerResponse::Unhandled;
        --failuresLeft;
        response.status = 503;
        return httplib::Server::HandlerResponse::Handled;
    }

    void takeReports(const std::string& body) {
        auto content = parseJSON(body);
        const Dictionary* batch = content ? content.value().dictionary() : nullptr;
        const List* events = batch ? batch->list("events") : nullptr;
        if (!events) throw BadInput("no reports");

        std::lock_guard lock(mutex);
        for (const Value& event : *events) {
            const Dictionary* report = event.dictionary();
            if (!report) continue;
            Dictionary line = *report;
            const std::string* identity = report->text("id");
            if (identity && !knownReports.insert(*identity).second) line.set("repeated", true);
            onReport(toJSON(line));
        }
    }

    void serveImage(const std::string& name, httplib::Response& response) {
        bool isInside = options.images && name != ".." && std::filesystem::is_regular_file(*options.images / name);
        if (!isInside) {
            response.status = 404;
            return;
        }
        answer(response, readInputFile((*options.images / name).string()), "application/octet-stream");
    }

    void answer(httplib::Response& response, const std::string& body, const char* type) const {
        if (!options.truncates) return response.set_content(body, type);
        response.set_content_provider(
            body.size(), type,
            [half = body.substr(0, body.size() / 2)](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                return offset == 0 && sink.write(half.data(), half.size());
            });
    }
};

Backend::Backend(const BackendOptions& options, std::function<void(const std::string&)> onReport)
    : implementation_(std::make_unique<Implementation>(options, std::move(onReport))) {}

Backend::~Backend() = default;

std::string Backend::url() const {
    const char* scheme = implementation_->options.usesTLS ? "https" : "http";
    return scheme + std::string("://127.0.0.1:") + std::to_string(implementation_->port);
}

std::string Backend::pin() const { return implementation_->options.usesTLS ? implementation_->certificate.pin() : ""; }

}  // namespace vantix
