#pragma once

#include "Platform/Ports/ImageDecoder.h"

namespace vantix {

/// Decodes pictures with Qt's image readers, in sRGB. The orientation tag is applied where Qt knows one: in JPEG
/// pictures. A picture that is visibly damaged is refused by probing already. Made after the QGuiApplication; usable
/// from any thread.
class QtImageDecoder final : public ImageDecoder {
public:
    QtImageDecoder();

    Result<PixelSize> probe(std::string_view bytes) const override;
    Result<Image> decode(std::string_view bytes, PixelSize bound) const override;
};

}  // namespace vantix
