#include "Platform/Values/JSON.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "VantixInAppMessage/API/Status.h"
#include "VantixInAppMessage/Manager/InAppMessageTriggerManager.h"
#include "VantixInAppMessage/Manager/InAppRepoHelper.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

#include <set>

using namespace vantix;

namespace {

using Texts = std::vector<std::string>;
using Security = LoopbackServer::Security;

constexpr const char* path = "/mapp/events";

std::string message(const std::string& scope) {
    return toJSON(Dictionary{{"cuid", "customer"},
                             {"scope", scope},
                             {"trigger", R"({"eventName":"APP_LAUNCH"})"},
                             {"body", R"({"ctas":[{"action":"a","actionText":"Go","type":"CLOSE"}]})"}});
}

std::string answer(const std::string& status, const Texts& scopes) {
    std::string triggers;
    for (const auto& scope : scopes) {
        if (!triggers.empty()) triggers += ',';
        triggers += message(scope);
    }
    return R"({"status":)" + status + R"(,"triggers":[)" + triggers + "]}";
}

class TriggerSyncTest : public CoreFixture<> {
protected:
    TriggerSyncTest() {
        VantixHost host = this->host();
        host.logSink = [this](const LogLine& line) {
            if (line.level != LogLevel::error) return;
            errors_.push_back(line.message);
            sources_.insert(line.file + " " + line.function);
        };
        install(std::move(host));
        Vantix::getSharedUserDefaults()->setCustomerId("customer");
        configuration_->account = "account";
        configuration_->token = "secret";
    }

    void sync(const std::string& baseURL, const std::string& pin = {}) {
        configuration_->base = baseURL;
        configuration_->keyHash = pin;
        auto sentBefore = sent().size();
        VantixInAppTriggerManager::create(configuration_)->syncTriggers({.cuID = "customer"});
        EXPECT_EQ(sent().size(), sentBefore) << "the caller does not wait";
        dispatcher().runUntilIdle();
    }

    /// The scopes that are stored; then they are removed.
    Texts takeStored() {
        Texts scopes;
        InAppRepoHelper::shared()->fetchAllInAppMessages([&](const std::vector<InAppMessage>& messages) {
            for (const auto& stored : messages) scopes.push_back(*stored[InAppMessage::Property::scope]);
        });
        InAppRepoHelper::shared()->removeAllMessages({});
        dispatcher().runUntilIdle();
        return scopes;
    }

    Texts takeErrors() { return std::exchange(errors_, {}); }
    std::set<std::string> takeSources() { return std::exchange(sources_, {}); }

    std::shared_ptr<VantixConfiguration> configuration_ = std::make_shared<VantixConfiguration>();

private:
    Texts errors_;
    std::set<std::string> sources_;
};

}  // namespace

TEST_F(TriggerSyncTest, AsksOnceWithAnEmptyBodyAndKeepsEveryMessage) {
    LoopbackServer server;
    server.reply(path, {.body = answer(R"("200")", {"a", "b", "a"})});
    configuration_->base = server.url();
    auto manager = VantixInAppTriggerManager::create(configuration_);
    manager->syncTriggers({.cuID = "customer", .requestID = "r", .systemData = Dictionary{{"os", "x"}}});
    manager->syncTriggers({.cuID = ""});
    manager = nullptr;
    dispatcher().runUntilIdle();

    EXPECT_EQ(takeStored(), Texts({"a", "b", "a", "a", "b", "a"}));
    ASSERT_EQ(server.requests().size(), 2U);
    for (const auto& request : server.requests()) {
        EXPECT_EQ(request.method, "GET");
        EXPECT_EQ(request.path, path);
        EXPECT_EQ(request.headers.at("content-length"), "2");
        EXPECT_EQ(request.headers.at("content-type"), "application/json");
        EXPECT_EQ(request.headers.at("accept"), "application/json");
        EXPECT_EQ(request.headers.at("authorization"), "Bearer secret");
    }
    EXPECT_EQ(sent()[0].body, "{}");
    EXPECT_NE(InAppTriggersRequestPayload{}.requestID, InAppTriggersRequestPayload{}.requestID);
    EXPECT_EQ(InAppTriggersRequest(configuration_).timeOut(), 60);

    InAppTriggersRequest request(configuration_);
    EXPECT_FALSE(request.body() || request.header());
    dispatcher().utilityQueue().async([&] { request.syncTriggers({}, "account"); });
    dispatcher().runUntilIdle();
    EXPECT_EQ(request.body(), "{}") << "what is sent stays on the request";
    EXPECT_EQ(request.header(), URLRequestHeaders::authEventReportHeaders());
}

TEST_F(TriggerSyncTest, TheTextOfTheStatusDecides) {
    const std::string decodingFailed = "Event API Response decoding failed: ";
    struct Case {
        std::string body;
        Texts stored;
        std::string error = {};
        int httpStatus = 200;
    };
    const std::vector<Case> cases = {
        {answer(R"("200")", {"a", "b"}), {"a", "b"}},
        {answer(R"("201")", {"a"}), {"a"}},
        {answer(R"("+200")", {"a"}), {"a"}},
        {answer(R"("200")", {"a"}), {"a"}, {}, 500},
        {answer(R"("200")", {}), {}},
        {answer("200", {"a"}), {}},
        {answer("null", {"a"}), {}},
        {answer(R"("202")", {"a"}), {}},
        {answer(R"("404")", {"a"}), {}},
        {answer(R"("200 ")", {"a"}), {}},
        {answer(R"("OK")", {"a"}), {}},
        {R"({"status":"200"})", {}},
        {R"({"status":"200","triggers":)" + message("a") + "}", {}},
        {R"({"status":"200","triggers":[)" + message("a") + ",5]}", {}},
        {R"({"triggers":[)" + message("a") + "]}", {}},
        {"{}", {}},
        {"[" + answer(R"("200")", {"a"}) + "]", {}},
        {"5", {}},
        {"", {}, "Recieved nil data"},
        {"{", {}, decodingFailed},
        {answer(R"("200")", {"a"}) + "}", {}, decodingFailed},
        {"<html>", {}, decodingFailed},
    };
    LoopbackServer server;
    for (const Case& each : cases) {
        server.reply(path, {.status = each.httpStatus, .body = each.body});
        sync(server.url());
        EXPECT_EQ(takeStored(), each.stored) << each.body;
        auto errors = takeErrors();
        ASSERT_EQ(errors.size(), each.error.empty() ? 0U : 1U) << each.body;
        for (const auto& error : errors) EXPECT_EQ(error.find(each.error), 0U) << error;
    }
    std::set<std::string> source{"Manager/InAppMessageTriggerManager processReceived(response:requestPayload:)"};
    EXPECT_EQ(takeSources(), source);
    EXPECT_EQ(server.requests().size(), cases.size()) << "no sync is repeated";
}

TEST_F(TriggerSyncTest, BadNetworksAreALogLineAndLeaveEverythingWorking) {
    const std::string wrongPin = "sha256//AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA=";
    const std::string good = answer(R"("200")", {"a"});
    LoopbackServer plain, selfSigned(Security::selfSigned), expired(Security::expired);
    for (LoopbackServer* server : {&plain, &selfSigned, &expired}) server->reply(path, {.body = good});
    plain.reply(std::string("/cut").append(path), {.body = good, .announcedLength = good.size() + 1});
    plain.reply(std::string("/endless").append(path), {.body = std::string(65536, ' '), .isEndless = true});
    plain.reply(std::string("/large").append(path), {.body = good + std::string(NetworkPolicy::largestAnswer, ' ')});
    plain.reply(std::string("/ftp").append(path), {.status = 302, .headers = {{"Location", "ftp://127.0.0.1/secret"}}});
    plain.reply(std::string("/loop").append(path),
                {.status = 302, .headers = {{"Location", std::string("/loop").append(path)}}});
    selfSigned.reply(std::string("/down").append(path), {.status = 307, .headers = {{"Location", plain.url(path)}}});

    struct Case {
        std::string baseURL;
        std::string pin = {};
    };
    for (const Case& each :
         {Case{selfSigned.url()}, Case{selfSigned.url(), wrongPin}, Case{expired.url()}, Case{expired.url(), wrongPin},
          Case{selfSigned.url("/down"), selfSigned.pin()}, Case{plain.url("/cut")}, Case{plain.url("/endless")},
          Case{plain.url("/large")}, Case{plain.url("/ftp")}, Case{plain.url("/loop")}, Case{"http://127.0.0.1:1"},
          Case{"ftp://127.0.0.1"}, Case{""}}) {
        sync(each.baseURL, each.pin);
        EXPECT_EQ(takeStored(), Texts{}) << each.baseURL;
        auto errors = takeErrors();
        ASSERT_EQ(errors.size(), 1U) << each.baseURL;
        EXPECT_EQ(errors[0].find("Error: "), 0U) << errors[0];
        for (const char* secret : {"secret", "customer"}) EXPECT_EQ(errors[0].find(secret), std::string::npos);

        sync(plain.url());
        EXPECT_EQ(takeStored(), Texts{"a"}) << "after " << each.baseURL;
    }
    EXPECT_EQ(takeSources(), std::set<std::string>{"Manager/InAppMessageTriggerManager syncTriggers(withPayload:)"});
    sync(expired.url(), expired.pin());
    EXPECT_EQ(takeStored(), Texts{"a"}) << "the pin decides instead of the certificate";
}

TEST_F(TriggerSyncTest, AStatusIsDecodedUpToItsFirstFault) {
    struct Case {
        const char* text;
        Status expected;
        bool isFaulty;
    };
    for (const Case& each : {Case{R"({"success":true,"code":7,"message":"m"})", {true, 7, "m"}, false},
                             Case{R"({"success":1,"code":7,"message":"m"})", {}, true},
                             Case{R"({"success":true,"code":"7","message":"m"})", {true, 0, ""}, true},
                             Case{R"({"success":true,"code":7})", {true, 7, ""}, true}}) {
        EXPECT_EQ(Status::generate(*parseJSON(each.text).value().dictionary()), each.expected) << each.text;
        auto errors = takeErrors();
        ASSERT_EQ(errors.size(), each.isFaulty ? 1U : 0U) << each.text;
        for (const auto& error : errors)
            EXPECT_EQ(error.find("Error encountered while decoding Status in Response: "), 0U);
    }
}
