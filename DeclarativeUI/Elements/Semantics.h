#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <string>

namespace vantix {

/// What a view is to the person who meets it; see View's modifiers.
ElementPointer asElement(const ElementPointer& content, Role role, std::string label);
ElementPointer asSelected(const ElementPointer& content, bool isSelected);
ElementPointer spokenAs(const ElementPointer& content, std::string text);
ElementPointer passingTouchesOutsideCard(const ElementPointer& content);

}  // namespace vantix
