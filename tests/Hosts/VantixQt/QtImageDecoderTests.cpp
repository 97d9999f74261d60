#include "VantixQt/QtImageDecoder.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <gtest/gtest.h>

#include <thread>

namespace vantix {
namespace {

using namespace std::string_literals;

/// Red on the left, blue on the right, the top row's first quarter green.
QImage sample(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            bool isCorner = x < width / 4 && y < height / 4;
            image.setPixelColor(x, y, isCorner ? Qt::green : x < width / 2 ? Qt::red : Qt::blue);
        }
    }
    return image;
}

std::string encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setQuality(100);
    EXPECT_TRUE(writer.write(image)) << format;
    return bytes.toStdString();
}

/// Two by one pixels, red and blue.
const std::string gif =
    "GIF89a\x02\0\x01\0\x80\0\0\xFF\0\0\0\0\xFF"
    "!\xF9\x04\0\0\0\0\0"
    ",\0\0\0\0\x02\0\x01\0\0\x02\x02\x44\x0A\0;"s;

std::string withOrientation(const std::string& jpeg, char orientation) {
    std::string exif = "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0"s + orientation + "\0\0\0\0\0\0"s;
    std::string segment = "\xFF\xE1\0"s + static_cast<char>(exif.size() + 2) + exif;
    return jpeg.substr(0, 2) + segment + jpeg.substr(2);
}

/// A PNG that promises so many pixels and holds none.
std::string pngHeader(std::uint32_t width, std::uint32_t height) {
    QByteArray bytes = QByteArray::fromStdString(encoded(sample(4, 4), "png"));
    auto put = [&bytes](qsizetype position, std::uint32_t number) {
        for (int i = 0; i < 4; ++i) bytes[position + i] = static_cast<char>(number >> (24 - 8 * i));
    };
    put(16, width);
    put(20, height);
    std::uint32_t crc = ~0u;
    for (char byte : bytes.sliced(12, 17)) {
        crc ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
    }
    put(29, ~crc);
    return bytes.toStdString();
}

/// One of "red", "green", "blue", as far as a lossy format allows to tell.
std::string colorName(const Image& image, int x, int y) {
    std::uint32_t pixel = image.bitmap->pixels.at(static_cast<std::size_t>(y * image.bitmap->width + x));
    auto near = [pixel](std::uint32_t other) {
        for (int shift : {0, 8, 16, 24}) {
            if (std::abs(int(pixel >> shift & 0xFF) - int(other >> shift & 0xFF)) > 40) return false;
        }
        return true;
    };
    return near(0xFFFF0000) ? "red" : near(0xFF00FF00) ? "green" : near(0xFF0000FF) ? "blue" : "other";
}

TEST(QtImageDecoder, DecodesEachFormat) {
    QtImageDecoder decoder;
    for (const char* format : {"png", "jpeg", "webp"}) {
        std::string bytes = encoded(sample(64, 32), format);
        ASSERT_TRUE(decoder.probe(bytes)) << format;
        EXPECT_EQ(decoder.probe(bytes).value(), (PixelSize{64, 32})) << format;
        Result<Image> image = decoder.decode(bytes, {1000, 1000});
        ASSERT_TRUE(image) << format << ": " << image.error().localizedDescription;
        EXPECT_EQ(image.value().naturalSize, (Size{64, 32})) << format;
        EXPECT_EQ(image.value().bitmap->width, 64) << format;
        EXPECT_EQ(colorName(image.value(), 4, 4), "green") << format;
        EXPECT_EQ(colorName(image.value(), 4, 28), "red") << format;
        EXPECT_EQ(colorName(image.value(), 60, 4), "blue") << format;
    }
    Result<Image> image = decoder.decode(gif, {10, 10});
    ASSERT_TRUE(image) << image.error().localizedDescription;
    EXPECT_EQ(image.value().bitmap->pixels, (std::vector<std::uint32_t>{0xFFFF0000, 0xFF0000FF}));
}

TEST(QtImageDecoder, AcceptsFillBytesBeforeAMarker) {
    std::string bytes = encoded(sample(8, 8), "jpeg");
    EXPECT_TRUE(QtImageDecoder().decode(bytes.insert(2, "\xFF\xFF"), {8, 8}));
}

TEST(QtImageDecoder, PremultipliesAlpha) {
    QImage image(1, 1, QImage::Format_ARGB32);
    image.fill(QColor(255, 0, 0, 128));
    Result<Image> decoded = QtImageDecoder().decode(encoded(image, "png"), {1, 1});
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded.value().bitmap->pixels, (std::vector<std::uint32_t>{0x80800000}));
}

TEST(QtImageDecoder, ScalesDownToTheBoundAndNeverUp) {
    struct Case {
        PixelSize size, bound, expected;
    };
    const Case cases[] = {
        {{64, 32}, {64, 32}, {64, 32}},     {{64, 32}, {32, 32}, {32, 16}}, {{64, 32}, {1000, 8}, {16, 8}},
        {{64, 32}, {1000, 1000}, {64, 32}}, {{300, 2}, {10, 10}, {10, 1}},  {{64, 32}, {0, 0}, {1, 1}},
    };
    for (const auto& [size, bound, expected] : cases) {
        for (const char* format : {"png", "jpeg", "webp"}) {
            Result<Image> image = QtImageDecoder().decode(encoded(sample(size.width, size.height), format), bound);
            ASSERT_TRUE(image) << format << ": " << image.error().localizedDescription;
            EXPECT_EQ((PixelSize{image.value().bitmap->width, image.value().bitmap->height}), expected) << format;
            EXPECT_EQ(image.value().naturalSize, (Size{double(size.width), double(size.height)})) << format;
        }
    }
}

TEST(QtImageDecoder, TurnsPicturesUpright) {
    struct Case {
        char orientation;
        PixelSize upright;
        int greenX, greenY;
    };
    const Case cases[] = {{1, {64, 32}, 2, 2},  {3, {64, 32}, 61, 29}, {6, {32, 64}, 29, 2},
                          {8, {32, 64}, 2, 61}, {5, {32, 64}, 2, 2},   {2, {64, 32}, 61, 2}};
    std::string jpeg = encoded(sample(64, 32), "jpeg");
    for (const auto& [orientation, upright, greenX, greenY] : cases) {
        std::string bytes = withOrientation(jpeg, orientation);
        EXPECT_EQ(QtImageDecoder().probe(bytes).value(), upright) << int(orientation);
        Result<Image> image = QtImageDecoder().decode(bytes, {64, 64});
        ASSERT_TRUE(image);
        EXPECT_EQ(image.value().naturalSize, (Size{double(upright.width), double(upright.height)}));
        EXPECT_EQ(colorName(image.value(), greenX, greenY), "green") << int(orientation);

        Result<Image> half = QtImageDecoder().decode(bytes, {upright.width / 2, upright.height});
        ASSERT_TRUE(half);
        EXPECT_EQ(half.value().bitmap->width, upright.width / 2) << int(orientation);
        EXPECT_EQ(half.value().bitmap->height, upright.height / 2) << int(orientation);
    }
}

TEST(QtImageDecoder, RefusesWhatIsNoPictureOfAKnownFormat) {
    const std::pair<const char*, std::string> cases[] = {
        {"nothing", ""},
        {"words", "this is no picture"},
        {"SVG", "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>"},
        {"BMP", encoded(sample(8, 8), "bmp")},
        {"PPM", encoded(sample(8, 8), "ppm")},
        {"a bare signature", "\x89PNG\r\n\x1A\n"},
        {"a bare WebP signature", "RIFF\x10\0\0\0WEBP"s},
    };
    for (const auto& [name, bytes] : cases) {
        EXPECT_FALSE(QtImageDecoder().probe(bytes)) << name;
        EXPECT_FALSE(QtImageDecoder().decode(bytes, {8, 8})) << name;
    }
}

TEST(QtImageDecoder, RefusesTruncatedPictures) {
    for (const char* format : {"png", "jpeg", "webp"}) {
        std::string bytes = encoded(sample(64, 64), format);
        for (std::size_t length = 0; length + 12 < bytes.size(); length += 7) {
            EXPECT_FALSE(QtImageDecoder().decode(bytes.substr(0, length), {64, 64})) << format << " " << length;
        }
    }
    for (std::size_t length = 0; length + 1 < gif.size(); ++length) {
        EXPECT_FALSE(QtImageDecoder().decode(gif.substr(0, length), {64, 64})) << "gif " << length;
    }
}

TEST(QtImageDecoder, WritesNothingToStandardErrorAboutDamagedPictures) {
    testing::internal::CaptureStderr();
    for (const char* format : {"png", "jpeg", "webp"}) {
        std::string bytes = encoded(sample(64, 64), format);
        for (std::size_t position = 12; position < bytes.size(); position += 5) {
            std::string damaged = bytes;
            damaged[position] = static_cast<char>(~damaged[position]);
            QtImageDecoder().decode(damaged, {64, 64});
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(QtImageDecoder, RefusesMoreThanFortyMegapixelsByTheHeader) {
    std::string bytes = pngHeader(8000, 5001);
    EXPECT_EQ(QtImageDecoder().probe(bytes).value(), (PixelSize{8000, 5001}));
    Result<Image> image = QtImageDecoder().decode(bytes, {10, 10});
    ASSERT_FALSE(image);
    EXPECT_EQ(image.error().localizedDescription, "the picture is too large: 8000 x 5001 pixels");
}

TEST(QtImageDecoder, WorksOnSeveralThreads) {
    QtImageDecoder decoder;
    std::string bytes = encoded(sample(64, 32), "webp");
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] { EXPECT_TRUE(decoder.decode(bytes, {32, 32})); });
    }
}

}  // namespace
}  // namespace vantix
