#include "tests/Support/PaintedEdges.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using TemplateEdgesTest = ModuleTest;

TEST_F(TemplateEdgesTest, LieOnDevicePixelsInEveryTemplateAtEveryScale) {
    const Dictionary colored{{"backgroundColor", "#3366FF"}, {"textSize", "17"}};
    const Dictionary style{{"title", colored}, {"layoutBackgroundColor", "#FFF8E7"}, {"ctas", List{colored}}};
    for (std::string type : {"POPUP", "FULLSCREEN", "HEADER", "FOOTER", "RATING", "FEEDBACK", "APPRATING"}) {
        for (std::string message : {"Hello", "مرحبا بالعالم هذا نص طويل جدا لكي ينكسر على أسطر كثيرة"}) {
            Campaign campaign{.type = type, .message = message, .image = "https:a.png", .style = style};
            campaign.feedbackOptions = {"Price", "A size that fits", "Colour"};
            for (double scale : {1.0, 1.5, 2.0, 2.75, 3.0}) {
                for (double textScale : {1.0, 1.37, 3.0}) {
                    HostingController view(std::make_shared<InAppMessageView>(campaign.shared(), nullptr));
                    view.setTraits({{357.3, 411.7}, {20.2, 0, 13.1, 5.3}, scale, textScale});
                    for (int layout = 0; layout < 2; ++layout) view.evaluate(FixedTextMeasurer());
                    view.scroll(33.4);
                    EXPECT_GT(view.displayList().size(), 4U);
                    EXPECT_EQ(edgesBetweenPixels(view, scale), "") << type << " at " << scale << ", text " << textScale;
                }
            }
        }
    }
}
