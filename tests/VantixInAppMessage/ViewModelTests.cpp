#include "VantixInAppMessage/MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

using namespace vantix;

namespace {

const std::string file = "MVVM/ViewModel/InAppMessageViewModel/InAppMessageViewModel ";

std::string noPrimaryCTA(const std::string& function) { return file + function + ": Did not find primary CTA"; }

class ViewModelTest : public ModuleTest {
protected:
    /// Of a message that is on screen.
    InAppMessageViewModel viewModelOf(const Campaign& campaign) {
        if (!core) start(ApplicationState::active, Env::unittest);
        recorder.takeErrors();
        recorder.takeTold();
        recorder.takeAttributes();
        return {campaign.payload(), displayManager()};
    }
};

}  // namespace

TEST_F(ViewModelTest, GivesWhatTheMessageHasAndNoColourOfItsOwn) {
    Dictionary title{{"textColor", "#000001"}, {"backgroundColor", "#000002"}, {"textSize", "20"}};
    Dictionary message{{"textColor", "#000003"}, {"backgroundColor", "#000004"}, {"textStyle", "BOLD"}};
    Dictionary cta{{"textColor", "#000005"}, {"backgroundColor", "#000006"}, {"textStyle", "ITALIC"}};
    auto full =
        viewModelOf({.image = "https://a.example",
                     .style = {{"title", title},
                               {"message", message},
                               {"ctas", List{cta}},
                               {"rating", Dictionary{{"selectedColor", "#000007"}, {"unselectedColor", "#000008"}}},
                               {"layoutBackgroundColor", "#000009"}},
                     .feedbackOptions = {"x"}});
    InAppMessageViewModel empty({}, nullptr);
    const std::vector<std::optional<Color> (InAppMessageViewModel::*)() const> colours = {
        &InAppMessageViewModel::titleTextColor,       &InAppMessageViewModel::titleBackgroundColor,
        &InAppMessageViewModel::messageTextColor,     &InAppMessageViewModel::messageBackgroundColor,
        &InAppMessageViewModel::ctaTextColor,         &InAppMessageViewModel::ctaBackgroundColor,
        &InAppMessageViewModel::starSelectedColor,    &InAppMessageViewModel::starNotSelectedColor,
        &InAppMessageViewModel::layoutBackgroundColor};
    for (std::size_t at = 0; at < colours.size(); ++at) {
        EXPECT_EQ((full.*colours[at])(), (Color{0, 0, static_cast<double>(at + 1) / 255, 1})) << at;
        EXPECT_EQ((empty.*colours[at])(), std::nullopt) << at;
    }
    EXPECT_EQ(full.titleFont(), Font::system(20));
    EXPECT_EQ(full.messageFont(), Font::system(16, FontWeight::bold));
    EXPECT_EQ(full.ctaFont(), Font::italicSystem(16));
    EXPECT_TRUE(full.hasImage() && full.getImageURL() && full.hasTitle() && full.hasMessage() && full.hasPrimaryCTA());
    EXPECT_FALSE(empty.hasImage() || empty.getImageURL() || empty.hasTitle() || empty.hasMessage());
    EXPECT_EQ(full.getTitle() + full.getMessage() + full.getPrimaryCTAButtonTitle(), "TitleHelloGo");
    EXPECT_TRUE(full.feedbackOptionsAvailable() && !empty.feedbackOptionsAvailable());
    EXPECT_EQ(full.feedbackSelectionType(), InAppFeedbackSelectionType::multiSelection);
    EXPECT_EQ(full.feedbackOptions(), Texts{"x"});
    EXPECT_TRUE(viewModelOf({.image = "no url"}).hasImage()) << "the text counts, not what it names";
    EXPECT_TRUE(recorder.takeErrors().empty());
}

TEST_F(ViewModelTest, AMessageWithoutCallsToActionSaysSo) {
    auto viewModel = viewModelOf({.ctas = {}, .style = {}});
    EXPECT_FALSE(viewModel.hasPrimaryCTA());
    EXPECT_EQ(recorder.takeErrors(), Texts{noPrimaryCTA("hasPrimaryCTA()")});
    EXPECT_EQ(viewModel.ctaFont(), Font::system(16));
    EXPECT_EQ(recorder.takeErrors(), Texts{noPrimaryCTA("ctaFont()")});
    viewModel.didTapOnImage();
    EXPECT_EQ(recorder.takeErrors(), Texts{noPrimaryCTA("handlePrimaryCTAAction()")});
    EXPECT_EQ(viewModel.getPrimaryCTAButtonTitle(), "");
    EXPECT_EQ(viewModel.numberOfCTAs(), 0);
    EXPECT_EQ(viewModel.getCTA(0), std::nullopt);
    EXPECT_TRUE(recorder.takeErrors().empty());
    settle();
    EXPECT_TRUE(recorder.takeTold().empty());
}

TEST_F(ViewModelTest, ButtonsAndStylesArePairedByPosition) {
    auto viewModel =
        viewModelOf({.ctas = {callToAction("EXTERNAL", "1", ""), callToAction("RATING", "2"), Dictionary()},
                     .style = {{"ctas", List{Dictionary{{"backgroundColor", "#FF0000"}}}}}});
    EXPECT_EQ(viewModel.numberOfCTAs(), 3);
    EXPECT_FALSE(viewModel.hasPrimaryCTA()) << "its text is empty";
    EXPECT_TRUE(recorder.takeErrors().empty());
    EXPECT_EQ(viewModel.getCTA(1)->action, "2");
    EXPECT_EQ(viewModel.getCTA(2)->actionText, "");
    EXPECT_EQ(viewModel.getCTA(3), std::nullopt);
    EXPECT_EQ(viewModel.getCTAStyle(1), std::nullopt);
    EXPECT_EQ(viewModel.ctaBackgroundColor(), (Color{1, 0, 0, 1}));
}

TEST_F(ViewModelTest, ChosenOptionsBecomeTheirPositions) {
    auto viewModel = viewModelOf({.feedbackOptions = {"Yes", "No", "Maybe", "\xC3\x84pfel", "no", ""}});
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
}

TEST_F(ViewModelTest, ActionsGoToTheDisplayManager) {
    auto viewModel = viewModelOf(
        {.ctas = {callToAction("FEEDBACK", "x"), callToAction("RATING", "y")}, .feedbackOptions = {"Yes", "No"}});
    const InAppCTA feedback{"t", "", "FEEDBACK"};
    viewModel.handleCTAAction(feedback, {}, "text", "no", Texts{"Yes"});
    viewModel.handleCTAAction(feedback, {}, {}, {}, Texts{"No", "Yes"});
    viewModel.handleCTAAction({"t", "", "RATING"}, 3, {}, {}, {});
    viewModel.handlePrimaryCTAAction();
    viewModel.didTapOnImage();
    viewModel.handleClickAction();
    settle();
    EXPECT_EQ(recorder.takeTold(), (Texts{"behavioral inAppMessageFeedback a", "behavioral inAppMessageFeedback a",
                                          "behavioral inAppMessageRating a", "behavioral inAppMessageFeedback a",
                                          "behavioral inAppMessageFeedback a", "delivery inAppMessageDismissed a"}));
    auto attributes = recorder.takeAttributes();
    EXPECT_EQ(*attributes[0].find("feedbackOptions"), List{1}) << "a single answer comes before several";
    EXPECT_EQ(*attributes[0].text("feedback"), "text");
    EXPECT_EQ(*attributes[1].find("feedbackOptions"), (List{0, 1}));
    EXPECT_EQ(*attributes[2].find("rating"), Value(3));

    InAppMessageViewModel alone(viewModel.inAppMessage(), nullptr);
    alone.handlePrimaryCTAAction();
    alone.handleCloseButtonAction();
    settle();
    EXPECT_TRUE(recorder.takeTold().empty());
}

TEST_F(ViewModelTest, ACallToActionWithoutTextStopsTheProcess) {
    VantixInAppMessagePayload broken;
    broken.body.ctas = {{{}, "https://a.example", "RATING"}};
    EXPECT_DEATH(InAppMessageViewModel(broken, nullptr).hasPrimaryCTA(),
                 "Unexpectedly found nil while implicitly unwrapping an Optional value");
    for (auto type : {VantixInAppNotificationType::rating, VantixInAppNotificationType::feedback,
                      VantixInAppNotificationType::appRating}) {
        broken.body.type = type;
        HostingController<InAppMessageView> host(std::make_shared<InAppMessageView>(broken, nullptr));
        EXPECT_DEATH(host.evaluate(FixedTextMeasurer()), "Unexpectedly found nil while implicitly unwrapping");
    }
    EXPECT_EQ(InAppMessageViewModel(broken, nullptr).getPrimaryCTAButtonTitle(), "");
}
