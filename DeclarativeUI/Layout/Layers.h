#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <string>

namespace vantix {

/// The control among a view's layers, which reach from the outermost one to its content or to the first padding; null
/// when there is none.
const Control* controlIn(const Element& outermost);

bool isLayerOf(const Element& outermost, const Element& layer);

/// The element that the layers make together: role, label and frame, and what each of them contributes.
AccessibleElement describedElement(const Element& outermost, Role role, const std::string& label, const Rect& frame);

}  // namespace vantix
