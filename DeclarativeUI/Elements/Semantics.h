#pragma once

#include "DeclarativeUI/View.h"

#include <string>

namespace vantix {

/// What a view is to the person who meets it; see View's modifiers.
View asElement(const View& content, Role role, std::string label);
View asSelected(const View& content, bool isSelected);
View spokenAs(const View& content, std::string text);
View passingTouchesOutsideCard(const View& content);

}  // namespace vantix
