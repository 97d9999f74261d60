#include "tests/Support/LoopbackServer.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <httplib.h>
#include <mutex>
#include <openssl/evp.h>
#include <openssl/sha.h>
#include <openssl/x509.h>
#include <thread>

namespace vantix {

namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

constexpr long day = 24 * 60 * 60;

Certificate makeCertificate(EVP_PKEY* key, LoopbackServer::Security security) {
    Certificate certificate(X509_new(), &X509_free);
    X509_set_version(certificate.get(), X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -2 * day);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), security == LoopbackServer::Security::expired ? -day : day);
    X509_NAME* name = X509_get_subject_name(certificate.get());
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>("127.0.0.1"), -1, -1,
                               0);
    X509_set_issuer_name(certificate.get(), name);
    X509_set_pubkey(certificate.get(), key);
    X509_sign(certificate.get(), key, EVP_sha256());
    return certificate;
}

std::string pinOf(EVP_PKEY* key) {
    unsigned char* encoded = nullptr;
    int length = i2d_PUBKEY(key, &encoded);
    unsigned char hash[SHA256_DIGEST_LENGTH];
    SHA256(encoded, static_cast<std::size_t>(length), hash);
    OPENSSL_free(encoded);
    unsigned char text[64];
    EVP_EncodeBlock(text, hash, sizeof hash);
    return "sha256//" + std::string(reinterpret_cast<const char*>(text));
}

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
    Key key{EVP_EC_gen("P-256"), &EVP_PKEY_free};
    Certificate certificate{nullptr, &X509_free};
    Security security;
    std::unique_ptr<httplib::Server> server;
    int port = 0;
    std::thread thread;

    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    std::map<std::string, Reply> replies;
    std::vector<Request> requests;
    bool isHeld = false;
    std::atomic<bool> isStopping = false;

    explicit Implementation(Security theSecurity) : security(theSecurity) {
        if (security == Security::plain) {
            server = std::make_unique<httplib::Server>();
        } else {
            certificate = makeCertificate(key.get(), security);
            server = std::make_unique<httplib::SSLServer>(certificate.get(), key.get());
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

std::string LoopbackServer::pin() const { return pinOf(implementation_->key.get()); }

std::vector<LoopbackServer::Request> LoopbackServer::requests() const {
    std::lock_guard lock(implementation_->mutex);
    return implementation_->requests;
}

}  // namespace vantix
