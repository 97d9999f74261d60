#pragma once

#include "DeclarativeUI/View.h"

#include <functional>

namespace vantix {

/// One option of a list, a radio button or a check box: its mark and label in a row that acts on a tap anywhere, its
/// paddings included, and along its lower edge a line to the next one.
View selectionRow(AccessibleKind kind, const View& mark, const View& label, bool isSelected, bool shouldAddDivider,
                  std::function<void()> action);

}  // namespace vantix
