#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using StarRatingsTest = ModuleTest;

TEST_F(StarRatingsTest, AreAdjustedFromOneToAll) {
    auto view = std::make_shared<HostingController<InAppMessageView>>(
        std::make_shared<InAppMessageView>(Campaign{.type = "RATING"}.shared(), nullptr));
    for (auto [steps, value] : {std::pair(-1, "0 of 5"), {2, "2 of 5"}, {9, "5 of 5"}, {-9, "1 of 5"}}) {
        view->evaluate(FixedTextMeasurer());
        EXPECT_TRUE(view->adjust({Role::stars, 0}, steps));
        view->evaluate(FixedTextMeasurer());
        for (const AccessibleElement& element : view->elements()) {
            if (element.role != Role::stars) continue;
            EXPECT_EQ(element.value, value);
        }
    }
}
