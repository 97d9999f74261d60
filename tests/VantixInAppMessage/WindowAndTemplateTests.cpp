#include "VantixInAppMessage/Resources/ColorResource.h"
#include "VantixInAppMessage/Resources/ImageResource.h"
#include "VantixInAppMessage/templates/CloseButton.h"
#include "VantixInAppMessage/templates/VantixUtility.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixInAppMessage/ModuleFixture.h"

#include <unordered_set>

using namespace vantix;

namespace {

const Color red{1, 0, 0, 1};
const Color blue{0, 0, 1, 1};

class WindowTest : public ModuleTest {
protected:
    const HostedView& content() const { return *scene->windows().back().content; }

    AccessibleElement element(Role role) const {
        for (const AccessibleElement& candidate : content().elements()) {
            if (candidate.role == role) return candidate;
        }
        ADD_FAILURE() << "no " << roleName(role);
        return {};
    }

    std::vector<DrawImage> drawnImages() const {
        std::vector<DrawImage> images;
        for (const DisplayItem& item : content().displayList()) {
            if (const auto* image = std::get_if<DrawImage>(&item)) images.push_back(*image);
        }
        return images;
    }

    /// Shows the campaign in place of whatever is shown.
    void show(const Campaign& campaign) {
        if (!core) start();
        if (!shown().empty()) core->dismissInAppMessage(Campaign{}.payload());
        advance(10);
        push(campaign);
        ASSERT_EQ(shown(), Texts{campaign.scope});
        recorder.takeTold();
        recorder.takeErrors();
    }

    /// What a view draws by itself, without the module.
    static std::string rolesOf(const Campaign& campaign) {
        HostingController<InAppMessageView> host(std::make_shared<InAppMessageView>(campaign.payload(), nullptr));
        host.setTraits({.size = {390, 844}, .safeArea = {}});
        host.evaluate(FixedTextMeasurer());
        std::string roles;
        for (const AccessibleElement& element : host.elements()) roles += std::string(roleName(element.role)) + " ";
        return roles;
    }
};

}  // namespace

TEST_F(WindowTest, CoversTheSceneAboveTheApplication) {
    show({.style = {{"phoneBackgroundColor", "#80FF0000"}}});
    WindowDescription window = scene->windows().back().description;
    EXPECT_EQ(window.frame, (Rect{{0, 0}, {390, 844}}));
    EXPECT_EQ(window.level, WindowLevel::alert);
    EXPECT_EQ(window.backgroundColor, (Color{1, 0, 0, 128 / 255.0}));
    EXPECT_EQ(window.alpha, 1);
    EXPECT_FALSE(window.isHidden);
    show({.scope = "plain"});
    EXPECT_EQ(scene->windows().back().description.backgroundColor, std::nullopt) << "the application shows through";
}

TEST_F(WindowTest, IsEvaluatedOnTheNextTurnAndHiddenOnAnother) {
    start();
    deliver({{.scope = "1"}});
    displayManager()->showInAppMessage({}, {});
    ASSERT_EQ(shown(), Texts{"1"});
    EXPECT_FALSE(content().hasBeenEvaluated());
    settle();
    EXPECT_TRUE(content().hasBeenEvaluated());
    int hidden = 0;
    scene->setOnHidden([&](const HostedView&) { ++hidden; });
    core->dismissInAppMessage(Campaign{.scope = "1"}.payload());
    core->dismissInAppMessage(Campaign{.scope = "1"}.payload());
    EXPECT_EQ(shown(), Texts{"1"});
    settle();
    EXPECT_TRUE(shown().empty());
    EXPECT_EQ(hidden, 1) << "hiding twice is harmless";
}

TEST_F(WindowTest, EachTypeHasItsTemplate) {
    struct Case {
        const char* type;
        std::string full;
        std::string withoutMessage;
    };
    const std::vector<Case> cases = {
        {"BADGE", "", ""},
        {"POPUP", "card title message button close ", "card title button close "},
        {"FULLSCREEN", "card close title message button ", "card close title button "},
        {"HEADER", "card row title message button close ", ""},
        {"FOOTER", "card row title message button close ", ""},
        {"RATING", "card title star star star star star button close ",
         "card title star star star star star button close "},
        {"FEEDBACK", "card title message option mark button close ", "card title option mark button close "},
        {"APPRATING", "card title button close ", "card title button close "},
    };
    for (const Case& test : cases) {
        EXPECT_EQ(rolesOf({.type = test.type, .feedbackOptions = {"x"}}), test.full) << test.type;
        EXPECT_EQ(rolesOf({.type = test.type, .message = "", .feedbackOptions = {"x"}}), test.withoutMessage)
            << test.type;
    }
}

TEST_F(WindowTest, AbsentPartsAreLeftOut) {
    Campaign bare{.message = "only this", .ctas = {callToAction("EXTERNAL", "x", "")}};
    auto push = bare.push();
    push.set("body", R"({"type":"POPUP","message":"only this","ctas":[]})");
    start();
    receive(push);
    EXPECT_EQ(roles(), "card message close");
    EXPECT_EQ(rolesOf({.ctas = {callToAction("EXTERNAL", "x", "")}}), "card title message close ");
    EXPECT_EQ(rolesOf({.image = "https://127.0.0.1:1/p"}), "card title image message button close ");
}

TEST_F(WindowTest, EveryPlaceOfACardActsOnceAsThePrimaryButton) {
    LoopbackServer server;
    server.reply("/p", {.body = FakeImageDecoder::encode(40, 20)});
    for (const char* type : {"POPUP", "FULLSCREEN"}) {
        for (Role role : {Role::card, Role::button, Role::image, Role::title, Role::message}) {
            show({.type = type, .image = server.url("/p")});
            Point middle = element(role).frame.center();
            if (role == Role::card) middle = {element(role).frame.minX() + 1, element(role).frame.maxY() - 1};
            auto tap = content().hitTest(middle);
            ASSERT_TRUE(tap.action) << type << roleName(role);
            tap.action();
            settle();
            EXPECT_EQ(recorder.takeTold(), (Texts{"cta EXTERNAL https://a.example a", "open https://a.example",
                                                  "delivery inAppMessageClicked a"}))
                << type << roleName(role);
            EXPECT_TRUE(shown().empty());
        }
    }
}

TEST_F(WindowTest, TheCloseControlIsASmallGlyphInALargeTarget) {
    for (const char* type : {"POPUP", "FULLSCREEN", "HEADER", "RATING"}) {
        show({.type = type});
        Rect target = element(Role::close).frame;
        EXPECT_EQ(target.size, (Size{44, 44})) << type;
        DrawImage glyph = drawnImages().back();
        for (const DrawImage& image : drawnImages()) {
            if (image.frame.size == Size{20, 20}) glyph = image;
        }
        EXPECT_EQ(glyph.frame, (Rect{{target.maxX() - 20, target.minY()}, {20, 20}})) << type;
        auto corner = content().hitTest(Point{target.minX() + 1, target.maxY() - 1});
        ASSERT_TRUE(corner.action) << type;
        corner.action();
        settle();
        EXPECT_EQ(recorder.takeTold(), Texts{"delivery inAppMessageDismissed a"}) << type;
        EXPECT_TRUE(shown().empty());
    }
    HostedView alone([] { return CloseButton(VantixCloseButtonType::closeFilled, nullptr).body(); });
    alone.setTraits({.size = {100, 100}, .safeArea = {}});
    alone.evaluate(FixedTextMeasurer());
    ASSERT_EQ(alone.elements().size(), 1U);
    auto tap = alone.hitTest(alone.elements()[0].frame.center());
    if (tap.action) tap.action();
}

TEST_F(WindowTest, AFullScreenCoversTheWindowAndItsCloseControlStaysBelowTheStatusBar) {
    show({.type = "FULLSCREEN",
          .style = {{"title", Dictionary{{"backgroundColor", "#FF0000"}}},
                    {"message", Dictionary{{"backgroundColor", "#0000FF"}}},
                    {"layoutBackgroundColor", "#0000FF"}}});
    EXPECT_EQ(element(Role::card).frame, (Rect{{0, 0}, {390, 844}}));
    EXPECT_EQ(element(Role::card).background, blue);
    EXPECT_GE(element(Role::close).frame.minY(), 47);
    EXPECT_EQ(element(Role::message).background, red) << "the title's colour";
    show({.style = {{"title", Dictionary{{"backgroundColor", "#FF0000"}}},
                    {"message", Dictionary{{"backgroundColor", "#0000FF"}}}}});
    EXPECT_EQ(element(Role::title).background, red);
    EXPECT_EQ(element(Role::message).background, blue);
}

TEST_F(WindowTest, ALongPopupScrollsAndKeepsItsCloseControlAtItsCorner) {
    show({.message = "Hello"});
    Rect card = element(Role::card).frame;
    EXPECT_NEAR(card.center().y, 47 + (844 - 47 - 34) / 2.0, 0.5) << "in the middle of the safe area";
    EXPECT_EQ(card.minX(), 390 - card.maxX());

    std::string longText;
    for (int word = 0; word < 2000; ++word) longText += "word ";
    show({.message = longText});
    card = element(Role::card).frame;
    Rect close = element(Role::close).frame;
    EXPECT_GT(card.size.height, 844);
    EXPECT_LT(std::abs(close.minY() - card.minY()), 44);
    EXPECT_LT(std::abs(close.maxX() - card.maxX()), 44);
    EXPECT_TRUE(tap(Role::button)) << "it is scrolled into view";
    EXPECT_EQ(recorder.takeTold().size(), 3U);
}

TEST_F(WindowTest, APictureThatCannotBeHadLeavesItsPlaceholder) {
    Image placeholder = vectorImage("<svg width='2' height='1'/>");
    start();
    auto drawn = [&](const char* type) {
        show({.type = type, .image = "http://127.0.0.1:1/p"});
        return drawnImages();
    };
    auto contains = [](const std::vector<DrawImage>& images, const Image& image) {
        return std::any_of(images.begin(), images.end(), [&](const DrawImage& each) { return each.image == image; });
    };
    auto pictures = drawn("POPUP");
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_EQ(*pictures[0].image.vector, *ImageResource::defaultImage().image().vector);
    configuration->setPlaceholderImage(placeholder);
    EXPECT_TRUE(contains(drawn("POPUP"), placeholder));
    EXPECT_TRUE(contains(drawn("FULLSCREEN"), icon));
}

TEST_F(WindowTest, ResourcesAreNamedByTextAndBundle) {
    for (const ImageResource* resource : {&ImageResource::cross(), &ImageResource::defaultImage()}) {
        EXPECT_FALSE(resource->image().isNull()) << resource->name;
    }
    EXPECT_EQ(ImageResource::cross().name, "cross");
    EXPECT_EQ(ImageResource::defaultImage().name, "defaultImage");
    EXPECT_TRUE((ImageResource{"none", resourceBundle()}).image().isNull());
    ResourceBundle other = resourceBundle();
    other.name = "other";
    std::unordered_set<ColorResource> colours = {{"a", resourceBundle()}, {"a", resourceBundle()}, {"a", other}};
    EXPECT_EQ(colours.size(), 2U);
}

TEST_F(WindowTest, ValuesAreEqualOnlyIfBothCanBeHashed) {
    auto opaque = Value::opaque(std::string("a"));
    EXPECT_TRUE(VantixUtility::equals(1, 1.0));
    EXPECT_TRUE(VantixUtility::equals(nullptr, nullptr));
    EXPECT_FALSE(VantixUtility::equals(true, 1));
    EXPECT_FALSE(VantixUtility::equals(opaque, opaque));
    EXPECT_FALSE(VantixUtility::equals(List{opaque}, List{opaque}));
}
