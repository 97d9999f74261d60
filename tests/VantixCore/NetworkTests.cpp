#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "VantixCore/ConfiguredRequest.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Network/BackEndClient.h"
#include "VantixCore/Network/BrokenPipeGuard.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

#include <atomic>
#include <latch>
#include <thread>
#include <unistd.h>

using namespace vantix;

namespace {

using Security = LoopbackServer::Security;

struct Call final : ConfiguredRequest {
    explicit Call(const std::string& base, const std::string& pin = {}, const std::string& token = {})
        : ConfiguredRequest(configurationFor(base, pin, token)) {}

    std::string thePath = "";
    HTTPMethod theMethod = HTTPMethod::get;
    std::optional<std::string> theBody = {};
    std::optional<HTTPHeaders> theHeader = {};
    double theTimeOut = 60;
    bool sendsToken = true;

    HTTPMethod method() const override { return theMethod; }
    std::string path() const override { return thePath; }
    std::optional<std::string> body() const override { return theBody; }
    std::optional<HTTPHeaders> header() const override { return theHeader; }
    double timeOut() const override { return theTimeOut; }
    bool shouldSendAccessToken() const override { return sendsToken; }
};

class NetworkTest : public CoreFixture<> {
protected:
    /// What came of it: the answer's data, with its error if it has one; or why there is no answer, without details.
    std::string outcome(const Call& call) {
        std::string outcome;
        dispatcher().utilityQueue().async([&] {
            try {
                auto answer = VantixNetworkManager().callAPI(call);
                outcome = answer->rcvdData().value_or("no data");
                if (answer->error()) outcome += " " + std::to_string(answer->error()->code());
            } catch (const VantixError& error) {
                outcome = error.localizedDescription().substr(0, error.localizedDescription().find(':'));
            }
        });
        dispatcher().runUntilIdle();
        return outcome;
    }
};

}  // namespace

TEST_F(NetworkTest, SendsTheCallAsDescribedAndTellsTheHost) {
    struct {
        HTTPMethod method;
        const char *word, *token;
        bool sendsToken;
        HTTPHeaders headers;
        const char *authorization, *contentType;
    } const cases[] = {
        {HTTPMethod::get, "GET", "secret", true, URLRequestHeaders::authEventReportHeaders(), "Bearer secret",
         "application/json"},
        {HTTPMethod::post, "POST", "one", true, {}, "Bearer one", ""},
        {HTTPMethod::put, "PUT", "two", false, {}, "", ""},
        {HTTPMethod::del, "DELETE", "", true, {}, "", ""},
    };
    std::optional<SentRequest> told;
    auto host = this->host();
    host.onRequest = [&](const SentRequest& request) { told = told.value_or(request); };
    install(std::move(host));
    LoopbackServer server;
    server.reply("/mapp/events", {.body = "answer"});
    for (const auto& each : cases) {
        Call call(server.url("/"), {}, each.token);
        call.thePath = "/mapp/events";
        call.theMethod = each.method;
        call.theHeader = each.headers;
        call.sendsToken = each.sendsToken;
        call.theBody = "{}";
        EXPECT_EQ(outcome(call), "answer");
        auto received = server.requests().back();
        EXPECT_EQ(received.method, each.word);
        EXPECT_EQ(received.headers["content-length"], "2");
        EXPECT_EQ(received.headers["authorization"], each.authorization);
        EXPECT_EQ(received.headers["content-type"], each.contentType);
    }
    EXPECT_EQ(told->method + " " + told->url + " " + told->body, "GET " + server.url("/mapp/events") + " {}");
    std::vector<std::pair<std::string, std::string>> headers{
        {"Accept", "application/json"}, {"Authorization", "Bearer …"}, {"Content-Type", "application/json"}};
    EXPECT_EQ(told->headers, headers);
}

TEST_F(NetworkTest, AnAnswerOfAnyStatusIsOneAndOtherwiseAnErrorTellsWhyThereIsNone) {
    LoopbackServer plain, selfSigned(Security::selfSigned), expired(Security::expired), silent;
    silent.hold();
    auto redirect = [](const std::string& to) {
        return LoopbackServer::Reply{.status = 302, .headers = {{"Location", to}}};
    };
    for (int hop = 0; hop < 6; ++hop) plain.reply("/" + std::to_string(hop), redirect("/" + std::to_string(hop + 1)));
    const std::string largest(NetworkPolicy::largestAnswer, 'x');
    plain.reply("/6", {.body = "arrived"});
    plain.reply("/empty", {.status = 200});
    plain.reply("/none", {.status = 404, .body = "why"});
    plain.reply("/broken", {.status = 503});
    plain.reply("/largest", {.body = largest});
    plain.reply("/too-large", {.body = largest + "x"});
    plain.reply("/announced", {.body = "x", .announcedLength = largest.size() + 1});
    plain.reply("/endless", {.body = std::string(65536, 'x'), .isEndless = true});
    plain.reply("/truncated", {.body = "half", .announcedLength = 1000});
    plain.reply("/file", redirect("file:///etc/passwd"));
    plain.reply("/ftp", redirect("ftp://127.0.0.1/x"));
    selfSigned.reply("/down", redirect(plain.url("/6")));
    for (auto* server : {&selfSigned, &expired}) server->reply("/6", {.body = "arrived"});
    const std::string wrongPin = "sha256//AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=";
    Call impatient(silent.url());
    impatient.theTimeOut = 0.05;

    VantixHost host = this->host();
    bool heardOfSmuggling = false;
    host.onRequest = [&](const SentRequest& request) { heardOfSmuggling |= request.url == plain.url("/smuggled"); };
    install(std::move(host));
    const std::pair<Call, std::string> cases[] = {
        {Call(plain.url("/empty")), "no data"},
        {Call(plain.url("/none")), "why 404"},
        {Call(plain.url("/broken")), "no data 503"},
        {Call(plain.url("/largest")), largest},
        {Call(plain.url("/too-large")), "The answer is too large"},
        {Call(plain.url("/announced")), "The answer is too large"},
        {Call(plain.url("/endless")), "The answer is too large"},
        {Call(plain.url("/truncated")), "The connection failed"},
        {Call("http://127.0.0.1:1"), "The connection failed"},
        {Call("http://host.invalid"), "The host was not found"},
        {impatient, "The request timed out"},
        {Call(""), "There is no valid base address"},
        {Call("api.example.com"), "There is no valid base address"},
        {Call("ftp://127.0.0.1/"), "There is no valid base address"},
        {Call(plain.url("/smuggled"), {}, "token\r\nX-Other: 1"), "A header holds a control character"},
        {Call(plain.url("/1")), "arrived"},
        {Call(plain.url("/0")), "More than 5 redirects"},
        {Call(plain.url("/file")), "A redirect leads to an address that cannot be fetched"},
        {Call(plain.url("/ftp")), "A redirect leads to an address that cannot be fetched"},
        {Call(selfSigned.url("/down"), selfSigned.pin()), "A redirect leads from https to http"},
        {Call("https" + plain.url().substr(4)), "No secure connection to the server"},
        {Call(selfSigned.url("/6"), selfSigned.pin()), "arrived"},
        {Call(selfSigned.url("/6")), "No secure connection to the server"},
        {Call(selfSigned.url("/6"), wrongPin), "The server's public key is not the pinned one"},
        {Call(selfSigned.url("/6"), "/etc/hostname"), "The server's public key is not the pinned one"},
        {Call(expired.url("/6"), expired.pin()), "arrived"},
        {Call(expired.url("/6")), "No secure connection to the server"},
    };
    for (const auto& [call, expected] : cases) {
        EXPECT_TRUE(outcome(call) == expected) << call.baseURL() << ": " << outcome(call).substr(0, 100);
        EXPECT_EQ(outcome(Call(plain.url("/6"))), "arrived") << "after " << call.baseURL();
    }
    EXPECT_EQ(selfSigned.requests().size(), 2U) << "whoever cannot be trusted hears nothing";
    for (const auto& request : plain.requests()) EXPECT_NE(request.path, "/smuggled");
    EXPECT_FALSE(heardOfSmuggling) << "the host is told of what is sent alone";
}

TEST_F(NetworkTest, RedirectsTakeTheTokenNowhereElse) {
    LoopbackServer home, other;
    home.reply("/stay", {.status = 307, .headers = {{"Location", "/end"}}});
    home.reply("/leave", {.status = 307, .headers = {{"Location", other.url("/end")}}});
    home.reply("/see", {.status = 303, .headers = {{"Location", "/end"}}});
    for (const auto& [path, server, expected] :
         {std::tuple("/stay", &home, "POST /end body Bearer secret"), std::tuple("/leave", &other, "POST /end body "),
          std::tuple("/see", &home, "GET /end  Bearer secret")}) {
        Call call(home.url(path), {}, "secret");
        call.theBody = "body";
        call.theMethod = HTTPMethod::post;
        outcome(call);
        auto last = server->requests().back();
        EXPECT_EQ(last.method + " " + last.path + " " + last.body + " " + last.headers["authorization"], expected);
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

/// So many answers that are to come.
struct Answers {
    explicit Answers(int count) : toCome(count) {}

    HTTPCompletion next() {
        return [this](const HTTPOutcome& outcome) {
            (outcome ? succeeded : failed)++;
            toCome.count_down();
        };
    }

    std::latch toCome;
    std::atomic<int> succeeded = 0;
    std::atomic<int> failed = 0;
};

void fail(const HTTPOutcome&) { ADD_FAILURE() << "was dropped"; }

template <typename DispatcherKind>
class TransferTest : public CoreFixture<DispatcherKind> {
protected:
    TransferHandle send(const std::string& url, HTTPCompletion completion) {
        return Installation::current()->httpClient()->send(
            {.url = *URL::parse(url), .largestBody = 1000, .timeOut = seconds(600)}, std::move(completion));
    }

    TransferHandle sendForImage(const std::string& url, HTTPCompletion completion) {
        return Installation::current()->httpClient()->send(
            {.url = *URL::parse(url), .largestBody = 1000, .timeOut = seconds(600), .purpose = TransferPurpose::image},
            std::move(completion));
    }

    void useOneTransferAtATime() {
        auto host = this->host();
        host.maximumConcurrentTransfers = 1;
        this->install(std::move(host));
    }

    LoopbackServer dead_, alive_;
};

using OrderedTransferTest = TransferTest<VirtualDispatcher>;
using ThreadedTransferTest = TransferTest<ThreadedDispatcher>;

}  // namespace

TEST_F(OrderedTransferTest, OneAtATimeTheyKeepTheirOrder) {
    useOneTransferAtATime();
    std::vector<int> order;
    for (int at = 0; at < 20; ++at) {
        send((at % 2 == 0 ? alive_ : dead_).url(), [&order, at](const auto&) { order.push_back(at); }).detach();
    }
    dispatcher().runUntilIdle();
    EXPECT_EQ(order.size(), 20U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST_F(OrderedTransferTest, OneThatIsDroppedBeforeItStartsIsNeverSent) {
    Answers answers(1);
    {
        auto dropped = send(dead_.url(), fail);
        auto refused = Installation::current()->backEnd()->send(Call("no address"), [](const auto&) { FAIL(); });
    }
    auto moved = send(alive_.url(), answers.next());
    auto replaced = send(dead_.url(), fail);
    replaced = std::move(moved);
    dispatcher().runUntilIdle();
    EXPECT_EQ(answers.succeeded, 1);
    EXPECT_TRUE(dead_.requests().empty());
}

TEST_F(OrderedTransferTest, OneThatIsDroppedOnItsWayLeadsNowhereElse) {
    TransferHandle handle;
    auto host = this->host();
    host.onRequest = [&](const SentRequest& request) {
        if (request.url == alive_.url("/end")) handle = {};
    };
    install(std::move(host));
    alive_.reply("/start", {.status = 302, .headers = {{"Location", "/end"}}});
    handle = send(alive_.url("/start"), fail);
    dispatcher().runUntilIdle();
    EXPECT_EQ(alive_.requests().size(), 1U);
}

TEST_F(OrderedTransferTest, ACompletionMayDropItsOwnHandleAndThatOfTheNext) {
    Answers answers(1);
    TransferHandle own, next;
    own = send(alive_.url(), [&, count = answers.next()](const HTTPOutcome& outcome) {
        own = {}, next = {};
        count(outcome);
    });
    next = send(alive_.url(), fail);
    VantixNetworkManager::cancelAll();
    dispatcher().runUntilIdle();
    EXPECT_EQ(answers.failed, 1);
}

TEST_F(ThreadedTransferTest, OneThatIsDroppedUnderWayGivesItsPlaceToTheNext) {
    useOneTransferAtATime();
    dead_.hold();
    alive_.reply("/", {.status = 302, .headers = {{"Location", dead_.url("/after-a-redirect")}}});
    auto direct = send(dead_.url(), fail);
    ASSERT_TRUE(dead_.waitForRequests(1));
    auto redirected = send(alive_.url("/"), fail);
    direct = {};
    ASSERT_TRUE(dead_.waitForRequests(2));
    Answers answers(1);
    auto next = send(alive_.url("/next"), answers.next());
    redirected = {};
    answers.toCome.wait();
}

TEST_F(ThreadedTransferTest, AHostThatDoesNotAnswerHoldsUpNobodyElse) {
    dead_.hold();
    Answers fromDead(40), fromAlive(1);
    for (int at = 0; at < 40; ++at) send(dead_.url(), fromDead.next()).detach();
    send(alive_.url(), fromAlive.next()).detach();
    fromAlive.toCome.wait();
    EXPECT_LE(dead_.requests().size(), NetworkPolicy::mostTransfersPerOrigin);
    dead_.release();
    fromDead.toCome.wait();
    EXPECT_EQ(fromDead.failed, 0);
}

TEST_F(ThreadedTransferTest, ImagesLeaveRoomForCalls) {
    LoopbackServer others[5];
    Answers images(36), calls(1);
    for (LoopbackServer* server : {&dead_, &others[0], &others[1], &others[2], &others[3], &others[4]}) {
        server->hold();
        for (int at = 0; at < 6; ++at) sendForImage(server->url(), images.next()).detach();
    }
    ASSERT_TRUE(dead_.waitForRequests(6));
    send(alive_.url(), calls.next()).detach();
    calls.toCome.wait();
    Answers ofTheSameHost(1);
    send(dead_.url(), ofTheSameHost.next()).detach();
    EXPECT_TRUE(dead_.waitForRequests(7));
    dead_.release();
    for (LoopbackServer& server : others) server.release();
    ofTheSameHost.toCome.wait();
    images.toCome.wait();
}

TEST_F(ThreadedTransferTest, RequestsFromManyThreadsAllEndUnlessTheyAreDropped) {
    Answers answers(100);
    std::vector<std::thread> threads;
    for (int at = 0; at < 4; ++at) {
        threads.emplace_back([&] {
            for (int each = 0; each < 25; ++each) {
                auto dropped = send(dead_.url(), [](const auto&) {});
                send(alive_.url(), answers.next()).detach();
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    answers.toCome.wait();
    EXPECT_EQ(answers.failed, 0);
    EXPECT_EQ(alive_.requests().size(), 100U);
}

TEST_F(ThreadedTransferTest, MeetABadNetworkWhileItIsBad) {
    Answers under(1), off(1), slow(1), later(1);
    dead_.hold();
    send(dead_.url(), under.next()).detach();
    ASSERT_TRUE(dead_.waitForRequests(1));
    VantixNetworkManager::setFault(NetworkFault::off);
    send(alive_.url(), off.next()).detach();
    off.toCome.wait();
    under.toCome.wait();
    EXPECT_EQ(under.failed + off.failed, 2);
    VantixNetworkManager::setFault(NetworkFault::slow);
    send(alive_.url("/slow"), slow.next()).detach();
    VantixNetworkManager::setFault(NetworkFault::none);
    send(alive_.url("/later"), later.next()).detach();
    slow.toCome.wait();
    auto requests = alive_.requests();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests.front().path, "/later");
}

TEST_F(ThreadedTransferTest, CancellingFailsWhatIsUnderWayAndWhatWaits) {
    dead_.hold();
    Answers cancelled(10), later(1);
    for (int at = 0; at < 10; ++at) send(dead_.url(), cancelled.next()).detach();
    ASSERT_TRUE(dead_.waitForRequests(1));
    VantixNetworkManager::cancelAll();
    cancelled.toCome.wait();
    EXPECT_EQ(cancelled.failed, 10);
    send(alive_.url(), later.next()).detach();
    later.toCome.wait();
    EXPECT_EQ(later.failed, 0);
}
