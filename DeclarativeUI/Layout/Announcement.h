#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "DeclarativeUI/SpokenWords.h"

#include <vector>

namespace vantix {

/// What assistive technology takes an element of this role for, unless its view says otherwise.
AccessibleKind usualKind(Role role);

/// Completes the elements of a settled layout with what assistive technology says of them: the one place where
/// names, kinds, states and values become phrases.
void announce(std::vector<AccessibleElement>& elements, const SpokenWords& words);

/// Those of which something is said, in the order in which they are read and reached: the card, title, image, message,
/// options, stars, buttons, close control.
std::vector<AccessibleElement> inReadingOrder(std::vector<AccessibleElement> elements);

}  // namespace vantix
