#pragma once

#include "Platform/Ports/ImageDecoder.h"

#include <algorithm>
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
        double width = size.value().width, height = size.value().height;
        double scale = std::min({1.0, bound.width / width, bound.height / height});
        auto bitmap = std::make_shared<Bitmap>();
        bitmap->width = static_cast<int>(width * scale);
        bitmap->height = static_cast<int>(height * scale);
        return Image{bitmap, {}, {width, height}};
    }
};

}  // namespace vantix
