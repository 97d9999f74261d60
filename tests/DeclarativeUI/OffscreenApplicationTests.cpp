#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "DeclarativeUI/State.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "tests/Support/FixedTextMeasurer.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

class OffscreenSceneTest : public testing::Test {
protected:
    std::shared_ptr<HostedView> content(const char* text) {
        return std::make_shared<HostedView>([this, text] {
            ++evaluations_;
            return Text(text + std::to_string(state_.get()));
        });
    }
    std::unique_ptr<Window> show(std::shared_ptr<HostedView> content, WindowLevel level = WindowLevel::normal) {
        WindowDescription description;
        description.level = level;
        description.rootContent = std::move(content);
        return scene_->makeWindow(std::move(description));
    }

    State<int> state_{0};
    int evaluations_ = 0;
    std::shared_ptr<VirtualDispatcher> dispatcher_ = std::make_shared<VirtualDispatcher>();
    std::shared_ptr<OffscreenScene> scene_ = std::make_shared<OffscreenScene>(
        SceneTraits{{100, 100}, {}, 1, 1}, dispatcher_, std::make_shared<FixedTextMeasurer>());
};

}  // namespace

TEST_F(OffscreenSceneTest, EvaluatesOnTheNextTurnAndOnceForAllThatChangedMeanwhile) {
    auto view = content("a");
    auto window = show(view);
    EXPECT_EQ(evaluations_, 0);
    dispatcher_->runUntilIdle();
    EXPECT_EQ(evaluations_, 1);

    state_.set(1);
    scene_->setTraits({{50, 50}, {}, 1, 1});
    EXPECT_EQ(evaluations_, 1);
    dispatcher_->runUntilIdle();
    EXPECT_EQ(evaluations_, 2);
    EXPECT_EQ(view->elements().at(0).label, "a1");
    EXPECT_EQ(view->elements().at(0).frame.center(), (Point{25, 25}));
}

TEST_F(OffscreenSceneTest, NeverEvaluatesAWindowThatIsGone) {
    auto early = show(content("early"));
    early->removeFromSuperview();
    dispatcher_->runUntilIdle();
    EXPECT_EQ(evaluations_, 0);

    auto view = content("late");
    auto late = show(view);
    dispatcher_->runUntilIdle();
    state_.set(1);
    late.reset();
    dispatcher_->runUntilIdle();
    EXPECT_EQ(evaluations_, 1);

    auto orphan = show(view);
    scene_.reset();
    dispatcher_->runUntilIdle();
    orphan->removeFromSuperview();
    EXPECT_EQ(evaluations_, 1);
}

TEST_F(OffscreenSceneTest, TellsOfEachWindowOnceAndHoldsNoContentAfterwards) {
    std::string told;
    scene_->setOnShown([&](const HostedView&) { told += "shown "; });
    scene_->setOnHidden([&](const HostedView&) { told += "hidden "; });
    auto view = content("a");
    std::weak_ptr<HostedView> weak = view;
    auto window = show(std::move(view));
    window->removeFromSuperview();
    window->removeFromSuperview();
    window.reset();
    EXPECT_EQ(told, "shown hidden ");
    dispatcher_->runUntilIdle();
    EXPECT_TRUE(weak.expired());
}

TEST_F(OffscreenSceneTest, ListsWindowsFromTheLowestToTheTopmost) {
    auto alert = show(content("alert"), WindowLevel::alert);
    auto first = show(content("first"));
    auto second = show(content("second"));
    dispatcher_->runUntilIdle();
    std::string order;
    for (const auto& window : scene_->windows()) order += window.content->elements().at(0).label + " ";
    EXPECT_EQ(order, "first0 second0 alert0 ");
}
