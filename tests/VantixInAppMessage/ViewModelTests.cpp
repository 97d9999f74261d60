#include "VantixInAppMessage/MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

using ViewModelTest = ModuleTest;

TEST_F(ViewModelTest, ChosenOptionsBecomeTheirPositions) {
    InAppMessageViewModel viewModel(
        Campaign{.feedbackOptions = {"Yes", "No", "Maybe", "\xC3\x84pfel", "no", ""}}.shared(), nullptr);
    using Indices = std::optional<std::vector<int>>;
    const std::vector<std::pair<std::optional<Texts>, Indices>> cases = {
        {{}, {}},
        {Texts{}, std::vector<int>{}},
        {Texts{"unknown"}, std::vector<int>{}},
        {Texts{"maybe", "YES", "Yes"}, std::vector{0, 2}},
        {Texts{"No"}, std::vector{1, 4}},
        {Texts{"\xC3\xA4PFEL"}, std::vector{3}},
        {Texts{""}, std::vector{5}},
    };
    for (const auto& [selected, expected] : cases) EXPECT_EQ(viewModel.selectedFeedbackIndices(selected), expected);
    viewModel.handlePrimaryCTAAction();
    viewModel.handleCloseButtonAction();
    EXPECT_EQ(viewModel.getCTA(1), std::nullopt) << "and without a display manager actions do nothing";
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
