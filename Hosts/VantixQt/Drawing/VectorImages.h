#pragma once

#include "Platform/Values/Image.h"

#include <map>
#include <memory>
#include <string>

class QSvgRenderer;

namespace vantix {

/// SVG drawings, parsed once each. Main thread only.
class VectorImages {
public:
    VectorImages();
    ~VectorImages();

    /// The renderer of a drawing; null for a text that is no drawing. Valid until the next call.
    QSvgRenderer* renderer(const std::shared_ptr<const std::string>& drawing);

private:
    /// Holding the drawing keeps its address, by which it is found again, from being used anew.
    std::map<std::shared_ptr<const std::string>, std::unique_ptr<QSvgRenderer>> renderers_;
};

}  // namespace vantix
