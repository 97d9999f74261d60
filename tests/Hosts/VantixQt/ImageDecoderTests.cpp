#include "VantixQt/Drawing/QtImageDecoder.h"
#include "VantixQt/Drawing/WebPCodes.h"
#include "tests/Support/FakeImageDecoder.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <gtest/gtest.h>

#include <thread>
#include <zlib.h>

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

std::string bigEndian(std::size_t number) {
    return {char(number >> 24), char(number >> 16 & 255), char(number >> 8 & 255), char(number & 255)};
}

std::string chunk(const std::string& typeAndData) {
    auto checksum = crc32_z(0, reinterpret_cast<const Bytef*>(typeAndData.data()), typeAndData.size());
    return bigEndian(typeAndData.size() - 4) + typeAndData + bigEndian(checksum);
}

std::string deflated(const std::string& bytes) {
    return qCompress(QByteArray::fromStdString(bytes)).toStdString().substr(4);
}

/// Of four bytes a pixel, interlaced, with `chunks` before the pixels.
std::string interlacedPNG(PixelSize size, const std::string& pixels, const std::string& chunks = {}) {
    std::string header =
        bigEndian(static_cast<std::size_t>(size.width)) + bigEndian(static_cast<std::size_t>(size.height));
    return "\x89PNG\r\n\x1A\n"s + chunk("IHDR" + header + "\x8\x6\0\0\1"s) + chunks + chunk("IDAT" + deflated(pixels)) +
           chunk("IEND");
}

/// The lines of all passes, one after the other.
std::string interlaced(const QImage& image) {
    const struct {
        int x, y, stepX, stepY;
    } passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    std::string lines;
    for (auto [firstX, firstY, stepX, stepY] : passes) {
        for (int y = firstY; y < image.height() && firstX < image.width(); y += stepY) {
            lines += '\0';
            for (int x = firstX; x < image.width(); x += stepX) {
                QRgb pixel = image.pixel(x, y);
                lines += {char(qRed(pixel)), char(qGreen(pixel)), char(qBlue(pixel)), char(qAlpha(pixel))};
            }
        }
    }
    return lines;
}

/// With as many scans more, each the same as the last, and of another size.
std::string progressiveJPEG(int moreScans, PixelSize size = {64, 32}) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    EXPECT_TRUE(writer.write(sample(64, 32)));
    std::string jpeg = bytes.toStdString();
    auto frame = jpeg.find("\xFF\xC2"), scan = jpeg.rfind("\xFF\xDA");
    jpeg.replace(frame + 5, 4, bigEndian(static_cast<std::size_t>(size.height << 16 | size.width)));
    std::string last = jpeg.substr(scan, jpeg.size() - 2 - scan);
    while (moreScans-- > 0) jpeg.insert(scan, last);
    return jpeg;
}

/// Whether the pixel has the colour, as far as a lossy format allows to tell.
bool hasColor(const Image& image, int x, int y, QColor color) {
    QColor pixel(image.bitmap->pixels.at(static_cast<std::size_t>(y * image.bitmap->width + x)));
    return std::abs(pixel.red() - color.red()) + std::abs(pixel.green() - color.green()) +
               std::abs(pixel.blue() - color.blue()) <
           90;
}

struct Fake {
    using Decoder = FakeImageDecoder;
    static std::string picture(PixelSize size) { return Decoder::encode(size.width, size.height); }
    static std::string hugePicture(PixelSize size) { return picture(size); }
};

struct OfQt {
    using Decoder = QtImageDecoder;
    static std::string picture(PixelSize size) { return encoded(sample(size.width, size.height), "png"); }
    static std::string hugePicture(PixelSize size) { return interlacedPNG(size, {}); }
};

/// What every decoder owes.
template <typename Pictures>
class ImageDecoderContract : public testing::Test {
protected:
    typename Pictures::Decoder decoder;
};

using Decoders = testing::Types<Fake, OfQt>;
TYPED_TEST_SUITE(ImageDecoderContract, Decoders);

TYPED_TEST(ImageDecoderContract, ScalesDownToTheBoundAndNeverUp) {
    const struct {
        PixelSize size, bound, expected;
    } cases[] = {
        {{64, 32}, {64, 32}, {64, 32}},     {{64, 32}, {32, 32}, {32, 16}}, {{64, 32}, {1000, 8}, {16, 8}},
        {{64, 32}, {1000, 1000}, {64, 32}}, {{300, 2}, {10, 10}, {10, 1}},  {{64, 32}, {0, 0}, {1, 1}},
    };
    for (const auto& [size, bound, expected] : cases) {
        std::string bytes = TypeParam::picture(size);
        EXPECT_EQ(this->decoder.probe(bytes).value(), size);
        Result<Image> image = this->decoder.decode(bytes, bound);
        ASSERT_TRUE(image) << image.error().localizedDescription;
        EXPECT_EQ((PixelSize{image.value().bitmap->width, image.value().bitmap->height}), expected);
        EXPECT_EQ(image.value().bitmap->pixels.size(), static_cast<std::size_t>(expected.width * expected.height));
        EXPECT_EQ(image.value().naturalSize, (Size{double(size.width), double(size.height)}));
    }
}

TYPED_TEST(ImageDecoderContract, RefusesWhatIsNoWholePicture) {
    std::string whole = TypeParam::picture({64, 32});
    for (const std::string& bytes :
         {std::string(), std::string("this is no picture"), whole.substr(0, whole.size() / 2)}) {
        EXPECT_FALSE(this->decoder.probe(bytes)) << bytes;
        EXPECT_FALSE(this->decoder.decode(bytes, {8, 8})) << bytes;
    }
}

TYPED_TEST(ImageDecoderContract, RefusesMoreThanFortyMegapixelsByTheHeader) {
    PixelSize size{8000, 5001};
    std::string bytes = TypeParam::hugePicture(size);
    EXPECT_EQ(this->decoder.probe(bytes).value(), size);
    Result<Image> image = this->decoder.decode(bytes, {10, 10});
    ASSERT_FALSE(image);
    EXPECT_EQ(image.error().localizedDescription, "the picture is too large: 8000 x 5001 pixels");
}

TYPED_TEST(ImageDecoderContract, WorksOnSeveralThreads) {
    std::string bytes = TypeParam::picture({64, 32});
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] { EXPECT_TRUE(this->decoder.decode(bytes, {32, 32})); });
    }
}

TEST(QtImageDecoder, DecodesEachFormatAtEverySize) {
    QtImageDecoder decoder;
    for (const char* format : {"png", "jpeg", "webp"}) {
        for (int divisor : {1, 2}) {
            Result<Image> image = decoder.decode(encoded(sample(64, 32), format), {64 / divisor, 1000});
            ASSERT_TRUE(image) << format << ": " << image.error().localizedDescription;
            EXPECT_EQ(image.value().bitmap->width, 64 / divisor) << format;
            EXPECT_TRUE(hasColor(image.value(), 4 / divisor, 4 / divisor, Qt::green)) << format;
            EXPECT_TRUE(hasColor(image.value(), 4 / divisor, 28 / divisor, Qt::red)) << format;
            EXPECT_TRUE(hasColor(image.value(), 60 / divisor, 4 / divisor, Qt::blue)) << format;
        }
    }
    Result<Image> image = decoder.decode(gif, {10, 10});
    ASSERT_TRUE(image) << image.error().localizedDescription;
    EXPECT_EQ(image.value().bitmap->pixels, (std::vector<std::uint32_t>{0xFFFF0000, 0xFF0000FF}));
}

TEST(QtImageDecoder, DecodesWhatIsTooLargeForMemoryAtTheSizeNeeded) {
    QImage huge(9000, 4500, QImage::Format_Grayscale8);
    for (int y = 0; y < huge.height(); ++y) std::fill_n(huge.scanLine(y), huge.width(), y < 2250 ? 0 : 255);
    for (const char* format : {"png", "jpeg"}) {
        Result<Image> image = QtImageDecoder(std::chrono::minutes(1)).decode(encoded(huge, format), {300, 300});
        ASSERT_TRUE(image) << format << ": " << image.error().localizedDescription;
        EXPECT_EQ(image.value().bitmap->height, 150);
        EXPECT_EQ(image.value().naturalSize, (Size{9000, 4500}));
        EXPECT_TRUE(hasColor(image.value(), 299, 74, Qt::black)) << format;
        EXPECT_TRUE(hasColor(image.value(), 0, 76, Qt::white)) << format;
    }
}

TEST(QtImageDecoder, ShowsNoColoursOfWhatIsTransparentWhenItScales) {
    QImage image(101, 67, QImage::Format_ARGB32);
    for (int at = 0; at < 101 * 67; ++at) {
        image.setPixel(at % 101, at / 101, at % 7 < 3 ? 0x0000FF00U : qRgba(255, 0, at % 256, 55 + at % 200));
    }
    for (const char* format : {"png", "webp"}) {
        Bitmap bitmap = *QtImageDecoder().decode(encoded(image, format), {40, 26}).value().bitmap;
        for (std::uint32_t pixel : bitmap.pixels) ASSERT_LE(qGreen(pixel), format[0] == 'p' ? 1 : 40) << format;
        EXPECT_EQ(bitmap.width, 40) << "a bound of the same shape is filled";
    }
    const QImage premultiplied = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (QSize size : {QSize(101, 67), QSize(40, 26), QSize(1, 1)}) {
        const QImage scaled = premultiplied.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        for (const std::string& png : {encoded(image, "png"), interlacedPNG({101, 67}, interlaced(image))}) {
            Bitmap bitmap = *QtImageDecoder().decode(png, {size.width(), size.height()}).value().bitmap;
            const int tolerance = size == image.size() ? 0 : 6;
            for (std::size_t at = 0; at < bitmap.pixels.size(); ++at) {
                QRgb one = bitmap.pixels[at], other = reinterpret_cast<const QRgb*>(scaled.constBits())[at];
                for (int shift : {0, 8, 16, 24}) ASSERT_NEAR(one >> shift & 255, other >> shift & 255, tolerance) << at;
            }
        }
    }
}

TEST(QtImageDecoder, PassesOverWhatNoPixelDependsOn) {
    const std::string text = chunk("zTXtname\0\0"s + deflated(std::string(7'000'000, 'a')));
    std::string texts;
    for (int count = 0; count < 200; ++count) texts += text;
    Result<Image> image = QtImageDecoder(std::chrono::milliseconds(500))
                              .decode(interlacedPNG({64, 32}, interlaced(sample(64, 32)), texts), {64, 64});
    ASSERT_TRUE(image) << image.error().localizedDescription;
    EXPECT_TRUE(hasColor(image.value(), 60, 4, Qt::blue));
}

TEST(QtImageDecoder, RefusesWhatCostsMoreThanItsSizeMay) {
    EXPECT_TRUE(QtImageDecoder().decode(progressiveJPEG(20), {64, 64}));
    std::string hugeGIF = gif;
    hugeGIF.replace(6, 4, "\0\x18\0\x18"s);
    std::string hidden = progressiveJPEG(40), startedTwice = progressiveJPEG(0).insert(2, "\xFF\xD8\0\2"s);
    auto first = progressiveJPEG(0).rfind("\xFF\xDA"), last = hidden.rfind("\xFF\xDA");
    hidden.insert(first, "\xFF\x01" + bigEndian(last - first + 2).substr(2));
    const struct {
        std::string bytes, error;
    } cases[] = {{progressiveJPEG(40), "the picture has too many scans"},
                 {hidden, "the picture has too many scans"},
                 {startedTwice, "the picture is damaged"},
                 {progressiveJPEG(0, {6320, 6320}), "the picture is too large: 6320 x 6320 pixels"},
                 {hugeGIF, "the picture is too large"}};
    for (const auto& [bytes, error] : cases) {
        Result<Image> image = QtImageDecoder().decode(bytes, {64, 64});
        ASSERT_FALSE(image) << error;
        EXPECT_EQ(image.error().localizedDescription.substr(0, error.size()), error);
    }
}

TEST(QtImageDecoder, CountsTheGroupsOfCodesOfALosslessWebP) {
    std::string bits;
    auto put = [&bits](std::uint32_t number, int count) {
        while (count-- > 0) bits += (number & 1) != 0 ? '1' : '0', number >>= 1;
    };
    put(0x2F, 8), put(63, 14), put(63, 14), put(0, 4);  // 64 x 64 pixels
    put(0, 1), put(0, 1), put(1, 1), put(0, 3);         // No transform, no cache, a group for each block of 4 x 4.
    put(0, 1);
    // Green has 256 words of eight bits, whose lengths have one bit each, and then zeros, 138 at most at a time.
    put(0, 1), put(8, 4), put(0, 3), put(1, 3), put(0, 27), put(1, 3), put(0, 1);
    bits += std::string(256, '0');
    put(1, 1), put(13, 7);
    for (int code = 0; code < 4; ++code) put(1, 4);  // One symbol each.
    for (std::uint32_t pixel = 0; pixel < 256; ++pixel) put(pixel, 8);
    std::string payload((bits.size() + 7) / 8, '\0');
    for (std::size_t at = 0; at < bits.size(); ++at) payload[at / 8] |= static_cast<char>((bits[at] - '0') << (at % 8));
    EXPECT_EQ(memoryForCodesOfVP8L(payload), 256 * (4 * 2957 + 568));
}

TEST(QtImageDecoder, GivesUpWhatTakesTooLong) {
    for (const std::string& bytes :
         {encoded(sample(64, 32), "png"), progressiveJPEG(0), encoded(sample(64, 32), "webp")}) {
        Result<Image> image = QtImageDecoder(std::chrono::milliseconds(0)).decode(bytes, {64, 64});
        ASSERT_FALSE(image);
        EXPECT_EQ(image.error().localizedDescription, "the picture takes too long to decode");
    }
}

TEST(QtImageDecoder, AcceptsFillBytesBeforeAMarkerAndPremultipliesAlpha) {
    std::string jpeg = encoded(sample(8, 8), "jpeg");
    EXPECT_TRUE(QtImageDecoder().decode(jpeg.insert(2, "\xFF\xFF"), {8, 8}));
    QImage image(1, 1, QImage::Format_ARGB32);
    image.fill(QColor(255, 0, 0, 128));
    EXPECT_EQ(QtImageDecoder().decode(encoded(image, "png"), {1, 1}).value().bitmap->pixels.at(0), 0x80800000U);
}

TEST(QtImageDecoder, TurnsPicturesUpright) {
    const struct {
        char orientation;
        PixelSize upright;
        int greenX, greenY;
    } cases[] = {{1, {64, 32}, 2, 2},  {3, {64, 32}, 61, 29}, {6, {32, 64}, 29, 2},
                 {8, {32, 64}, 2, 61}, {5, {32, 64}, 2, 2},   {2, {64, 32}, 61, 2}};
    for (const auto& [orientation, upright, greenX, greenY] : cases) {
        std::string bytes = withOrientation(encoded(sample(64, 32), "jpeg"), orientation);
        EXPECT_EQ(QtImageDecoder().probe(bytes).value(), upright) << int(orientation);
        Image image = QtImageDecoder().decode(bytes, {64, 64}).value();
        EXPECT_EQ(image.naturalSize, (Size{double(upright.width), double(upright.height)}));
        EXPECT_TRUE(hasColor(image, greenX, greenY, Qt::green)) << int(orientation);
        EXPECT_EQ(QtImageDecoder().decode(bytes, {upright.width / 2, 64}).value().bitmap->height, upright.height / 2);
    }
}

TEST(QtImageDecoder, RefusesOtherFormatsAndBareSignatures) {
    for (const std::string& bytes :
         {"<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>"s, encoded(sample(8, 8), "bmp"),
          encoded(sample(8, 8), "ppm"), "\x89PNG\r\n\x1A\n"s, "RIFF\x10\0\0\0WEBP"s}) {
        EXPECT_FALSE(QtImageDecoder().probe(bytes)) << bytes;
        EXPECT_FALSE(QtImageDecoder().decode(bytes, {8, 8})) << bytes;
    }
}

TEST(QtImageDecoder, RefusesDamagedPicturesSilently) {
    testing::internal::CaptureStderr();
    std::string profile =
        "\xFF\xE2\0\xD2"
        "ICC_PROFILE\0\1\1"s +
        std::string(194, 'p');
    EXPECT_TRUE(QtImageDecoder().decode(encoded(sample(64, 64), "jpeg").insert(2, profile), {64, 64}));
    EXPECT_FALSE(QtImageDecoder().decode(interlacedPNG({64, 64}, "no lines"), {64, 64}));
    for (const char* format : {"png", "jpeg", "webp", "gif"}) {
        const std::string bytes = format == std::string("gif") ? gif : encoded(sample(64, 64), format);
        for (std::size_t length = 0; length + 12 < bytes.size(); length += 7) {
            EXPECT_FALSE(QtImageDecoder().decode(bytes.substr(0, length), {64, 64})) << format << " " << length;
            std::string damaged = bytes;
            damaged[length + 12] = static_cast<char>(~damaged[length + 12]);
            QtImageDecoder().decode(damaged, {64, 64});
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace vantix
