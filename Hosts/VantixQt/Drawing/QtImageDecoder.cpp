#include "VantixQt/Drawing/QtImageDecoder.h"

#include "Platform/Values/WordTable.h"
#include "VantixQt/Drawing/EncodedImage.h"
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
/// Of a picture with the most pixels, at 16 bits a channel.
constexpr int mostMegabytes = 320;

/// Qt's names.
constexpr WordTable<EncodedImage::Format, 4> formatNames{{
    {EncodedImage::Format::png, "png"},
    {EncodedImage::Format::jpeg, "jpeg"},
    {EncodedImage::Format::gif, "gif"},
    {EncodedImage::Format::webp, "webp"},
}};

/// The largest size of the same shape within `bound` that is no enlargement.
QSize fitted(const QSize& size, PixelSize bound) {
    double ratio = std::min({1.0, double(bound.width) / size.width(), double(bound.height) / size.height()});
    auto scaled = [ratio](int length) { return std::max(1, static_cast<int>(std::lround(length * ratio))); };
    return {scaled(size.width()), scaled(size.height())};
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

std::shared_ptr<const Bitmap> toBitmap(QImage image) {
    if (image.colorSpace().isValid()) image.convertToColorSpace(QColorSpace::SRgb);
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
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
    if (std::int64_t{width} * height > mostPixels) {
        return Error{"the picture is too large: " + std::to_string(width) + " x " + std::to_string(height) + " pixels"};
    }
    OpenedImage image(bytes, *EncodedImage::format(bytes));
    Result<QImage> pixels = image.read(fitted({width, height}, bound));
    if (!pixels) return Error{"the picture cannot be decoded: " + pixels.error().localizedDescription};
    return Image{toBitmap(pixels.value()), nullptr, {double(width), double(height)}};
}

}  // namespace vantix
