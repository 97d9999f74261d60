#include "VantixQt/Drawing/GIFScanLines.h"

#include "VantixQt/Drawing/ByteReader.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <optional>

namespace vantix {

namespace {

using namespace std::string_view_literals;

std::size_t colorTableSize(std::uint8_t flags) {
    constexpr std::uint8_t hasColorTable = 0x80;
    return (flags & hasColorTable) != 0 ? std::size_t{3} << ((flags & 7) + 1) : 0;
}

void skipSubBlocks(ByteReader& reader) {
    while (std::uint8_t length = reader.byte()) reader.skip(length);
}

/// Absent if the end of the first picture is missing.
std::optional<std::string_view> untilEndOfFirstPicture(std::string_view bytes) {
    ByteReader reader(bytes);
    reader.skip("GIF89a"sv.size() + 4);
    std::size_t globalColorTable = colorTableSize(reader.byte());
    reader.skip(2 + globalColorTable);
    for (std::uint8_t block = reader.byte(); block == '!'; block = reader.byte()) {
        reader.skip(1);
        skipSubBlocks(reader);
        if (reader.isExhausted()) return std::nullopt;
    }
    reader.skip(8);
    std::size_t localColorTable = colorTableSize(reader.byte());
    reader.skip(localColorTable + 1);
    skipSubBlocks(reader);
    if (reader.isExhausted()) return std::nullopt;
    return bytes.substr(0, bytes.size() - reader.rest().size());
}

/// Decodes at once; what that may cost is known from the size.
class GIFScanLines final : public ScanLines {
public:
    explicit GIFScanLines(std::string_view bytes)
        : bytes_(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))),
          device_(&bytes_),
          reader_(&device_, "gif"),
          size_(reader_.size()) {}

    PixelSize size() const override { return {size_.width(), size_.height()}; }
    /// A picture, and another one in case that it is to be taken away again; Qt reserves them by the canvas even if it
    /// does not believe in that and reports a smaller size.
    std::int64_t memory() const override {
        ByteReader header(std::string_view(bytes_.constData(), static_cast<std::size_t>(bytes_.size())));
        header.skip("GIF89a"sv.size());
        const std::int64_t width = std::max<std::int64_t>(header.reversedNumber(2), size_.width());
        const std::int64_t height = std::max<std::int64_t>(header.reversedNumber(2), size_.height());
        return 8 * width * height;
    }

    std::optional<PixelSize> begin(PixelSize) override {
        image_ = reader_.read();
        image_.convertTo(QImage::Format_ARGB32);
        if (image_.isNull() || image_.size() != size_) return std::nullopt;
        return size();
    }

    std::optional<ScanLine> next() override {
        const auto* line = reinterpret_cast<const std::uint32_t*>(image_.constScanLine(y_));
        return ScanLine{y_++, 0, 1, std::span(line, static_cast<std::size_t>(size_.width()))};
    }

    QColorSpace colorSpace() const override { return {}; }

private:
    QByteArray bytes_;
    QBuffer device_;
    QImageReader reader_;
    QSize size_;
    QImage image_;
    int y_ = 0;
};

}  // namespace

Result<std::unique_ptr<ScanLines>> gifScanLines(std::string_view bytes) {
    auto first = untilEndOfFirstPicture(bytes);
    if (!first) return Error{"the picture is damaged or its end is missing"};
    auto lines = std::make_unique<GIFScanLines>(*first);
    if (lines->size().width <= 0 || lines->size().height <= 0) return Error{"the picture's header cannot be read"};
    return Result<std::unique_ptr<ScanLines>>(std::move(lines));
}

}  // namespace vantix
