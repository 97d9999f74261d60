#include "tests/Support/LoopbackServer.h"

#include "Tools/certificate/ThrowAwayCertificate.h"

#include <chrono>
#include <httplib.h>

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

LoopbackServer::LoopbackServer(Security security) {
    makeServer(security);
    server_->set_keep_alive_max_count(1);
    server_->new_task_queue = [] { return new httplib::ThreadPool(16); };
    auto answer = [this](const httplib::Request& request, httplib::Response& response) {
        write(replyTo(request), response);
    };
    server_->Get(".*", answer).Post(".*", answer).Put(".*", answer).Delete(".*", answer);
    address_ += std::to_string(server_->bind_to_any_port("127.0.0.1"));
    thread_ = std::thread([this] { server_->listen_after_bind(); });
    while (!server_->is_running()) std::this_thread::yield();
}

void LoopbackServer::makeServer(Security security) {
    if (security == Security::plain) {
        server_ = std::make_unique<httplib::Server>();
        address_ = "http://127.0.0.1:";
        return;
    }
    using Validity = ThrowAwayCertificate::Validity;
    ThrowAwayCertificate certificate(security == Security::expired ? Validity::expired : Validity::current);
    server_ = std::make_unique<httplib::SSLServer>(certificate.certificate(), certificate.key());
    pin_ = certificate.pin();
    address_ = "https://127.0.0.1:";
}

LoopbackServer::~LoopbackServer() {
    {
        std::lock_guard lock(mutex_);
        isHeld_ = false;
        isStopping_ = true;
    }
    changed_.notify_all();
    server_->stop();
    thread_.join();
}

LoopbackServer::Reply LoopbackServer::replyTo(const httplib::Request& request) {
    std::unique_lock lock(mutex_);
    requests_.push_back(recorded(request));
    changed_.notify_all();
    changed_.wait(lock, [this] { return !isHeld_; });
    auto reply = replies_.find(request.path);
    return reply == replies_.end() ? Reply{404, "nothing here"} : reply->second;
}

void LoopbackServer::write(const Reply& reply, httplib::Response& response) {
    response.status = reply.status;
    for (const auto& [name, value] : reply.headers) response.set_header(name, value);
    auto writeBody = [this, body = reply.body](httplib::DataSink& sink) {
        return !isStopping_ && sink.write(body.data(), body.size());
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

void LoopbackServer::reply(const std::string& path, Reply reply) {
    std::lock_guard lock(mutex_);
    replies_[path] = std::move(reply);
}

void LoopbackServer::hold() {
    std::lock_guard lock(mutex_);
    isHeld_ = true;
}

void LoopbackServer::release() {
    std::lock_guard lock(mutex_);
    isHeld_ = false;
    changed_.notify_all();
}

bool LoopbackServer::waitForRequests(std::size_t count) const {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, std::chrono::seconds(10), [&] { return requests_.size() >= count; });
}

std::vector<LoopbackServer::Request> LoopbackServer::requests() const {
    std::lock_guard lock(mutex_);
    return requests_;
}

}  // namespace vantix
