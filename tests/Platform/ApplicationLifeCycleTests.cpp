#include "Platform/Ports/ApplicationLifeCycle.h"
#include "Platform/Ports/NotificationCenter.h"

#include <gtest/gtest.h>

using namespace vantix;

TEST(ApplicationLifeCycleTest, TellsEachChangeOnceAndInOrder) {
    using namespace ApplicationNotification;
    auto center = std::make_shared<NotificationCenter>();
    ApplicationLifeCycle lifeCycle(center, ApplicationState::background);
    std::string heard;
    std::vector<std::unique_ptr<NotificationCenter::Observation>> observations;
    for (const char* name : {didBecomeActive, willResignActive, didEnterBackground, willTerminate}) {
        observations.push_back(center->addObserver(name, [&](const Notification& note) { heard += note.name + " "; }));
    }
    auto told = [&](void (ApplicationLifeCycle::*step)()) {
        heard.clear();
        (lifeCycle.*step)();
        return heard;
    };
    EXPECT_EQ(told(&ApplicationLifeCycle::enterBackground), "");
    EXPECT_EQ(told(&ApplicationLifeCycle::resignActive), "");
    EXPECT_EQ(told(&ApplicationLifeCycle::becomeActive), "didBecomeActive ");
    EXPECT_EQ(told(&ApplicationLifeCycle::becomeActive), "");
    EXPECT_EQ(told(&ApplicationLifeCycle::enterBackground), "willResignActive didEnterBackground ");
    EXPECT_EQ(lifeCycle.state(), ApplicationState::background);
    EXPECT_EQ(told(&ApplicationLifeCycle::terminate), "willTerminate ");
    EXPECT_EQ(told(&ApplicationLifeCycle::becomeActive), "");
}
