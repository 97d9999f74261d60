#include "Platform/Dispatchers/ThreadedDispatcher.h"
#include "VantixCore/ImageUtility.h"
#include "VantixCore/Images/ImageLoader.h"
#include "VantixCore/Installation/Installation.h"
#include "VantixCore/Network/NetworkPolicy.h"
#include "tests/Support/LoopbackServer.h"
#include "tests/VantixCore/CoreFixture.h"

#include <fstream>
#include <future>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace vantix;

namespace fs = std::filesystem;

namespace {

using Kind = ImageError::Kind;
using DataResult = Result<std::shared_ptr<const std::string>, ImageError>;

class ImageTest : public CoreFixture<> {
protected:
    DataResult download(const std::string& url, std::optional<std::string> identifier = {}) {
        DataResult outcome = ImageError{Kind::other, "not completed"};
        ImageUtility::downloadImage(*URL::parse(url), std::move(identifier),
                                    [&](DataResult result) { outcome = result; });
        dispatcher().runUntilIdle();
        return outcome;
    }

    std::size_t fetches() { return server_.requests().size(); }

    LoopbackServer server_;
};

class ImageLoaderTest : public ImageTest {
protected:
    std::shared_ptr<ImageLoader> load(ImageRequest request) {
        auto loader = std::make_shared<ImageLoader>(Installation::current()->images(), Platform::current(),
                                                    std::move(request), [this] { ++changes_; });
        loader->start();
        return loader;
    }

    /// As the layout does: asks for the picture and tells how many pixels it covers at this width.
    static Size layOut(ImageLoader& loader, int pixelWidth) {
        Size natural = loader.currentImage().naturalSize;
        loader.needed(pixelWidth, static_cast<int>(pixelWidth * natural.height / natural.width));
        return natural;
    }

    int changes_ = 0;
};

Image squarePlaceholder() { return {std::make_shared<const Bitmap>(Bitmap{1, 1, {0xff00ff00}}), {}, {10, 10}}; }

}  // namespace

TEST_F(ImageTest, IsFetchedOnceAndThenFoundByURLAndByIdentifierEvenAfterARestart) {
    std::string picture = FakeImageDecoder::encode(40, 30);
    server_.reply("/picture", {.body = picture});
    auto fetched = download(server_.url("/picture"), "first");
    ASSERT_TRUE(fetched) << fetched.error().localizedDescription;
    EXPECT_EQ(*fetched.value(), picture);

    for (bool restarts : {false, true}) {
        if (restarts) install(host());
        EXPECT_TRUE(download(server_.url("/picture"), "second"));
        EXPECT_TRUE(download("https://elsewhere.invalid/", "first"));
        EXPECT_TRUE(download("https://elsewhere.invalid/", "second"));
    }
    EXPECT_EQ(fetches(), 1U);
    ASSERT_EQ(sent().size(), 1U);
    EXPECT_EQ(sent()[0].method, "GET");
    EXPECT_EQ(sent()[0].url, server_.url("/picture"));
}

TEST_F(ImageTest, RequestsForOneImageJoin) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)});
    int completions = 0;
    for (int at = 0; at < 20; ++at) {
        ImageUtility::downloadImage(*URL::parse(server_.url("/picture")), std::to_string(at),
                                    [&](const DataResult& result) { completions += result ? 1 : 0; });
    }
    dispatcher().runUntilIdle();
    EXPECT_EQ(completions, 20);
    EXPECT_EQ(fetches(), 1U);
    EXPECT_TRUE(download("https://elsewhere.invalid/", "19"));
}

TEST_F(ImageTest, FailuresAreToldApartAndKeepNothing) {
    server_.reply("/missing", {.status = 404, .body = FakeImageDecoder::encode(1, 1)});
    server_.reply("/broken", {.status = 500, .body = FakeImageDecoder::encode(1, 1)});
    server_.reply("/html", {.body = "<html></html>"});
    server_.reply("/damaged", {.body = FakeImageDecoder::encode(40, 30, "damaged")});
    server_.reply("/truncated", {.body = FakeImageDecoder::encode(40, 30), .announcedLength = 1000});
    server_.reply("/endless", {.body = FakeImageDecoder::encode(1, 1, std::string(1 << 20, ' ')), .isEndless = true});
    server_.reply("/loop", {.status = 302, .headers = {{"Location", "/loop"}}});

    struct Case {
        std::string url;
        Kind kind;
    };
    for (const Case& each :
         {Case{server_.url("/missing"), Kind::imageDownloadingFailed},
          Case{server_.url("/broken"), Kind::imageDownloadingFailed},
          Case{server_.url("/html"), Kind::invalidImageData}, Case{server_.url("/damaged"), Kind::invalidImageData},
          Case{server_.url("/truncated"), Kind::imageDownloadingFailed},
          Case{server_.url("/endless"), Kind::imageDownloadingFailed},
          Case{server_.url("/loop"), Kind::imageDownloadingFailed},
          Case{"http://127.0.0.1:1/", Kind::imageDownloadingFailed}, Case{"file:///etc/passwd", Kind::unsupportedURL},
          Case{"data:image/png;base64,AAAA", Kind::unsupportedURL}, Case{"picture.png", Kind::unsupportedURL}}) {
        auto result = download(each.url, "identifier");
        ASSERT_FALSE(result) << each.url;
        EXPECT_EQ(result.error().kind, each.kind) << each.url << ": " << result.error().localizedDescription;
        EXPECT_TRUE(result.error().isImageDownloadError());
    }
    EXPECT_TRUE(fs::is_empty(folder_.path() / "images"));
    server_.reply("/html", {.body = FakeImageDecoder::encode(40, 30)});
    EXPECT_TRUE(download(server_.url("/html"))) << "a later attempt may succeed";
}

TEST_F(ImageTest, AnUnusableFolderStillDeliversTheImage) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)});
    std::ofstream(folder_.path() / "images") << "a file where the folder should be";
    EXPECT_TRUE(download(server_.url("/picture")));
}

TEST_F(ImageTest, TheCacheForgetsWhatWasUsedLeastRecently) {
    auto small = host();
    small.imageCacheCapacity = 3500;
    install(std::move(small));
    for (const char* path : {"/a", "/b", "/c", "/d"}) {
        server_.reply(path, {.body = FakeImageDecoder::encode(4, 3, std::string(1000, ' '))});
    }
    server_.reply("/huge", {.body = FakeImageDecoder::encode(4, 3, std::string(4000, ' '))});

    for (const char* path : {"/a", "/b", "/c", "/a", "/huge", "/d"}) download(server_.url(path), path);
    EXPECT_EQ(fetches(), 5U);
    for (const char* kept : {"/a", "/c", "/d"}) download(server_.url(kept));
    EXPECT_EQ(fetches(), 5U);
    EXPECT_FALSE(download("other:", "/b")) << "identifiers go with their image";

    std::uintmax_t onDisk = 0;
    for (const auto& file : fs::directory_iterator(folder_.path() / "images")) onDisk += file.file_size();
    EXPECT_LE(onDisk, 3500U);

    auto smaller = host();
    smaller.imageCacheCapacity = 1500;
    install(std::move(smaller));
    download(server_.url("/d"));
    EXPECT_EQ(fetches(), 5U) << "the one used last survives a restart with less room";
    download(server_.url("/a"));
    EXPECT_EQ(fetches(), 6U);
}

TEST_F(ImageTest, LeftoversOfAKilledProcessDoNoHarm) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)});
    ASSERT_TRUE(download(server_.url("/picture"), "kept"));
    fs::path images = folder_.path() / "images";
    std::ofstream(images / "0123.image.new") << "half a pic";
    std::ofstream(images / "4567.identifiers") << "orphan\n";
    std::ofstream(images / "89ab.image") << "no line break";
    std::ofstream(images / "cdef.image");

    install(host());
    EXPECT_TRUE(download("other:", "kept"));
    EXPECT_FALSE(download("other:", "orphan"));
    EXPECT_FALSE(fs::exists(images / "0123.image.new"));
    EXPECT_FALSE(fs::exists(images / "4567.identifiers"));
    EXPECT_EQ(fetches(), 1U);
}

TEST(ImageCacheTest, IsSoundWheneverItsProcessIsKilled) {
    TemporaryFolder folder;
    const std::string bytes(10000, 'x');
    int written[2];
    ASSERT_EQ(pipe(written), 0);
    pid_t child = fork();
    if (child == 0) {
        ImageCache cache(std::make_shared<FileDisk>(), folder.path(), 1 << 30);
        for (int at = 0;; ++at) {
            cache.insert("url" + std::to_string(at), bytes);
            cache.identify("url" + std::to_string(at), "id" + std::to_string(at));
            if (write(written[1], "x", 1) != 1) _exit(1);
        }
    }
    for (char next = 0, count = 0; count < 50; ++count) ASSERT_EQ(read(written[0], &next, 1), 1);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(written[0]);
    close(written[1]);

    ImageCache cache(std::make_shared<FileDisk>(), folder.path(), 1 << 30);
    for (int at = 0; at < 50; ++at) EXPECT_EQ(cache.find({}, "id" + std::to_string(at)), bytes);
    for (const auto& file : fs::directory_iterator(folder.path())) EXPECT_NE(file.path().extension(), ".new");
}

TEST_F(ImageTest, WhatTheDiskDamagedOrLostIsFetchedAgain) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)});
    ASSERT_TRUE(download(server_.url("/picture")));
    auto file = fs::directory_iterator(folder_.path() / "images")->path();

    std::ofstream(file) << server_.url("/picture") << "\nno picture any more";
    EXPECT_TRUE(download(server_.url("/picture")));
    EXPECT_EQ(fetches(), 2U);
    fs::remove(file);
    EXPECT_TRUE(download(server_.url("/picture")));
    EXPECT_EQ(fetches(), 3U);
}

TEST_F(ImageTest, RemovingAllEmptiesTheCache) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(40, 30)});
    download(server_.url("/picture"), "identifier");
    ImageUtility::removeAllCachedImages();
    EXPECT_FALSE(download("other:", "identifier"));
    EXPECT_TRUE(fs::is_empty(folder_.path() / "images"));
    ImageUtility::downloadImage(*URL::parse(server_.url("/picture")), {}, [](const DataResult&) {});
    ImageUtility::removeAllCachedImages();
    dispatcher().runUntilIdle();
    EXPECT_EQ(fetches(), 2U);
    EXPECT_TRUE(fs::is_empty(folder_.path() / "images")) << "what was under way is not kept either";
}

TEST_F(ImageLoaderTest, DecodesAtNoMoreThanTheLayoutNeeds) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(2000, 1000)});
    auto loader = load({URL::parse(server_.url("/picture"))});
    loader->setPlaceholder(squarePlaceholder());
    EXPECT_EQ(layOut(*loader, 300), (Size{10, 10}));

    dispatcher().runUntilIdle();
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(*loader->currentImage().bitmap, *squarePlaceholder().bitmap);
    EXPECT_EQ(layOut(*loader, 300), (Size{2000, 1000})) << "the placeholder takes the picture's proportions";
    dispatcher().runUntilIdle();
    EXPECT_EQ(changes_, 2);
    EXPECT_EQ(loader->currentImage().bitmap->width, 300);
    EXPECT_EQ(loader->currentImage().bitmap->height, 150);

    layOut(*loader, 200);
    dispatcher().runUntilIdle();
    EXPECT_EQ(changes_, 2) << "a smaller layout keeps the pixels";
    layOut(*loader, 600);
    dispatcher().runUntilIdle();
    EXPECT_EQ(loader->currentImage().bitmap->width, 600);
    EXPECT_EQ(fetches(), 1U);
}

TEST_F(ImageLoaderTest, KeepsThePlaceholderWhenThereIsNoPicture) {
    for (const ImageRequest& request : {ImageRequest{URL::parse(server_.url("/missing"))}, ImageRequest{},
                                        ImageRequest{URL::parse(server_.url("/unfetched")), "unknown", false}}) {
        auto loader = load(request);
        loader->setPlaceholder(squarePlaceholder());
        dispatcher().runUntilIdle();
        EXPECT_EQ(layOut(*loader, 300), (Size{10, 10}));
    }
    EXPECT_EQ(changes_, 0);
    EXPECT_EQ(fetches(), 1U);
}

TEST_F(ImageLoaderTest, ShowsFromTheCacheAloneAndFetchesWhatTheCacheHasLost) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(20, 10)});
    download(server_.url("/picture"), "identifier");
    auto cached = load({{}, "identifier", false});
    auto lost = load({URL::parse(server_.url("/picture")), "identifier"});
    dispatcher().runUntilIdle();
    layOut(*cached, 300);
    dispatcher().runUntilIdle();
    EXPECT_EQ(cached->currentImage().bitmap->width, 20) << "never enlarged";
    EXPECT_EQ(fetches(), 1U);

    ImageUtility::removeAllCachedImages();
    layOut(*lost, 300);
    dispatcher().runUntilIdle();
    EXPECT_EQ(lost->currentImage().bitmap->width, 20);
    EXPECT_EQ(fetches(), 2U);
}

TEST_F(ImageLoaderTest, AWindowThatIsGoneIsNotCalled) {
    server_.reply("/picture", {.body = FakeImageDecoder::encode(20, 10)});
    load({URL::parse(server_.url("/picture"))}).reset();
    dispatcher().runUntilIdle();
    EXPECT_EQ(changes_, 0);
}

using ThreadedImageTest = CoreFixture<ThreadedDispatcher>;

TEST_F(ThreadedImageTest, ADeadHostHoldsUpNeitherTheCacheNorOthersAndItsWaitersJoin) {
    LoopbackServer dead, alive;
    std::string picture = FakeImageDecoder::encode(40, 30);
    dead.reply("/picture", {.body = picture});
    alive.reply("/picture", {.body = picture});
    dead.hold();

    std::vector<std::promise<bool>> waiting(50);
    for (auto& promise : waiting) {
        ImageUtility::downloadImage(*URL::parse(dead.url("/picture")), {},
                                    [&promise](const DataResult& result) { promise.set_value(result.succeeded()); });
    }
    dead.waitForRequests(1);
    for (int round = 0; round < 2; ++round) {
        std::promise<bool> other;
        ImageUtility::downloadImage(*URL::parse(alive.url("/picture")), {},
                                    [&other](const DataResult& result) { other.set_value(result.succeeded()); });
        EXPECT_TRUE(other.get_future().get());
    }
    dead.release();
    for (auto& promise : waiting) EXPECT_TRUE(promise.get_future().get());
    EXPECT_EQ(dead.requests().size(), 1U);
    EXPECT_EQ(alive.requests().size(), 1U);
}
