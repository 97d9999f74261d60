#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Network/BrokenPipeGuard.h"
#include "VantixCore/Network/HTTPClient.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "VantixCore/VantixNetworkManager.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

#include <arpa/inet.h>
#include <condition_variable>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace vantix;

namespace {

struct Call final : VantixAPIRequestGenerator {
    HTTPMethod theMethod = HTTPMethod::get;
    std::string thePath = "/mapp/events";
    std::optional<std::string> theBody = {};
    std::optional<HTTPHeaders> theHeader = URLRequestHeaders::authEventReportHeaders();
    double theTimeOut = 60;
    bool sendsToken = true;
    std::string base;
    std::string pin;
    std::string token;

    std::string accountId() const override { return "account"; }
    HTTPMethod method() const override { return theMethod; }
    std::string path() const override { return thePath; }
    std::optional<std::string> body() const override { return theBody; }
    std::optional<HTTPHeaders> header() const override { return theHeader; }
    double timeOut() const override { return theTimeOut; }
    bool shouldSendAccessToken() const override { return sendsToken; }
    std::string baseURL() const override { return base; }
    std::string sslKeyHash() const override { return pin; }
    std::string getAccessToken() const override { return token; }
};

/// How a call came out: an answer or an error.
struct Outcome {
    std::optional<VantixResponseGenerator> answer;
    std::optional<VantixError> error;
};

/// A server below HTTP: answers one request with exactly these bytes, then closes or resets the connection.
class RawServer {
public:
    enum class End { close, reset };

    RawServer(std::string answer, End end, std::string endOfRequest = "\r\n\r\n")
        : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto* generic = reinterpret_cast<sockaddr*>(&address);
        bind(socket_, generic, length);
        listen(socket_, 1);
        getsockname(socket_, generic, &length);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([=, this] { serve(answer, end, endOfRequest); });
    }
    ~RawServer() {
        if (thread_.joinable()) thread_.join();
        close(socket_);
    }

    std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }
    /// Waits for the end.
    std::string request() {
        thread_.join();
        return request_;
    }

private:
    void serve(const std::string& answer, End end, const std::string& endOfRequest) {
        int connection = accept(socket_, nullptr, nullptr);
        for (char next = 0; !request_.ends_with(endOfRequest) && recv(connection, &next, 1, 0) == 1;) request_ += next;
        EXPECT_EQ(send(connection, answer.data(), answer.size(), MSG_NOSIGNAL), static_cast<ssize_t>(answer.size()));
        linger reset{1, 0};
        if (end == End::reset) setsockopt(connection, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
        close(connection);
    }

    int socket_;
    int port_ = 0;
    std::string request_;
    std::thread thread_;
};

class NetworkTest : public CoreFixture<> {
protected:
    Outcome perform(const Call& call) {
        Outcome outcome;
        dispatcher().utilityQueue().async([&] {
            try {
                outcome.answer = VantixNetworkManager().callAPI(call);
            } catch (const VantixError& error) {
                outcome.error = error;
            }
        });
        dispatcher().runUntilIdle();
        return outcome;
    }

    Outcome get(const std::string& base, const std::string& pin = {}) {
        Call call;
        call.base = base;
        call.thePath = "";
        call.pin = pin;
        return perform(call);
    }

    void expectError(const Outcome& outcome, VantixError::Kind kind, const std::string& what) {
        ASSERT_TRUE(outcome.error) << what;
        EXPECT_EQ(outcome.error->kind(), kind) << what << ": " << outcome.error->localizedDescription();
        EXPECT_FALSE(outcome.error->localizedDescription().empty());
    }
};

using NetworkPolicyTest = NetworkTest;
using Kind = VantixError::Kind;

}  // namespace

TEST_F(NetworkTest, SendsTheCallAsDescribedAndTellsTheHost) {
    RawServer server("HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nanswer", RawServer::End::close, "\r\n\r\n{}");
    Call call;
    call.base = server.url();
    call.theBody = "{}";
    call.token = "secret";

    auto outcome = perform(call);

    ASSERT_TRUE(outcome.answer);
    EXPECT_EQ(outcome.answer->rcvdData, "answer");
    EXPECT_EQ(outcome.answer->httpStatus, 200);
    EXPECT_FALSE(outcome.answer->error);
    std::string received = server.request();
    for (const char* part : {"GET /mapp/events HTTP/1.1\r\n", "\r\nAuthorization: Bearer secret\r\n",
                             "\r\nAccept: application/json\r\n", "\r\nContent-Type: application/json\r\n"}) {
        EXPECT_NE(received.find(part), std::string::npos) << part << "\nin\n" << received;
    }
    ASSERT_EQ(sent().size(), 1U);
    EXPECT_EQ(sent()[0].method, "GET");
    EXPECT_EQ(sent()[0].url, server.url() + "/mapp/events");
    EXPECT_EQ(sent()[0].body, "{}");
    std::vector<std::pair<std::string, std::string>> headers{
        {"Accept", "application/json"}, {"Authorization", "Bearer …"}, {"Content-Type", "application/json"}};
    EXPECT_EQ(sent()[0].headers, headers);
}

TEST_F(NetworkTest, MethodsAndTokens) {
    LoopbackServer server;
    server.reply("/call", {.body = "ok"});
    struct Case {
        HTTPMethod method;
        const char* word;
        bool sendsToken;
        const char* token;
        const char* authorization;
    };
    for (const Case& each :
         {Case{HTTPMethod::post, "POST", true, "one", "Bearer one"}, Case{HTTPMethod::put, "PUT", false, "two", ""},
          Case{HTTPMethod::del, "DELETE", true, "", ""}}) {
        Call call;
        call.base = server.url() + "/";
        call.thePath = "/call";
        call.theMethod = each.method;
        call.theHeader = {};
        call.sendsToken = each.sendsToken;
        call.token = each.token;
        call.theBody = "text";
        ASSERT_TRUE(perform(call).answer) << each.word;
        auto received = server.requests().back();
        EXPECT_EQ(received.method, each.word);
        EXPECT_EQ(received.body, "text");
        EXPECT_EQ(received.headers["authorization"], each.authorization);
        EXPECT_FALSE(received.headers.contains("content-type"));
    }
}

TEST_F(NetworkTest, AnswersOfAnyStatusAreReturned) {
    LoopbackServer server;
    server.reply("/empty", {.status = 200});
    auto empty = get(server.url("/empty"));
    ASSERT_TRUE(empty.answer);
    EXPECT_FALSE(empty.answer->rcvdData);

    for (int status : {400, 404, 500, 503}) {
        server.reply("/failing", {.status = status, .body = "why"});
        auto outcome = get(server.url("/failing"));
        ASSERT_TRUE(outcome.answer) << status;
        EXPECT_EQ(outcome.answer->rcvdData, "why");
        ASSERT_TRUE(outcome.answer->error) << status;
        EXPECT_EQ(outcome.answer->error->kind(), Kind::server);
        EXPECT_EQ(outcome.answer->error->code(), status);
    }
}

TEST_F(NetworkTest, MisbehaviourIsAnErrorAndLeavesEverythingWorking) {
    LoopbackServer server;
    server.reply("/truncated", {.body = "half", .announcedLength = 1000});
    server.reply("/endless", {.body = std::string(65536, 'x'), .isEndless = true});
    server.reply("/announced", {.body = "x", .announcedLength = NetworkPolicy::largestAnswer + 1});
    server.reply("/largest", {.body = std::string(NetworkPolicy::largestAnswer, 'x')});
    server.reply("/too-large", {.body = std::string(NetworkPolicy::largestAnswer + 1, 'x')});
    server.reply("/fine", {.body = "fine"});

    struct Case {
        std::string base;
        Kind kind;
    };
    for (const Case& each :
         {Case{"", Kind::configuration}, Case{"api.example.com", Kind::configuration},
          Case{"ftp://127.0.0.1/", Kind::configuration}, Case{"http://host.invalid", Kind::nameResolution},
          Case{"http://127.0.0.1:1", Kind::connection}, Case{"https" + server.url().substr(4), Kind::tls},
          Case{server.url("/truncated"), Kind::connection}, Case{server.url("/endless"), Kind::tooLarge},
          Case{server.url("/announced"), Kind::tooLarge}, Case{server.url("/too-large"), Kind::tooLarge}}) {
        expectError(get(each.base), each.kind, each.base);
        ASSERT_TRUE(get(server.url("/fine")).answer) << "after " << each.base;
    }
    auto largest = get(server.url("/largest"));
    ASSERT_TRUE(largest.answer);
    EXPECT_EQ(largest.answer->rcvdData->size(), NetworkPolicy::largestAnswer);
}

TEST_F(NetworkTest, ResetsAndGarbageAreConnectionErrors) {
    for (const char* bytes : {"", "no HTTP at all\r\n\r\n", "HTTP/1.1 200 OK\r\nContent-Le",
                              "HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\nhalf",
                              "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n",
                              "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 4\r\n\r\nhalf"}) {
        RawServer server(bytes, RawServer::End::reset);
        expectError(get(server.url()), Kind::connection, bytes);
    }
}

TEST_F(NetworkTest, SilenceEndsWithTheTimeOut) {
    LoopbackServer server;
    server.hold();
    Call call;
    call.base = server.url();
    call.theTimeOut = 0.05;
    expectError(perform(call), Kind::timeOut, "held");
}

TEST_F(NetworkTest, HeadersCannotBeSmuggledIn) {
    LoopbackServer server;
    Call call;
    call.base = server.url();
    call.token = "token\r\nX-Other: 1";
    expectError(perform(call), Kind::configuration, "line break in a token");
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(NetworkPolicyTest, RedirectsAreFollowedFiveTimes) {
    LoopbackServer server;
    for (int hop = 0; hop < 6; ++hop) {
        server.reply("/" + std::to_string(hop),
                     {.status = 302, .headers = {{"Location", "/" + std::to_string(hop + 1)}}});
    }
    server.reply("/6", {.body = "arrived"});

    auto five = get(server.url("/1"));
    ASSERT_TRUE(five.answer);
    EXPECT_EQ(five.answer->rcvdData, "arrived");
    EXPECT_EQ(sent().size(), 6U);
    expectError(get(server.url("/0")), Kind::refused, "six redirects");
}

TEST_F(NetworkPolicyTest, RedirectsLeadNowhereElse) {
    LoopbackServer secure(LoopbackServer::Security::selfSigned);
    LoopbackServer plain;
    plain.reply("/fine", {.body = "fine"});
    secure.reply("/down", {.status = 301, .headers = {{"Location", plain.url("/fine")}}});
    plain.reply("/file", {.status = 302, .headers = {{"Location", "file:///etc/passwd"}}});
    plain.reply("/ftp", {.status = 302, .headers = {{"Location", "ftp://127.0.0.1/x"}}});

    expectError(get(secure.url("/down"), secure.pin()), Kind::refused, "https to http");
    EXPECT_TRUE(plain.requests().empty());
    expectError(get(plain.url("/file")), Kind::refused, "file");
    expectError(get(plain.url("/ftp")), Kind::refused, "ftp");
}

TEST_F(NetworkPolicyTest, RedirectsTakeTheTokenNowhereElse) {
    LoopbackServer home, other;
    home.reply("/stay", {.status = 307, .headers = {{"Location", "/end"}}});
    home.reply("/leave", {.status = 307, .headers = {{"Location", other.url("/end")}}});
    home.reply("/see", {.status = 303, .headers = {{"Location", "/end"}}});
    Call call;
    call.base = home.url();
    call.token = "secret";
    call.theBody = "body";
    call.theMethod = HTTPMethod::post;

    call.thePath = "/stay";
    perform(call);
    EXPECT_EQ(home.requests().back().headers["authorization"], "Bearer secret");
    EXPECT_EQ(home.requests().back().body, "body");
    call.thePath = "/leave";
    perform(call);
    ASSERT_EQ(other.requests().size(), 1U);
    EXPECT_EQ(other.requests()[0].method, "POST");
    EXPECT_FALSE(other.requests()[0].headers.contains("authorization"));
    call.thePath = "/see";
    perform(call);
    EXPECT_EQ(home.requests().back().method, "GET");
    EXPECT_EQ(home.requests().back().body, "");
}

TEST_F(NetworkPolicyTest, CertificatesAndPins) {
    using Security = LoopbackServer::Security;
    const std::string wrongPin = "sha256//AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=";
    for (Security security : {Security::selfSigned, Security::expired}) {
        LoopbackServer server(security);
        server.reply("/", {.body = "secure"});
        expectError(get(server.url("/")), Kind::tls, "no pin");
        expectError(get(server.url("/"), wrongPin), Kind::pin, "wrong pin");
        expectError(get(server.url("/"), "/etc/hostname"), Kind::pin, "no pin by its form");
        EXPECT_TRUE(server.requests().empty());

        auto pinned = get(server.url("/"), server.pin());
        ASSERT_TRUE(pinned.answer) << pinned.error->localizedDescription();
        EXPECT_EQ(pinned.answer->rcvdData, "secure");
    }
}

TEST(BrokenPipeGuard, SwallowsTheSignal) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    {
        BrokenPipeGuard guard;
        EXPECT_EQ(write(ends[1], "x", 1), -1);
    }
    close(ends[1]);
}

namespace {

/// Counts answers as they come in.
class Answers {
public:
    HTTPTransport::Completion next() {
        return [this](const Result<HTTPResponse, VantixError>& result) {
            std::lock_guard lock(mutex_);
            (result ? succeeded_ : failed_)++;
            changed_.notify_all();
        };
    }
    void waitFor(int count) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return succeeded_ + failed_ >= count; });
    }
    int failed() {
        std::lock_guard lock(mutex_);
        return failed_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int succeeded_ = 0;
    int failed_ = 0;
};

class TransportTest : public CoreFixture<ThreadedDispatcher> {
protected:
    void send(const std::string& url, Answers& answers) {
        HTTPRequest request{
            .url = url, .largestBody = 1000, .timeOut = seconds(60), .connectTimeOut = NetworkPolicy::connectTimeOut};
        Installation::current()->httpClient()->send(std::move(request), answers.next());
    }
};

}  // namespace

TEST_F(TransportTest, AHostThatDoesNotAnswerHoldsUpNobodyElse) {
    LoopbackServer dead, alive;
    dead.hold();
    Answers fromDead, fromAlive;
    for (int at = 0; at < 40; ++at) send(dead.url("/"), fromDead);
    send(alive.url("/"), fromAlive);
    fromAlive.waitFor(1);
    EXPECT_LE(dead.requests().size(), NetworkPolicy::mostTransfersPerOrigin);
    dead.release();
    fromDead.waitFor(40);
    EXPECT_EQ(fromDead.failed(), 0);
}

TEST_F(TransportTest, RequestsFromManyThreadsAllEnd) {
    LoopbackServer server;
    Answers answers;
    std::vector<std::thread> threads;
    for (int at = 0; at < 4; ++at) {
        threads.emplace_back([&] {
            for (int each = 0; each < 25; ++each) send(server.url("/"), answers);
        });
    }
    for (std::thread& thread : threads) thread.join();
    answers.waitFor(100);
    EXPECT_EQ(answers.failed(), 0);
    EXPECT_EQ(server.requests().size(), 100U);
}

TEST_F(TransportTest, CancellingFailsWhatIsUnderWayAndWhatWaits) {
    LoopbackServer dead, alive;
    dead.hold();
    Answers answers, later;
    for (int at = 0; at < 10; ++at) send(dead.url("/"), answers);
    dead.waitForRequests(1);
    VantixNetworkManager::cancelAll();
    answers.waitFor(10);
    EXPECT_EQ(answers.failed(), 10);
    send(alive.url("/"), later);
    later.waitFor(1);
    EXPECT_EQ(later.failed(), 0);
}

TEST_F(NetworkTest, TransfersOneAtATimeKeepTheirOrder) {
    auto oneAtATime = host();
    oneAtATime.maximumConcurrentTransfers = 1;
    install(std::move(oneAtATime));
    LoopbackServer first, second;
    std::vector<int> order;
    for (int at = 0; at < 20; ++at) {
        HTTPRequest request{.url = (at % 2 == 0 ? first : second).url("/"),
                            .largestBody = 1000,
                            .timeOut = seconds(60),
                            .connectTimeOut = NetworkPolicy::connectTimeOut};
        Installation::current()->httpClient()->send(std::move(request),
                                                    [&order, at](const auto&) { order.push_back(at); });
    }
    dispatcher().runUntilIdle();
    EXPECT_EQ(order.size(), 20U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}
