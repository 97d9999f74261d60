#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using SpokenTextTest = ModuleTest;

TEST_F(SpokenTextTest, TellsWhatEachTouchableElementIsAndHowItStands) {
    struct Case {
        Campaign campaign;
        /// What is tapped first.
        Role role;
        std::string label;
        std::string spoken;
    };
    start();
    for (const Case& test :
         {Case{{.type = "POPUP", .image = "https:a.png"}, {}, {}, "Message, button; Image, button; Go, button; "},
          Case{{.type = "HEADER"}, {}, {}, "Title, Hello, button; Go, button; "},
          Case{{.type = "RATING"},
               Role::star,
               "2",
               "1 of 5 stars, selected; 2 of 5 stars, selected; 3 of 5 stars, not selected; "
               "4 of 5 stars, not selected; 5 of 5 stars, not selected; Go, button; "},
          Case{{.type = "FEEDBACK", .feedbackOptions = {"Price", "Size"}},
               Role::option,
               "Size",
               "Price, not selected; Size, selected; Go, button; "}}) {
        push(test.campaign);
        EXPECT_TRUE(test.label.empty() || tap(test.role, test.label));
        std::string spoken;
        for (const AccessibleElement& element : scene->windows().back().content->elements()) {
            if (element.isEnabled) spoken += element.spokenText + "; ";
        }
        EXPECT_EQ(spoken, test.spoken + "Close, button; ");
        tap(Role::close);
        advance(10);
    }
}
