#pragma once

#include "DeclarativeUI/View.h"

#include <functional>

namespace vantix {

/// One option of a list: its mark and label in a row that acts on a tap anywhere, its paddings included, and along its
/// lower edge a line to the next one.
View selectionRow(const View& mark, const View& label, bool isSelected, bool shouldAddDivider,
                  std::function<void()> action);

}  // namespace vantix
