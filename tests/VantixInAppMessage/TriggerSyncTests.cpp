#include "VantixInAppMessage/API/Status.h"
#include "VantixInAppMessage/Manager/VantixInAppTriggerManager.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using TriggerSyncTest = ModuleTest;

TEST_F(TriggerSyncTest, TheStatusWithinTheAnswerCountsNotTheOneOfItsCarrier) {
    LoopbackServer server;
    server.reply("/mapp/events",
                 {.status = 500, .body = R"({"status":"200","triggers":[)" + toJSON(Campaign{}.push()) + "]}"});
    auto account = std::make_shared<VantixConfiguration>();
    account->base = server.url();
    VantixInAppTriggerManager::create(account)->syncTriggers({.cuID = "customer"});
    EXPECT_TRUE(server.requests().empty()) << "the caller does not wait";
    settle();
    EXPECT_EQ(stored(), Texts{"a"});
    EXPECT_TRUE(recorder.takeErrors().empty());
}

TEST_F(TriggerSyncTest, WhatIsSentStaysOnTheRequest) {
    InAppTriggersRequest request(std::make_shared<VantixConfiguration>());
    EXPECT_FALSE(request.body() || request.header());
    request.syncTriggers({}, "account", [](const auto& outcome) { EXPECT_FALSE(outcome); }).detach();
    settle();
    EXPECT_EQ(request.body(), "{}");
    EXPECT_EQ(request.header(), URLRequestHeaders::authEventReportHeaders());
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
