#include "Platform/Values/Image.h"

#include <cstdlib>

namespace vantix {

namespace {

/// The number behind NAME=" in the drawing's first tag; 0 when it is not there.
double attribute(const std::string& svg, const char* name) {
    auto begin = svg.find(std::string(" ") + name + "=\"");
    if (begin == std::string::npos || begin > svg.find('>', svg.find("<svg"))) return 0;
    return std::strtod(svg.c_str() + svg.find('"', begin) + 1, nullptr);
}

}  // namespace

Image vectorImage(const std::string& svg) {
    Image image;
    image.vector = std::make_shared<const std::string>(svg);
    image.naturalSize = {attribute(svg, "width"), attribute(svg, "height")};
    return image;
}

}  // namespace vantix
