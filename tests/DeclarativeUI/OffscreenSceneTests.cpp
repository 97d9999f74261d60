#include "DeclarativeUI/Elements/Text.h"
#include "DeclarativeUI/Offscreen/OffscreenScene.h"
#include "DeclarativeUI/State.h"
#include "Platform/Dispatchers/VirtualDispatcher.h"
#include "tests/Support/FixedTextMeasurer.h"

#include <gtest/gtest.h>

using namespace vantix;

namespace {

class OffscreenSceneTest : public testing::Test {
protected:
    std::shared_ptr<HostedView> content() {
        return std::make_shared<HostedView>([this] {
            ++evaluations;
            return Text(std::to_string(state.get()));
        });
    }
    std::unique_ptr<Window> show(std::shared_ptr<HostedView> content) {
        return scene->makeWindow({.frame = {}, .backgroundColor = {}, .level = {}, .rootContent = content});
    }

    State<int> state{0};
    int evaluations = 0;
    std::shared_ptr<VirtualDispatcher> dispatcher = std::make_shared<VirtualDispatcher>();
    std::shared_ptr<OffscreenScene> scene = std::make_shared<OffscreenScene>(
        SceneTraits{{100, 100}, {}, 1, 1}, dispatcher, std::make_shared<FixedTextMeasurer>());
};

}  // namespace

TEST_F(OffscreenSceneTest, EvaluatesOnTheNextTurnAndOnceForAllThatChangedMeanwhile) {
    auto view = content();
    auto window = show(view);
    EXPECT_EQ(evaluations, 0);
    dispatcher->runUntilIdle();
    EXPECT_EQ(evaluations, 1);

    state.set(1);
    scene->setTraits({{50, 50}, {}, 1, 1});
    EXPECT_EQ(evaluations, 1);
    dispatcher->runUntilIdle();
    EXPECT_EQ(evaluations, 2);
    EXPECT_EQ(view->elements().at(0).frame.center(), (Point{25, 25}));
}

TEST_F(OffscreenSceneTest, LeavesAWindowThatIsGoneAlone) {
    std::string told;
    scene->setOnShown([&](const HostedView&) { told += "shown "; });
    scene->setOnHidden([&](const HostedView&) { told += "hidden "; });
    auto view = content();
    auto early = show(view);
    early->removeFromSuperview();
    early->removeFromSuperview();
    dispatcher->runUntilIdle();
    EXPECT_EQ(evaluations, 0);
    EXPECT_EQ(told, "shown hidden ");

    auto late = show(view);
    dispatcher->runUntilIdle();
    state.set(1);
    late.reset();
    dispatcher->runUntilIdle();
    EXPECT_EQ(evaluations, 1);

    auto orphan = show(view);
    scene.reset();
    dispatcher->runUntilIdle();
    orphan->removeFromSuperview();
    EXPECT_EQ(evaluations, 1);
    EXPECT_EQ(view.use_count(), 1) << "nobody holds content that is gone";
}
