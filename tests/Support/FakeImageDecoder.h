#pragma once

#include "Platform/Ports/ImageDecoder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <string>

namespace vantix {

/// Decodes pictures of the form "FAKE WIDTH HEIGHT"; whatever else follows "damaged" makes the pixels undecodable.
class FakeImageDecoder final : public ImageDecoder {
public:
    static std::string encode(int width, int height, const std::string& rest = {}) {
        return "FAKE " + std::to_string(width) + " " + std::to_string(height) + " " + rest;
    }

    Result<PixelSize> probe(std::string_view bytes) const override {
        std::istringstream stream{std::string(bytes)};
        std::string magic;
        PixelSize size;
        stream >> magic >> size.width >> size.height;
        if (magic != "FAKE" || !stream) return Error{"no picture"};
        return size;
    }

    Result<Image> decode(std::string_view bytes, PixelSize bound) const override {
        auto size = probe(bytes);
        if (!size) return size.error();
        if (bytes.find("damaged") != std::string_view::npos) return Error{"damaged picture"};
        auto [width, height] = size.value();
        if (std::int64_t{width} * height > 40'000'000) {
            return Error{"the picture is too large: " + std::to_string(width) + " x " + std::to_string(height) +
                         " pixels"};
        }
        double scale = std::min({1.0, double(bound.width) / width, double(bound.height) / height});
        auto bitmap = std::make_shared<Bitmap>();
        bitmap->width = std::max(1, static_cast<int>(std::lround(width * scale)));
        bitmap->height = std::max(1, static_cast<int>(std::lround(height * scale)));
        bitmap->pixels.resize(static_cast<std::size_t>(bitmap->width) * static_cast<std::size_t>(bitmap->height));
        return Image{bitmap, {}, {double(width), double(height)}};
    }
};

}  // namespace vantix
