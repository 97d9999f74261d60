#include "VantixQt/Drawing/QtImageDecoder.h"

#include "VantixQt/Drawing/DecodingTime.h"
#include "VantixQt/Drawing/EncodedImage.h"
#include "VantixQt/Drawing/GIFScanLines.h"
#include "VantixQt/Drawing/JPEGScanLines.h"
#include "VantixQt/Drawing/PNGScanLines.h"
#include "VantixQt/Drawing/ReducedPicture.h"
#include "VantixQt/Drawing/RequiredApplication.h"
#include "VantixQt/Drawing/WebPFrame.h"

#include <QColorSpace>
#include <QImage>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

namespace vantix {

namespace {

using Format = EncodedImage::Format;

constexpr std::int64_t mostPixels = 40'000'000;
/// Of a picture that never has all of them in memory; so many take two seconds at most.
constexpr std::int64_t mostPixelsLineByLine = 4 * mostPixels;
constexpr std::int64_t mostPixelsOfResult = 10'000'000;
/// A picture that leaves no memory for so many is refused.
constexpr std::int64_t leastPixelsOfResult = 500'000;
/// Of a picture's bytes, of what decoding takes, and of the result.
constexpr std::int64_t mostMemory = std::int64_t{80} << 20;

Error isNoPicture() { return {"the bytes are no PNG, JPEG, GIF or WebP picture"}; }

Error cannotBeOpened() { return {"the picture's header cannot be read"}; }

/// What a picture must leave of the memory that a decode may take.
struct Cost {
    std::int64_t picture = 0;
    std::int64_t perPixelOfResult = 4;

    /// Absent if the picture leaves too little.
    std::optional<PixelSize> fitting(PixelSize size, PixelSize bound) const {
        std::int64_t most = std::min(mostPixelsOfResult, (mostMemory - picture) / perPixelOfResult);
        PixelSize wanted = fitted(size, bound, mostPixelsOfResult);
        if (most < std::min(area(wanted), leastPixelsOfResult)) return std::nullopt;
        return fitted(size, bound, most);
    }
};

Error tooLarge(PixelSize size) {
    return {"the picture is too large: " + std::to_string(size.width) + " x " + std::to_string(size.height) +
            " pixels"};
}

Error cannotBeDecoded(const DecodingTime& time) {
    return {time.isOver() ? "the picture takes too long to decode" : "the picture cannot be decoded"};
}

Result<std::unique_ptr<ScanLines>> opened(std::string_view bytes, Format format, const DecodingTime& time) {
    switch (format) {
        case Format::png:
            return pngScanLines(bytes);
        case Format::jpeg:
            return jpegScanLines(bytes, time);
        case Format::gif:
            return gifScanLines(bytes);
        case Format::webp:
            break;
    }
    return Error{"no format of lines"};
}

void convertToSRGB(Bitmap& bitmap, const QColorSpace& colorSpace) {
    if (!colorSpace.isValid()) return;
    auto* pixels = reinterpret_cast<uchar*>(bitmap.pixels.data());
    QImage image(pixels, bitmap.width, bitmap.height, QImage::Format_ARGB32_Premultiplied);
    image.setColorSpace(colorSpace);
    image.convertToColorSpace(QColorSpace::SRgb);
    if (image.constBits() != pixels) std::memcpy(pixels, image.constBits(), 4 * bitmap.pixels.size());
}

Result<Bitmap> decodedLines(ScanLines& lines, PixelSize target, const DecodingTime& time) {
    auto source = lines.begin(target);
    if (!source) return cannotBeDecoded(time);
    ReducedPicture picture(*source, target, lines.orientation(), lines.comeInOrder());
    for (std::int64_t left = area(*source); left > 0;) {
        auto line = lines.next();
        if (!line || time.isOver()) return cannotBeDecoded(time);
        picture.add(*line);
        left -= static_cast<std::int64_t>(line->pixels.size());
    }
    return picture.take();
}

/// Absent for a picture that needs too much memory.
std::optional<PixelSize> affordable(const ScanLines& lines, std::int64_t bytesOfPicture, PixelSize bound) {
    const std::int64_t picture = bytesOfPicture + lines.memory();
    if (area(lines.size()) > (lines.comeInOrder() ? mostPixelsLineByLine : mostPixels)) return std::nullopt;
    const Cost unreduced{picture, ReducedPicture::memoryPerPixel(false, lines.comeInOrder())};
    auto target = unreduced.fitting(lines.size(), bound);
    if (!target || *target == lines.size()) return target;
    return Cost{picture, ReducedPicture::memoryPerPixel(true, lines.comeInOrder())}.fitting(lines.size(), bound);
}

Result<Image> image(Bitmap bitmap, const QColorSpace& colorSpace, PixelSize naturalSize) {
    auto shared = std::make_shared<Bitmap>(std::move(bitmap));
    convertToSRGB(*shared, colorSpace);
    return Image{std::move(shared), nullptr, {double(naturalSize.width), double(naturalSize.height)}};
}

Result<Image> decodedByLines(std::string_view bytes, Format format, PixelSize bound, const DecodingTime& time) {
    auto opening = opened(bytes, format, time);
    if (!opening) return opening.error();
    ScanLines& lines = *opening.value();
    const PixelSize upright = lines.orientation().applied(lines.size());
    auto target = affordable(lines, std::ssize(bytes), lines.orientation().applied(bound));
    if (!target) return tooLarge(upright);
    Result<Bitmap> bitmap = decodedLines(lines, *target, time);
    if (!bitmap) return bitmap.error();
    return image(std::move(bitmap).value(), lines.colorSpace(), upright);
}

Result<Image> decodedWebP(std::string_view bytes, PixelSize bound, const DecodingTime& time) {
    auto frame = WebPFrame::find(bytes);
    if (!frame) return cannotBeOpened();
    if (area(frame->canvas) > mostPixels) return tooLarge(frame->canvas);
    auto target = Cost{std::ssize(bytes) + frame->memory()}.fitting(frame->canvas, bound);
    if (!target) return tooLarge(frame->canvas);
    auto bitmap = frame->decoded(*target, time);
    if (!bitmap) return cannotBeDecoded(time);
    return image(std::move(*bitmap), frame->colorSpace(), frame->canvas);
}

/// Qt tells standard error what it dislikes about a colour profile; such a picture is shown without it.
void silenceColorProfiles() {
    static QLoggingCategory::CategoryFilter others = nullptr;
    static const bool isInstalled = [] {
        others = QLoggingCategory::installFilter([](QLoggingCategory* category) {
            if (others) others(category);
            if (std::strcmp(category->categoryName(), "qt.gui.icc") == 0) category->setEnabled(QtWarningMsg, false);
        });
        return true;
    }();
    static_cast<void>(isInstalled);
}

}  // namespace

QtImageDecoder::QtImageDecoder(std::chrono::milliseconds patience) : patience_(patience) {
    requireApplication("QtImageDecoder");
    silenceColorProfiles();
}

Result<PixelSize> QtImageDecoder::probe(std::string_view bytes) const {
    auto format = EncodedImage::format(bytes);
    if (!format) return isNoPicture();
    if (format == Format::webp) {
        auto frame = WebPFrame::find(bytes);
        if (!frame) return cannotBeOpened();
        return frame->canvas;
    }
    const DecodingTime time(patience_);
    auto lines = opened(bytes, *format, time);
    if (!lines) return lines.error();
    return lines.value()->orientation().applied(lines.value()->size());
}

Result<Image> QtImageDecoder::decode(std::string_view bytes, PixelSize bound) const {
    const DecodingTime time(patience_);
    auto format = EncodedImage::format(bytes);
    if (!format) return isNoPicture();
    return format == Format::webp ? decodedWebP(bytes, bound, time) : decodedByLines(bytes, *format, bound, time);
}

}  // namespace vantix
