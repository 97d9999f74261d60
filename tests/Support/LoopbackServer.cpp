#include "tests/Support/LoopbackServer.h"

#include "Tools/certificate/ThrowAwayCertificate.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <httplib.h>
#include <mutex>
#include <thread>

namespace vantix {

namespace {

LoopbackServer::Request recorded(const httplib::Request& request) {
    LoopbackServer::Request record{request.method, request.target, {}, request.body};
    for (const auto& [name, value] : request.headers) {
        std::string lower = name;
        for (char& letter : lower) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        record.headers[lower] = value;
    }
    return record;
}

}  // namespace

struct LoopbackServer::Implementation {
    Security security;
    ThrowAwayCertificate certificate;
    std::unique_ptr<httplib::Server> server;
    int port = 0;
    std::thread thread;

    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::map<std::string, Reply> replies;
    std::vector<Request> requests;
    bool isHeld = false;
    std::atomic<bool> isStopping = false;

    explicit Implementation(Security theSecurity)
        : security(theSecurity),
          certificate(theSecurity == Security::expired ? ThrowAwayCertificate::Validity::expired
                                                       : ThrowAwayCertificate::Validity::current) {
        if (security == Security::plain) {
            server = std::make_unique<httplib::Server>();
        } else {
            server = std::make_unique<httplib::SSLServer>(certificate.certificate(), certificate.key());
        }
        server->set_keep_alive_max_count(1);
        server->new_task_queue = [] { return new httplib::ThreadPool(16); };
        auto answer = [this](const httplib::Request& request, httplib::Response& response) {
            write(replyTo(request), response);
        };
        server->Get(".*", answer).Post(".*", answer).Put(".*", answer).Delete(".*", answer);
        port = server->bind_to_any_port("127.0.0.1");
        thread = std::thread([this] { server->listen_after_bind(); });
        while (!server->is_running()) std::this_thread::yield();
    }

    ~Implementation() {
        {
            std::lock_guard lock(mutex);
            isHeld = false;
            isStopping = true;
        }
        changed.notify_all();
        server->stop();
        thread.join();
    }

    Reply replyTo(const httplib::Request& request) {
        std::unique_lock lock(mutex);
        requests.push_back(recorded(request));
        changed.notify_all();
        changed.wait(lock, [this] { return !isHeld; });
        auto reply = replies.find(request.path);
        return reply == replies.end() ? Reply{404, "nothing here"} : reply->second;
    }

    void write(const Reply& reply, httplib::Response& response) {
        response.status = reply.status;
        for (const auto& [name, value] : reply.headers) response.set_header(name, value);
        auto writeBody = [this, body = reply.body](httplib::DataSink& sink) {
            return !isStopping && sink.write(body.data(), body.size());
        };
        if (reply.isEndless) {
            response.set_chunked_content_provider(
                "text/plain", [writeBody](std::size_t, httplib::DataSink& sink) { return writeBody(sink); });
        } else if (reply.announcedLength) {
            response.set_content_provider(*reply.announcedLength, "text/plain",
                                          [writeBody](std::size_t offset, std::size_t, httplib::DataSink& sink) {
                                              return offset == 0 && writeBody(sink);
                                          });
        } else {
            response.set_content(reply.body, "text/plain");
        }
    }
};

LoopbackServer::LoopbackServer(Security security) : implementation_(std::make_unique<Implementation>(security)) {}

LoopbackServer::~LoopbackServer() = default;

void LoopbackServer::reply(const std::string& path, Reply reply) {
    std::lock_guard lock(implementation_->mutex);
    implementation_->replies[path] = std::move(reply);
}

void LoopbackServer::hold() {
    std::lock_guard lock(implementation_->mutex);
    implementation_->isHeld = true;
}

void LoopbackServer::release() {
    std::lock_guard lock(implementation_->mutex);
    implementation_->isHeld = false;
    implementation_->changed.notify_all();
}

void LoopbackServer::waitForRequests(std::size_t count) const {
    std::unique_lock lock(implementation_->mutex);
    implementation_->changed.wait(lock, [&] { return implementation_->requests.size() >= count; });
}

std::string LoopbackServer::url(const std::string& path) const {
    const char* scheme = implementation_->security == Security::plain ? "http" : "https";
    return std::string(scheme) + "://127.0.0.1:" + std::to_string(implementation_->port) + path;
}

std::string LoopbackServer::pin() const { return implementation_->certificate.pin(); }

std::vector<LoopbackServer::Request> LoopbackServer::requests() const {
    std::lock_guard lock(implementation_->mutex);
    return implementation_->requests;
}

}  // namespace vantix
