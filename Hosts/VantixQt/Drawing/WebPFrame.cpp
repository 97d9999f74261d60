#include "VantixQt/Drawing/WebPFrame.h"

#include "VantixQt/Drawing/ByteReader.h"
#include "VantixQt/Drawing/WebPCodes.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <memory>
#include <webp/decode.h>

namespace vantix {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t chunkHeader = 8;
constexpr std::size_t largestProfile = std::size_t{4} << 20;

const std::uint8_t* unsignedBytes(std::string_view bytes) {
    return reinterpret_cast<const std::uint8_t*>(bytes.data());
}

int lengthBelow(ByteReader& reader) { return static_cast<int>(reader.reversedNumber(3)) + 1; }

/// Where the frame's side begins and how long it is when the canvas is reduced.
struct Side {
    Side(int begin, int length, int canvas, int target) {
        const double ratio = double(target) / canvas;
        at = std::min(static_cast<int>(std::lround(begin * ratio)), target - 1);
        size = std::clamp(static_cast<int>(std::lround(length * ratio)), 1, target - at);
    }
    int at;
    int size;
};

}  // namespace

std::optional<WebPFrame> WebPFrame::find(std::string_view bytes) {
    WebPFrame frame;
    ByteReader reader(bytes);
    reader.skip("RIFF"sv.size() + 4 + "WEBP"sv.size());
    while (frame.data_.empty()) {
        const std::string_view rest = reader.rest();
        const std::string_view type = reader.take(4);
        const std::size_t size = reader.reversedNumber(4);
        const std::string_view content = reader.take(size);
        if (reader.isExhausted()) return std::nullopt;
        reader.skip(size % 2);
        ByteReader field(content);
        if (type == "VP8X"sv) {
            field.skip(4);
            frame.canvas = {lengthBelow(field), 0};
            frame.canvas.height = lengthBelow(field);
        } else if (type == "ICCP"sv && size < largestProfile) {
            frame.profile_ = content;
        } else if (type == "ANMF"sv) {
            constexpr std::size_t frameHeader = 16;
            frame.x_ = 2 * (lengthBelow(field) - 1);
            frame.y_ = 2 * (lengthBelow(field) - 1);
            frame.data_ = content.substr(std::min(frameHeader, content.size()));
            if (frame.data_.empty()) return std::nullopt;
        } else if (type == "VP8 "sv || type == "VP8L"sv || type == "ALPH"sv) {
            frame.data_ = rest;
        }
    }
    WebPBitstreamFeatures features{};
    auto status = WebPGetFeatures(unsignedBytes(frame.data_), frame.data_.size(), &features);
    if (status != VP8_STATUS_OK) return std::nullopt;
    frame.size_ = {features.width, features.height};
    frame.isLossless_ = features.format == 2;
    if (frame.canvas == PixelSize{}) frame.canvas = frame.size_;
    if (frame.x_ + frame.size_.width > frame.canvas.width || frame.y_ + frame.size_.height > frame.canvas.height) {
        return std::nullopt;
    }
    return frame;
}

std::int64_t WebPFrame::memory() const {
    const std::int64_t pixels = std::int64_t{size_.width} * size_.height;
    const std::int64_t lines = std::int64_t{256} * size_.width;
    const std::string_view payload = data_.substr(std::min(chunkHeader, data_.size()));
    if (isLossless_) return lines + 4 * pixels + memoryForCodesOfVP8L(payload);
    if (!data_.starts_with("ALPH"sv)) return lines;
    return lines + 5 * pixels + memoryForCodesOfALPH(payload, size_.width, size_.height);
}

std::optional<Bitmap> WebPFrame::decoded(PixelSize target, const DecodingTime& time) const {
    const Side columns(x_, size_.width, canvas.width, target.width);
    const Side rows(y_, size_.height, canvas.height, target.height);
    Bitmap bitmap{target.width, target.height, {}};
    const auto width = static_cast<std::size_t>(target.width);
    bitmap.pixels.resize(width * static_cast<std::size_t>(target.height));
    const std::size_t first = static_cast<std::size_t>(rows.at) * width + static_cast<std::size_t>(columns.at);

    WebPDecoderConfig config;
    WebPInitDecoderConfig(&config);
    config.options.use_scaling = columns.size != size_.width || rows.size != size_.height;
    config.options.scaled_width = columns.size;
    config.options.scaled_height = rows.size;
    config.output.colorspace = isLittleEndian ? MODE_bgrA : MODE_Argb;
    config.output.is_external_memory = 1;
    config.output.u.RGBA = {reinterpret_cast<std::uint8_t*>(bitmap.pixels.data() + first), 4 * target.width,
                            4 * (bitmap.pixels.size() - first)};
    std::unique_ptr<WebPIDecoder, decltype(&WebPIDelete)> decoder(WebPIDecode(nullptr, 0, &config), WebPIDelete);
    if (!decoder) return std::nullopt;
    VP8StatusCode status = VP8_STATUS_SUSPENDED;
    const std::size_t part = std::max(std::size_t{1} << 16, data_.size() / 32);
    for (std::size_t size = 0; status == VP8_STATUS_SUSPENDED && size < data_.size() && !time.isOver();) {
        size = std::min(size + part, data_.size());
        status = WebPIUpdate(decoder.get(), unsignedBytes(data_), size);
    }
    if (status != VP8_STATUS_OK) return std::nullopt;
    return bitmap;
}

QColorSpace WebPFrame::colorSpace() const {
    if (profile_.empty()) return {};
    return QColorSpace::fromIccProfile(QByteArray(profile_.data(), static_cast<qsizetype>(profile_.size())));
}

}  // namespace vantix
