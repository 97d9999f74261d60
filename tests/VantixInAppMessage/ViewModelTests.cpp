#include "VantixInAppMessage/MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using ViewModelTest = ModuleTest;

TEST_F(ViewModelTest, WithoutADisplayManagerActionsDoNothing) {
    InAppMessageViewModel viewModel(Campaign{}.shared(), nullptr);
    viewModel.handlePrimaryCTAAction();
    viewModel.handleCloseButtonAction();
    EXPECT_EQ(viewModel.getCTA(1), std::nullopt);
}

TEST_F(ViewModelTest, ACallToActionWithoutTextStopsTheProcess) {
    VantixInAppMessagePayload broken;
    broken.body.ctas = {{{}, "https://a.example", "RATING"}};
    for (auto type : {VantixInAppNotificationType::rating, VantixInAppNotificationType::feedback,
                      VantixInAppNotificationType::appRating}) {
        broken.body.type = type;
        auto message = std::make_shared<const VantixInAppMessagePayload>(broken);
        HostingController<InAppMessageView> host(std::make_shared<InAppMessageView>(message, nullptr));
        EXPECT_DEATH(host.evaluate(FixedTextMeasurer()), "Unexpectedly found nil while implicitly unwrapping");
    }
}
