#include "VantixInAppMessage/Resources/ImageResource.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using WindowTest = ModuleTest;

TEST_F(WindowTest, CoversTheSceneAboveTheApplication) {
    start();
    push({.style = {{"phoneBackgroundColor", "#80FF0000"}}});
    WindowDescription window = scene->windows().back().description;
    EXPECT_EQ(window.frame, (Rect{{0, 0}, {390, 844}}));
    EXPECT_EQ(window.level, WindowLevel::alert);
    EXPECT_EQ(window.backgroundColor, (Color{1, 0, 0, 128 / 255.0}));
    EXPECT_EQ(window.alpha, 1);
    EXPECT_FALSE(window.isHidden);
    tap(Role::close);
    advance(10);
    push({});
    EXPECT_EQ(scene->windows().back().description.backgroundColor, std::nullopt) << "the application shows through";
}

TEST_F(WindowTest, APictureThatCannotBeHadLeavesItsPlaceholder) {
    start();
    auto drawn = [&](const char* type, const Image& image) {
        push({.type = type, .image = "http://127.0.0.1:1/p"});
        bool isDrawn = false;
        for (const DisplayItem& item : scene->windows().back().content->displayList()) {
            const auto* picture = std::get_if<DrawImage>(&item);
            if (picture && picture->image.vector && image.vector) isDrawn |= *picture->image.vector == *image.vector;
        }
        tap(Role::close);
        advance(10);
        return isDrawn;
    };
    EXPECT_TRUE(drawn("POPUP", ImageResource::defaultImage().image()));
    EXPECT_TRUE(drawn("FULLSCREEN", icon));
    Image placeholder = vectorImage("<svg width='2' height='1'/>");
    configuration->setPlaceholderImage(placeholder);
    EXPECT_TRUE(drawn("POPUP", placeholder));
}
