#pragma once

#include "Platform/Ports/ImageDecoder.h"

#include <chrono>

namespace vantix {

/// Decodes pictures to sRGB; the orientation tag of a JPEG is applied. A picture that is visibly damaged is refused by
/// probing already. Nothing is written to standard error, for which Qt's complaints about colour profiles are turned
/// off in the whole program. Made after the QGuiApplication; usable from any thread.
class QtImageDecoder final : public ImageDecoder {
public:
    /// A decode is given up when it has taken so much of the processor's time.
    explicit QtImageDecoder(std::chrono::milliseconds patience = std::chrono::seconds(2));

    Result<PixelSize> probe(std::string_view bytes) const override;
    Result<Image> decode(std::string_view bytes, PixelSize bound) const override;

private:
    std::chrono::milliseconds patience_;
};

}  // namespace vantix
