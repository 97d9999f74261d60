#include "VantixQt/Drawing/EncodedImage.h"

namespace vantix::EncodedImage {

using namespace std::string_view_literals;

std::optional<Format> format(std::string_view bytes) {
    if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return Format::png;
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return Format::jpeg;
    if (bytes.starts_with("GIF87a"sv) || bytes.starts_with("GIF89a"sv)) return Format::gif;
    if (bytes.starts_with("RIFF"sv) && bytes.substr(0, 12).ends_with("WEBP"sv)) return Format::webp;
    return std::nullopt;
}

}  // namespace vantix::EncodedImage
