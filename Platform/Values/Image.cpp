#include "Platform/Values/Image.h"

#include <cstddef>
#include <cstdlib>
#include <utility>

namespace vantix {

namespace {

/// The number behind NAME=" in the drawing's first tag; 0 when it is not there.
double attribute(const std::string& svg, const char* name) {
    auto begin = svg.find(std::string(" ") + name + "=\"");
    if (begin == std::string::npos || begin > svg.find('>', svg.find("<svg"))) return 0;
    return std::strtod(svg.c_str() + svg.find('"', begin) + 1, nullptr);
}

}  // namespace

Image bitmapImage(int width, int height, std::vector<std::uint32_t> pixels) {
    bool fits = width > 0 && height > 0 &&
                pixels.size() / static_cast<std::size_t>(width) == static_cast<std::size_t>(height) &&
                pixels.size() % static_cast<std::size_t>(width) == 0;
    if (!fits) return {};
    Image image;
    image.bitmap = std::make_shared<const Bitmap>(Bitmap{width, height, std::move(pixels)});
    image.naturalSize = {static_cast<double>(width), static_cast<double>(height)};
    return image;
}

Image vectorImage(const std::string& svg) {
    Image image;
    image.vector = std::make_shared<const std::string>(svg);
    image.naturalSize = {attribute(svg, "width"), attribute(svg, "height")};
    return image;
}

}  // namespace vantix
