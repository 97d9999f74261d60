#pragma once

#include "DeclarativeUI/View.h"

#include <functional>

namespace vantix {

/// One option of a list: its mark and label, which act on a tap anywhere in the row, and a line to the next one.
View selectionRow(const View& mark, const View& label, bool isSelected, bool shouldAddDivider,
                  std::function<void()> action);

}  // namespace vantix
