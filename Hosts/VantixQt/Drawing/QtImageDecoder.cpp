#include "VantixQt/Drawing/QtImageDecoder.h"

#include "Platform/Values/WordTable.h"
#include "VantixQt/Drawing/EncodedImage.h"
#include "VantixQt/Drawing/PNGScanLines.h"
#include "VantixQt/Drawing/RequiredApplication.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vantix {

namespace {

constexpr std::int64_t mostPixels = 40'000'000;
/// Of a picture that never has all of them in memory; it takes some seconds.
constexpr std::int64_t mostPixelsLineByLine = 16 * mostPixels;
/// Of a picture with the most pixels, at 16 bits a channel.
constexpr int mostMegabytes = 320;

/// Qt's names.
constexpr WordTable<EncodedImage::Format, 4> formatNames{{
    {EncodedImage::Format::png, "png"},
    {EncodedImage::Format::jpeg, "jpeg"},
    {EncodedImage::Format::gif, "gif"},
    {EncodedImage::Format::webp, "webp"},
}};

std::int64_t area(const QSize& size) { return std::int64_t{size.width()} * size.height(); }

/// The largest size of the same shape within `bound` that is no enlargement; `bound` itself if that has the shape but
/// for the rounding to pixels.
QSize fitted(const QSize& size, PixelSize bound) {
    double most = std::sqrt(double(mostPixels) / double(area(size)));
    double ratio = std::min({1.0, most, double(bound.width) / size.width(), double(bound.height) / size.height()});
    auto scaled = [ratio](int length, int limit) {
        double exact = length * ratio;
        bool isLimit = std::abs(exact - limit) < 1 && limit > 0 && limit <= length;
        return isLimit ? limit : std::max(1, static_cast<int>(std::lround(exact)));
    };
    return {scaled(size.width(), bound.width), scaled(size.height(), bound.height)};
}

/// The size at which a JPEG is decoded: by a half, a quarter or an eighth smaller as long as that is twice as large as
/// what it is then scaled to, and as far as it must be to stay within the most pixels.
QSize reduced(const QSize& size, const QSize& needed) {
    QSize result = size;
    for (int divisor : {2, 4, 8}) {
        QSize smaller(size.width() / divisor, size.height() / divisor);
        bool isPlenty = smaller.width() >= 2 * needed.width() && smaller.height() >= 2 * needed.height();
        if (isPlenty || area(result) > mostPixels) result = smaller.expandedTo({1, 1});
    }
    return result;
}

/// A picture's bytes, opened: its header is read, its pixels are not.
class OpenedImage {
public:
    OpenedImage(std::string_view bytes, EncodedImage::Format format)
        : bytes_(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))),
          device_(&bytes_),
          reader_(&device_, formatNames.word(format).data()) {
        reader_.setAutoTransform(true);
    }

    Result<QSize> uprightSize() {
        QSize size = reader_.size();
        if (size.isEmpty()) return error();
        return isTurned() ? size.transposed() : size;
    }

    Result<QImage> read(const QSize& uprightSize) {
        reader_.setScaledSize(isTurned() ? uprightSize.transposed() : uprightSize);
        QImage pixels = reader_.read();
        if (pixels.isNull()) return error();
        return pixels;
    }

private:
    Error error() const { return {reader_.errorString().toStdString()}; }
    bool isTurned() const { return reader_.transformation().testFlag(QImageIOHandler::TransformationRotate90); }

    QByteArray bytes_;
    QBuffer device_;
    QImageReader reader_;
};

Result<QImage> decodedScaled(std::string_view bytes, const QSize& size, const QSize& needed) {
    EncodedImage::Format format = *EncodedImage::format(bytes);
    if (format == EncodedImage::Format::png && area(size) > mostPixels) {
        QImage image = scaledFromScanLines(bytes, needed);
        if (image.isNull()) return Error{"a line cannot be read"};
        return image;
    }
    OpenedImage image(bytes, format);
    return image.read(format == EncodedImage::Format::jpeg ? reduced(size, needed) : size);
}

/// The filter must not see the colours of pixels that show none of it.
QImage scaled(QImage image, const QSize& size) {
    if (image.colorSpace().isValid()) image.convertToColorSpace(QColorSpace::SRgb);
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::shared_ptr<const Bitmap> toBitmap(const QImage& image) {
    auto bitmap = std::make_shared<Bitmap>();
    bitmap->width = image.width();
    bitmap->height = image.height();
    auto width = static_cast<std::size_t>(image.width());
    bitmap->pixels.resize(width * static_cast<std::size_t>(image.height()));
    auto row = bitmap->pixels.begin();
    for (int y = 0; y < image.height(); ++y, row += image.width()) {
        const auto* line = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
        std::copy_n(line, width, row);
    }
    return bitmap;
}

}  // namespace

QtImageDecoder::QtImageDecoder() {
    requireApplication("QtImageDecoder");
    QImageReader::setAllocationLimit(mostMegabytes);
}

Result<PixelSize> QtImageDecoder::probe(std::string_view bytes) const {
    auto format = EncodedImage::format(bytes);
    if (!format) return Error{"the bytes are no PNG, JPEG, GIF or WebP picture"};
    if (!EncodedImage::isIntact(bytes, *format)) return Error{"the picture is damaged or its end is missing"};
    Result<QSize> size = OpenedImage(bytes, *format).uprightSize();
    if (!size) return Error{"the picture's header cannot be read: " + size.error().localizedDescription};
    return PixelSize{size.value().width(), size.value().height()};
}

Result<Image> QtImageDecoder::decode(std::string_view bytes, PixelSize bound) const {
    Result<PixelSize> size = probe(bytes);
    if (!size) return size.error();
    auto [width, height] = size.value();
    const QSize whole(width, height);
    const QSize needed = fitted(whole, bound);
    bool isByLine = EncodedImage::comesLineByLine(bytes, *EncodedImage::format(bytes));
    if (area(whole) > (isByLine ? mostPixelsLineByLine : mostPixels)) {
        return Error{"the picture is too large: " + std::to_string(width) + " x " + std::to_string(height) + " pixels"};
    }
    Result<QImage> pixels = decodedScaled(bytes, whole, needed);
    if (!pixels) return Error{"the picture cannot be decoded: " + pixels.error().localizedDescription};
    return Image{toBitmap(scaled(pixels.value(), needed)), nullptr, {double(width), double(height)}};
}

}  // namespace vantix
