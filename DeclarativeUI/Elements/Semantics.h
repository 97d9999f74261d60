#pragma once

#include "DeclarativeUI/Layout/Element.h"

#include <functional>
#include <string>

namespace vantix {

/// What a view is to the person who meets it; see View's modifiers.
ElementPointer asElement(const ElementPointer& content, Role role, std::string label);
ElementPointer described(const ElementPointer& content, std::function<void(AccessibleElement&)> description);
ElementPointer adjustable(const ElementPointer& content, std::function<void(int)> adjust);
ElementPointer inLanguage(const ElementPointer& content, std::string language);
ElementPointer passingTouchesOutsideCard(const ElementPointer& content);

}  // namespace vantix
