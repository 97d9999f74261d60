#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

/// What the touchable elements of the topmost window say, in painting order, one a line.
std::string spokenTexts(const OffscreenScene& scene) {
    std::string texts;
    for (const AccessibleElement& element : scene.windows().back().content->elements()) {
        if (element.isEnabled) texts += element.spokenText + "\n";
    }
    return texts;
}

}  // namespace

class SpokenTextTest : public ModuleTest {};

TEST_F(SpokenTextTest, TellsWhatEachTouchableElementIsAndHowItStands) {
    const List options{"Price", "Size"};
    const struct {
        Campaign campaign;
        /// What is tapped first.
        Role role;
        std::string label;
        std::string spoken;
    } cases[] = {
        {{.type = "POPUP", .image = "https:a.png"},
         {},
         {},
         "Message, button\nImage, button\nGo, button\nClose, button\n"},
        {{.type = "FULLSCREEN"}, {}, {}, "Message, button\nClose, button\nGo, button\n"},
        {{.type = "HEADER", .image = "https:a.png"},
         {},
         {},
         "Title, Hello, button\nImage, button\nGo, button\nClose, button\n"},
        {{.type = "FOOTER"}, {}, {}, "Title, Hello, button\nGo, button\nClose, button\n"},
        {{.type = "RATING"},
         Role::star,
         "2",
         "1 of 5 stars, selected\n2 of 5 stars, selected\n3 of 5 stars, not selected\n4 of 5 stars, not selected\n"
         "5 of 5 stars, not selected\nGo, button\nClose, button\n"},
        {{.type = "FEEDBACK", .feedbackOptions = options},
         Role::option,
         "Size",
         "Price, not selected\nSize, selected\nGo, button\nClose, button\n"},
        {{.type = "APPRATING"}, {}, {}, "Go, button\nClose, button\n"},
    };
    start();
    for (const auto& [campaign, role, label, spoken] : cases) {
        push(campaign);
        ASSERT_EQ(scene->windows().size(), 1U) << campaign.type;
        EXPECT_TRUE(label.empty() || tap(role, label));
        EXPECT_EQ(spokenTexts(*scene), spoken) << campaign.type;
        tap(Role::close);
        advance(10);
    }
}
