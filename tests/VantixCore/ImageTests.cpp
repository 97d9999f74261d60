#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/Images/ImageCache.h"
#include "VantixCore/Images/ImageService.h"
#include "VantixCore/Images/ReducedImage.h"
#include "VantixCore/Installation/Installation.h"
#include "tests/Support/KilledChild.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

#include <atomic>
#include <fstream>
#include <future>
#include <latch>

using namespace vantix;

namespace fs = std::filesystem;

namespace {

using Kind = ImageError::Kind;
using DataResult = Result<ImageData, ImageError>;

TransferHandle ask(const std::string& url, ImageDataCompletion completion, std::optional<std::string> identifier = {}) {
    return ImageUtility::downloadImage(*URL::parse(url), std::move(identifier), std::move(completion));
}

TransferHandle askForPixels(const std::string& url, ImageCompletion completion) {
    return Installation::current()->images()->image({URL::parse(url)}, {10, 10}, std::move(completion));
}

class ImageTest : public CoreFixture<> {
protected:
    ImageTest() { server_.reply("/picture", {.body = picture_}); }

    DataResult download(const std::string& url, std::optional<std::string> identifier = {}) {
        DataResult outcome = ImageError{Kind::other, "not completed"};
        auto handle = ask(
            url, [&](const DataResult& result) { outcome = result; }, std::move(identifier));
        dispatcher().runUntilIdle();
        return outcome;
    }
    bool isCached(const std::string& identifier) { return download("other:", identifier).succeeded(); }
    std::size_t fetches() { return server_.requests().size(); }
    fs::path images() { return folder_.path() / "images"; }

    const std::string picture_ = FakeImageDecoder::encode(40, 30);
    LoopbackServer server_;
    const std::string url_ = server_.url("/picture");
};

}  // namespace

TEST_F(ImageTest, IsFetchedOnceForAllAndThenFoundByURLAndByIdentifierEvenAfterARestart) {
    std::vector<TransferHandle> handles;
    int completions = 0;
    for (const char* identifier : {"one", "two", "dropped", "four"}) {
        handles.push_back(ask(
            url_, [&](const DataResult& result) { completions += result && *result.value() == picture_; }, identifier));
    }
    handles.erase(handles.begin() + 2);
    dispatcher().runUntilIdle();
    EXPECT_EQ(completions, 3);

    for (bool restarts : {false, true}) {
        if (restarts) install(host());
        EXPECT_TRUE(download(url_, "later"));
        for (const char* identifier : {"one", "two", "four", "later"}) EXPECT_TRUE(isCached(identifier)) << identifier;
    }
    EXPECT_EQ(fetches(), 1U);
}

TEST_F(ImageTest, NobodyIsCalledAndNothingFetchedOnceAllHaveLetGo) {
    auto fail = [](const auto&) { ADD_FAILURE() << "was dropped"; };
    for (int at = 0; at < 2; ++at) {
        auto data = ask(url_, fail);
        auto image = askForPixels(url_, fail);
    }
    dispatcher().runUntilIdle();
    EXPECT_EQ(fetches(), 0U);

    TransferHandle data, image;
    auto first = ask(url_, [&](const auto&) { data = {}, image = {}; });
    data = ask(url_, fail);
    image = askForPixels(url_, fail);
    dispatcher().runUntilIdle();
    EXPECT_EQ(fetches(), 1U);
}

TEST_F(ImageTest, FailuresAreToldApartAndKeepNothing) {
    server_.reply("/missing", {.status = 404, .body = picture_});
    server_.reply("/html", {.body = "<html></html>"});
    server_.reply("/damaged", {.body = FakeImageDecoder::encode(40, 30, "damaged")});
    server_.reply("/endless", {.body = FakeImageDecoder::encode(1, 1, std::string(1 << 20, ' ')), .isEndless = true});
    for (const auto& [url, kind] : {std::pair(server_.url("/missing"), Kind::imageDownloadingFailed),
                                    {server_.url("/endless"), Kind::imageDownloadingFailed},
                                    {server_.url("/html"), Kind::invalidImageData},
                                    {server_.url("/damaged"), Kind::invalidImageData},
                                    {"http://127.0.0.1:1/", Kind::imageDownloadingFailed},
                                    {"file:///etc/passwd", Kind::unsupportedURL},
                                    {"picture.png", Kind::unsupportedURL}}) {
        auto result = download(url, "identifier");
        ASSERT_FALSE(result) << url;
        EXPECT_EQ(result.error().kind, kind) << url << ": " << result.error().localizedDescription;
        EXPECT_TRUE(result.error().isImageDownloadError());
    }
    EXPECT_TRUE(fs::is_empty(images()));
    server_.reply("/html", {.body = picture_});
    EXPECT_TRUE(download(server_.url("/html"))) << "a later attempt may succeed";
}

TEST_F(ImageTest, AFailingDiskStillDeliversTheImageAndKeepsTheNextOne) {
    for (DiskFault fault : {DiskFault::full, DiskFault::readOnly}) {
        disk().setFault(fault);
        EXPECT_TRUE(download(url_));
        EXPECT_EQ(takeErrors().size(), 1U);
        disk().setFault(DiskFault::none);
        EXPECT_FALSE(isCached("identifier"));
    }
    EXPECT_TRUE(download(url_, "identifier"));
    EXPECT_TRUE(isCached("identifier"));
}

TEST_F(ImageTest, TheCacheForgetsWhatWasUsedLeastRecently) {
    auto useCapacity = [this](std::uintmax_t capacity) {
        auto small = host();
        small.imageCacheCapacity = capacity;
        install(std::move(small));
    };
    useCapacity(3500);
    for (const char* path : {"/a", "/b", "/c", "/d", "/huge"}) {
        std::size_t size = path == std::string("/huge") ? 4000 : 1000;
        server_.reply(path, {.body = FakeImageDecoder::encode(4, 3, std::string(size, ' '))});
    }
    for (const char* path : {"/a", "/b", "/c", "/a", "/huge", "/d"}) download(server_.url(path), path);
    EXPECT_EQ(fetches(), 5U);
    for (const char* path : {"/a", "/c", "/d"}) EXPECT_TRUE(isCached(path)) << path;
    for (const char* path : {"/b", "/huge"}) EXPECT_FALSE(isCached(path)) << path;
    std::uintmax_t onDisk = 0;
    for (const auto& file : fs::directory_iterator(images())) onDisk += file.file_size();
    EXPECT_LE(onDisk, 3500U);

    useCapacity(1500);
    EXPECT_TRUE(isCached("/d")) << "the one used last survives a restart with less room";
    EXPECT_FALSE(isCached("/a"));
}

TEST_F(ImageTest, LeftoversOfAKilledProcessDoNoHarm) {
    ASSERT_TRUE(download(url_, "kept"));
    for (const auto& [name, content] :
         {std::pair("0123.image.new", "half a pic"), std::pair("4567.identifiers", "orphan\n"),
          std::pair("89ab.image", "no line break"), std::pair("cdef.image", "")}) {
        std::ofstream(images() / name) << content;
    }
    install(host());
    EXPECT_TRUE(isCached("kept"));
    EXPECT_FALSE(isCached("orphan"));
    EXPECT_FALSE(fs::exists(images() / "0123.image.new"));
    EXPECT_FALSE(fs::exists(images() / "4567.identifiers"));
}

TEST(ImageCacheTest, KnowsWhatWasUsedLastInAnEarlierProcess) {
    TemporaryFolder folder;
    auto open = [&] { return ImageCache(std::make_shared<FileDisk>(), folder.path(), 30); };
    ImageCache earlier = open();
    for (const char* url : {"a", "b"}) earlier.insert(url, "ten bytes.");
    earlier.find("a", {});
    ImageCache later = open();
    later.insert("c", "ten bytes.");
    EXPECT_TRUE(later.find("a", {}));
    EXPECT_FALSE(later.find("b", {}));
}

TEST(ImageCacheTest, IsSoundWheneverItsProcessIsKilled) {
    TemporaryFolder folder;
    const std::string bytes(10000, 'x');
    std::size_t kept = confirmedUntilKilled(50, [&](auto confirm) {
        ImageCache cache(std::make_shared<FileDisk>(), folder.path(), 1 << 30);
        for (int at = 0;; ++at) {
            cache.insert("url" + std::to_string(at), bytes);
            cache.identify("url" + std::to_string(at), "id" + std::to_string(at));
            confirm();
        }
    });
    ASSERT_GE(kept, 50U);

    ImageCache cache(std::make_shared<FileDisk>(), folder.path(), 1 << 30);
    for (std::size_t at = 0; at < kept; ++at) EXPECT_EQ(cache.find({}, "id" + std::to_string(at)), bytes);
    for (const auto& file : fs::directory_iterator(folder.path())) EXPECT_NE(file.path().extension(), ".new");
}

TEST_F(ImageTest, WhatTheDiskDamagedOrLostIsFetchedAgain) {
    ASSERT_TRUE(download(url_));
    auto file = fs::directory_iterator(images())->path();
    std::ofstream(file) << url_ << "\nno picture any more";
    EXPECT_TRUE(download(url_));
    EXPECT_EQ(fetches(), 2U);
    fs::remove(file);
    EXPECT_TRUE(download(url_));
    EXPECT_EQ(fetches(), 3U);
}

TEST_F(ImageTest, RemovingAllEmptiesTheCache) {
    download(url_, "identifier");
    ImageUtility::removeAllCachedImages();
    EXPECT_FALSE(isCached("identifier"));
    auto underWay = ask(url_, [](const DataResult&) {});
    ImageUtility::removeAllCachedImages();
    dispatcher().runUntilIdle();
    EXPECT_EQ(fetches(), 2U);
    EXPECT_TRUE(fs::is_empty(images())) << "what was under way is not kept either";
}

namespace {

/// Counts what is decoded; a picture that is slow is held until it is let go.
struct WatchedDecoder final : ImageDecoder {
    Result<PixelSize> probe(std::string_view bytes) const override { return fake.probe(bytes); }
    Result<Image> decode(std::string_view bytes, PixelSize bound) const override {
        ++decoded;
        if (bytes.find("slow") != std::string_view::npos) letGo.wait();
        return fake.decode(bytes, bound);
    }

    FakeImageDecoder fake;
    mutable std::atomic<int> decoded = 0;
    mutable std::latch letGo{1};
};

std::shared_ptr<WatchedDecoder> installWatchedDecoder(VantixHost host) {
    auto decoder = std::make_shared<WatchedDecoder>();
    Platform platform = *Platform::current();
    platform.imageDecoder = decoder;
    Platform::install(std::move(platform));
    Vantix::install(std::move(host));
    return decoder;
}

}  // namespace

TEST_F(ImageTest, WhatWasFetchedIsShownWithoutASecondDecodingForAShortTime) {
    auto decoder = installWatchedDecoder(host());
    server_.reply("/large", {.body = FakeImageDecoder::encode(4000, 4000)});
    struct {
        const char* path;
        double wait;
        int decoded;
    } const cases[] = {
        {"/picture", 0, 1}, {"/picture", 29, 1}, {"/large", 0, 2}, {"/picture", 2, 3}, {"/large", 30, 4}};
    for (const auto& [path, wait, decoded] : cases) {
        ASSERT_TRUE(download(server_.url(path)));
        dispatcher().advance(seconds(wait));
        Image shown;
        auto handle = askForPixels(server_.url(path), [&](const auto& image) { shown = image.value(); });
        dispatcher().runUntilIdle();
        ASSERT_TRUE(shown.bitmap);
        EXPECT_EQ(shown.bitmap->width, 10);
        EXPECT_EQ(decoder->decoded, decoded) << path;
    }
}

TEST(ReducedImageTest, EachPixelIsTheMeanOfThoseThatItCovers) {
    const Image picture = bitmapImage(4, 2,
                                      {0xff000000, 0xff000040, 0, 0xff0000ff,  //
                                       0xff000080, 0xff0000c0, 0, 0xff0000ff});
    EXPECT_EQ(reduced(picture, {2, 9})->bitmap->pixels, (std::vector<std::uint32_t>{0xff000060, 0x80000080}));
    EXPECT_EQ(reduced(picture, {3, 9})->bitmap->pixels.size(), 6U);
    EXPECT_EQ(reduced(picture, {9, 9}), picture);
    EXPECT_FALSE(reduced({picture.bitmap, {}, {8, 4}}, {5, 9})) << "it was decoded with fewer pixels";
}

namespace {

class ThreadedImageTest : public CoreFixture<ThreadedDispatcher> {
protected:
    ThreadedImageTest() {
        dead_.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)});
        dead_.hold();
    }

    static ImageDataCompletion succeed(std::promise<bool>& promise) {
        return [&promise](const DataResult& result) { promise.set_value(result.succeeded()); };
    }
    static void fail(const DataResult&) { ADD_FAILURE() << "was dropped"; }

    LoopbackServer dead_;
    const std::string url_ = dead_.url("/picture");
};

}  // namespace

TEST_F(ThreadedImageTest, ADownloadLastsAsLongAsSomebodyWaitsForIt) {
    auto oneAtATime = host();
    oneAtATime.maximumConcurrentTransfers = 1;
    install(std::move(oneAtATime));
    std::promise<bool> kept;
    auto first = ask(url_, fail), second = ask(url_, fail);
    ASSERT_TRUE(dead_.waitForRequests(1));
    first = {}, second = {};
    first = ask(url_, fail), second = ask(url_, succeed(kept));
    ASSERT_TRUE(dead_.waitForRequests(2)) << "the first download has ended and given its place away";
    first = {};
    dead_.release();
    EXPECT_TRUE(kept.get_future().get());
    EXPECT_EQ(dead_.requests().size(), 2U);
}

TEST_F(ThreadedImageTest, APictureThatTakesLongHoldsUpNoOther) {
    auto decoder = installWatchedDecoder(host());
    LoopbackServer alive;
    alive.reply("/slow", {.body = FakeImageDecoder::encode(40, 30, "slow")});
    std::promise<bool> slow;
    auto first = ask(alive.url("/slow"), succeed(slow));
    for (const char* path : {"/a", "/b"}) {
        alive.reply(path, {.body = FakeImageDecoder::encode(40, 30)});
        std::promise<bool> other;
        auto handle = ask(alive.url(path), succeed(other));
        EXPECT_TRUE(other.get_future().get());
    }
    decoder->letGo.count_down();
    EXPECT_TRUE(slow.get_future().get());
}
