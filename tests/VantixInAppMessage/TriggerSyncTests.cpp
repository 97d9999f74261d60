#include "VantixInAppMessage/API/Status.h"
#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

class TriggerSyncTest : public ModuleTest {
protected:
    /// What one sync leaves in the store, which is empty again afterwards.
    Texts sync(const std::string& baseURL) {
        account_->base = baseURL;
        account_->token = "secret";
        recorder.takeErrors();
        VantixInAppTriggerManager::create(account_)->syncTriggers({.cuID = "customer"});
        settle();
        Texts scopes = stored();
        InAppRepoHelper::shared()->removeAllMessages({});
        settle();
        return scopes;
    }

private:
    std::shared_ptr<VantixConfiguration> account_ = std::make_shared<VantixConfiguration>();
};

}  // namespace

TEST_F(TriggerSyncTest, TheTextOfTheStatusDecides) {
    const std::string triggers = R"("triggers":[)" + toJSON(Campaign{}.push()) + "]}";
    const std::string decodingFailed = "Event API Response decoding failed: ";
    struct Case {
        std::string body;
        Texts stored = {};
        std::string error = {};
        int httpStatus = 200;
    };
    LoopbackServer server;
    for (const Case& each : {Case{R"({"status":"201",)" + triggers, {"a"}},
                             {R"({"status":"+200",)" + triggers, {"a"}, {}, 500},
                             {R"({"status":200,)" + triggers},
                             {R"({"status":"200 ",)" + triggers},
                             {R"({"status":"202",)" + triggers},
                             {"{" + triggers},
                             {R"({"status":"200","triggers":[5]})"},
                             {"[]"},
                             {"", {}, "Recieved nil data"},
                             {"{", {}, decodingFailed},
                             {"<html>", {}, decodingFailed}}) {
        server.reply("/mapp/events", {.status = each.httpStatus, .body = each.body});
        EXPECT_EQ(sync(server.url()), each.stored) << each.body;
        Texts errors = recorder.takeErrors();
        ASSERT_EQ(errors.size(), each.error.empty() ? 0U : 1U) << each.body;
        for (const auto& error : errors) {
            EXPECT_TRUE(error.starts_with(
                "Manager/InAppMessageTriggerManager processReceived(response:requestPayload:): " + each.error));
        }
    }
}

TEST_F(TriggerSyncTest, ABadNetworkIsALogLineWithoutSecrets) {
    for (const char* baseURL : {"http://127.0.0.1:1", "ftp://127.0.0.1", ""}) {
        EXPECT_EQ(sync(baseURL), Texts{});
        Texts errors = recorder.takeErrors();
        ASSERT_EQ(errors.size(), 1U) << baseURL;
        EXPECT_TRUE(errors[0].starts_with("Manager/InAppMessageTriggerManager syncTriggers(withPayload:): Error: "));
        EXPECT_EQ(errors[0].find("secret"), std::string::npos);
    }
}

TEST_F(TriggerSyncTest, AStatusIsDecodedUpToItsFirstFault) {
    struct Case {
        const char* text;
        Status expected;
        bool isFaulty;
    };
    for (const Case& each : {Case{R"({"success":true,"code":7,"message":"m"})", {true, 7, "m"}, false},
                             Case{R"({"success":1,"code":7,"message":"m"})", {}, true},
                             Case{R"({"success":true,"code":7})", {true, 7, ""}, true}}) {
        EXPECT_EQ(Status::generate(*parseJSON(each.text).value().dictionary()), each.expected) << each.text;
        EXPECT_EQ(recorder.takeErrors().size(), each.isFaulty ? 1U : 0U) << each.text;
    }
}
