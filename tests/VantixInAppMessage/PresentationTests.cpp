#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

class Guest final : public InAppMessagePresentationDelegate {
public:
    bool shouldPresent(const PresentedMessage& message) override {
        heard += "may " + message.scope + "? ";
        return isReady;
    }
    void didPresent(const PresentedMessage& message) override { heard += message.scope + " there "; }
    void didDismiss(const PresentedMessage& message) override { heard += message.scope + " gone "; }

    std::string take() { return std::exchange(heard, {}); }

    bool isReady = true;
    std::string heard;
};

}  // namespace

struct PresentationTest : ModuleTest {
    PresentationTest() {
        start();
        core->setPresentationDelegate(guest);
    }

    void activateScene() {
        Platform::current()->notificationCenter->post({ApplicationNotification::sceneDidActivate, {}});
        settle();
    }

    std::shared_ptr<Guest> guest = std::make_shared<Guest>();
};

TEST_F(PresentationTest, MessagesThatArePutOffKeepTheirOrder) {
    guest->isReady = false;
    for (const char* event : {"purchase", "search", "purchase"}) {
        push({.scope = event, .event = event});
        post(event);
    }
    push({.scope = "later"});
    EXPECT_EQ(guest->take(), "may purchase? may search? may purchase? may later? ");
    advance(30);
    EXPECT_EQ(guest->take(), "") << "nobody asks without an occasion";
    guest->isReady = true;
    NotificationCore::setAllowed(false);
    activateScene();
    EXPECT_EQ(guest->take(), "");
    NotificationCore::setAllowed(true);
    activateScene();
    EXPECT_EQ(guest->take(), "may purchase? purchase there ");
    tap(Role::close);
    advance(10);
    EXPECT_EQ(guest->take(), "purchase gone may search? search there ");
    tap(Role::close);
    advance(10);
    EXPECT_EQ(guest->take(), "search gone may later? later there ");
    EXPECT_TRUE(recorder.takeErrors().empty());
}

TEST_F(PresentationTest, AWindowThatEndsIsADismissalAndTheModuleGoesOn) {
    push({.scope = "first"});
    push({.scope = "second"});
    recorder.takeTold();
    auto ended = scene->windows().back().description.onEnded;
    ended();
    settle();
    EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageDismissed first"});
    advance(10);
    EXPECT_EQ(guest->take(), "may first? first there first gone may second? second there ");
    displayManager()->dismissPresentedInAppMessage();
    displayManager()->dismissPresentedInAppMessage();
    settle();
    EXPECT_EQ(guest->take(), "second gone ");
    EXPECT_TRUE(shown().empty());
}
