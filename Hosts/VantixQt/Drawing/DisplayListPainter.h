#pragma once

#include "DeclarativeUI/DisplayList.h"
#include "VantixQt/Drawing/TextShaping.h"
#include "VantixQt/Drawing/VectorImages.h"

class QPainter;

namespace vantix {

/// Paints display lists. Keeps what is costly to prepare from one list to the next. Main thread only.
class DisplayListPainter {
public:
    /// Text is painted with the fonts of the catalogue that its measurer used. The QGuiApplication exists.
    explicit DisplayListPainter(std::shared_ptr<const QtFontCatalogue> catalogue);

    /// Paints in the painter's own coordinates, which are taken as points; leaves the painter as it was. A text or
    /// picture that cannot be shown is left out.
    void paint(const DisplayList& list, QPainter& painter);

private:
    TextShaping shaping_;
    VectorImages vectorImages_;
};

}  // namespace vantix
