#include "DeclarativeUI/HostedView.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/VantixImageView.h"
#include "tests/Support/FixedTextMeasurer.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

using namespace vantix;

namespace {

/// An image view in a window 100 points wide, at 3 pixels a point.
class ImageViewTest : public CoreFixture<> {
protected:
    void show(VantixImageView view) {
        window_ = std::make_shared<HostedView>([view] { return view.body(); });
        window_->setTraits({.size = {100, 400}, .safeArea = {}, .scale = 3, .textScale = 1});
        window_->setOnNeedsDisplay([this] {
            dispatcher().mainQueue().async([this] {
                if (window_) window_->evaluate(FixedTextMeasurer());
            });
        });
        window_->evaluate(FixedTextMeasurer());
    }

    DrawImage drawn() const {
        for (const DisplayItem& item : window_->displayList()) {
            if (const auto* image = std::get_if<DrawImage>(&item)) return *image;
        }
        return {};
    }

    ImageViewTest() { server_.reply("/picture", {.body = FakeImageDecoder::encode(2000, 1000)}); }

    LoopbackServer server_;
    const std::optional<URL> url_ = URL::parse(server_.url("/picture"));
    std::shared_ptr<HostedView> window_;
};

Image wideImage() { return {std::make_shared<const Bitmap>(Bitmap{1, 1, {0xff00ff00}}), {}, {40, 10}}; }

}  // namespace

TEST_F(ImageViewTest, GoesFromThePlaceholderToAsManyPixelsOfThePictureAsTheLayoutNeeds) {
    VantixImageView::setDefaultPlaceholder(wideImage);
    show({.url = url_});
    EXPECT_EQ(*drawn().image.bitmap, *wideImage().bitmap);
    EXPECT_EQ(drawn().frame.size, (Size{100, 25}));

    struct {
        double width;
        int pixels;
    } const cases[] = {{100, 300}, {50, 300}, {200, 600}, {1000, 2000}};
    for (const auto& [width, pixels] : cases) {
        window_->setTraits({.size = {width, 800}, .safeArea = {}, .scale = 3, .textScale = 1});
        dispatcher().runUntilIdle();
        EXPECT_EQ(drawn().image.bitmap->width, pixels) << width;
        EXPECT_EQ(drawn().frame.size, (Size{width, width / 2}));
    }
    EXPECT_EQ(server_.requests().size(), 1U);
}

TEST_F(ImageViewTest, KeepsThePlaceholderWhenThereIsNoPicture) {
    for (VantixImageView view : {VantixImageView{.url = URL::parse(server_.url("/missing"))}, VantixImageView{},
                                 VantixImageView{.url = url_, .asynchronousDownload = false}}) {
        view.placeholder = wideImage();
        show(view);
        dispatcher().runUntilIdle();
        EXPECT_EQ(*drawn().image.bitmap, *wideImage().bitmap);
        EXPECT_EQ(drawn().frame.size, (Size{100, 25}));
    }
    EXPECT_EQ(server_.requests().size(), 1U);
}

TEST_F(ImageViewTest, AnImageThatFailedBeforeTheShowingIsFetchedAgainAtALaterOne) {
    auto url = URL::parse(server_.url("/missing"));
    ImageUtility::downloadImage(*url, {}, [](const auto&) {}).detach();
    for (std::size_t requests : {1U, 2U}) {
        dispatcher().runUntilIdle();
        show({.url = url});
        dispatcher().runUntilIdle();
        EXPECT_EQ(server_.requests().size(), requests);
        dispatcher().advance(seconds(5));
    }
}

TEST_F(ImageViewTest, ShowsWhatWasDownloadedBeforeAndFetchesWhatTheCacheHasLostSince) {
    ImageUtility::downloadImage(*url_, "identifier", [](const auto&) {}).detach();
    dispatcher().runUntilIdle();
    for (const VantixImageView& view :
         {VantixImageView{.url = url_}, VantixImageView{.imageIdentifier = "identifier", .asynchronousDownload = false},
          VantixImageView{.url = url_, .imageIdentifier = "identifier"}}) {
        show(view);
        EXPECT_TRUE(drawn().image.isNull()) << "there is no placeholder";
        dispatcher().runUntilIdle();
        EXPECT_EQ(drawn().image.bitmap->width, 300);
    }
    EXPECT_EQ(server_.requests().size(), 1U);

    ImageUtility::removeAllCachedImages();
    window_->setTraits({.size = {200, 400}, .safeArea = {}, .scale = 3, .textScale = 1});
    dispatcher().runUntilIdle();
    EXPECT_EQ(drawn().image.bitmap->width, 600);
    EXPECT_EQ(server_.requests().size(), 2U);
}

TEST_F(ImageViewTest, AWindowThatClosesLetsGoOfItsDownloadUnlessSomebodyElseWaitsForIt) {
    for (bool somebodyWaits : {false, true}) {
        bool hasArrived = false;
        TransferHandle other;
        if (somebodyWaits) other = ImageUtility::downloadImage(*url_, {}, [&](const auto&) { hasArrived = true; });
        show({.url = url_});
        std::weak_ptr<HostedView> window = window_;
        window_.reset();
        EXPECT_TRUE(window.expired()) << "loading keeps no window";
        dispatcher().runUntilIdle();
        EXPECT_EQ(hasArrived, somebodyWaits);
        EXPECT_EQ(server_.requests().size(), somebodyWaits ? 1U : 0U);
    }
}
