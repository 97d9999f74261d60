#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/TextMeasurer.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/VantixImageView.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

using namespace vantix;

namespace {

struct NoText final : TextMeasurer {
    TextLayout layOut(std::string_view, const Font&, double) const override { return {}; }
};

struct Taps final : VantixImageViewProtocol {
    int count = 0;
    void didTapOnImage() override { ++count; }
};

/// An image view in a window 100 points wide, at 3 pixels a point.
class ImageViewTest : public CoreFixture<> {
protected:
    void show(VantixImageView view) {
        window_ = std::make_shared<HostedView>([view] { return view.body(); });
        window_->setTraits({.size = {100, 400}, .safeArea = {}, .scale = 3, .textScale = 1});
        window_->setOnNeedsDisplay([this] {
            dispatcher().mainQueue().async([this] {
                if (window_) window_->evaluate(NoText());
            });
        });
        window_->evaluate(NoText());
    }

    DrawImage drawn() const {
        for (const DisplayItem& item : window_->displayList()) {
            if (const auto* image = std::get_if<DrawImage>(&item)) return *image;
        }
        return {};
    }

    LoopbackServer server_;
    std::shared_ptr<HostedView> window_;
};

Image wideImage() { return {std::make_shared<const Bitmap>(Bitmap{1, 1, {0xff00ff00}}), {}, {40, 10}}; }

}  // namespace

TEST_F(ImageViewTest, GoesFromThePlaceholderToThePictureInItsOwnProportions) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(2000, 1000)});
    VantixImageView::setDefaultPlaceholder(wideImage);
    show({.url = URL::parse(server_.url("/picture"))});
    EXPECT_EQ(*drawn().image.bitmap, *wideImage().bitmap);
    EXPECT_EQ(drawn().frame.size, (Size{100, 25}));

    dispatcher().runUntilIdle();
    EXPECT_EQ(drawn().image.bitmap->width, 300);
    EXPECT_EQ(drawn().frame.size, (Size{100, 50}));

    window_->setTraits({.size = {200, 400}, .safeArea = {}, .scale = 3, .textScale = 1});
    dispatcher().runUntilIdle();
    EXPECT_EQ(drawn().image.bitmap->width, 600);
    EXPECT_EQ(server_.requests().size(), 1U);
    VantixImageView::setDefaultPlaceholder({});
}

TEST_F(ImageViewTest, ShowsAPictureThatWasDownloadedBeforeWithoutAnotherRequest) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(60, 30)});
    URL url = *URL::parse(server_.url("/picture"));
    ImageUtility::downloadImage(url, "identifier", [](const auto&) {});
    dispatcher().runUntilIdle();
    for (const VantixImageView& view : {VantixImageView{.url = url}, VantixImageView{.imageIdentifier = "identifier",
                                                                     .asynchronousDownload = false}}) {
        show(view);
        EXPECT_TRUE(drawn().image.isNull()) << "there is no placeholder";
        dispatcher().runUntilIdle();
        ASSERT_FALSE(drawn().image.isNull());
        EXPECT_EQ(drawn().image.bitmap->width, 60);
    }
    EXPECT_EQ(server_.requests().size(), 1U);
}

TEST_F(ImageViewTest, TellsItsDelegateOfTapsAndIsAnImageToAssistiveTechnology) {
    auto taps = std::make_shared<Taps>();
    for (const auto& delegate : {std::shared_ptr<Taps>(), taps}) {
        show({.placeholder = wideImage(), .delegate = delegate});
        ASSERT_EQ(window_->elements().size(), 1U);
        const AccessibleElement image = window_->elements()[0];
        EXPECT_EQ(image.role, Role::image);
        EXPECT_EQ(image.label, "Image");
        EXPECT_EQ(image.isEnabled, delegate != nullptr);
        auto tap = window_->hitTest(image.frame.center());
        EXPECT_EQ(tap.element.has_value(), delegate != nullptr);
        if (tap.action) tap.action();
    }
    EXPECT_EQ(taps->count, 1);
}

TEST_F(ImageViewTest, AWindowThatClosesMeanwhileIsLeftAlone) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(60, 30)});
    show({.url = URL::parse(server_.url("/picture"))});
    std::weak_ptr<HostedView> window = window_;
    window_.reset();
    EXPECT_TRUE(window.expired()) << "loading keeps no window";
    dispatcher().runUntilIdle();
    EXPECT_EQ(server_.requests().size(), 1U);
}
