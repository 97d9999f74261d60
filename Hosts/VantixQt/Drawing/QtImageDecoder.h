#pragma once

#include "Platform/Ports/ImageDecoder.h"

namespace vantix {

/// Decodes pictures with Qt's image readers, in sRGB. The orientation tag is applied where Qt knows one: in JPEG
/// pictures. A picture that is visibly damaged is refused by probing already. JPEG with one scan
/// and PNG that is not interlaced may have more than 40 megapixels. At most 160 megabytes are needed for what is
/// decoded before it is scaled (320 for 16 bits a channel), beside the result. Made after the
/// QGuiApplication; usable from any thread.
class QtImageDecoder final : public ImageDecoder {
public:
    QtImageDecoder();

    Result<PixelSize> probe(std::string_view bytes) const override;
    Result<Image> decode(std::string_view bytes, PixelSize bound) const override;
};

}  // namespace vantix
