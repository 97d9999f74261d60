#pragma once

#include "DeclarativeUI/View.h"

namespace vantix {

/// Scrolls its content vertically, without indicators; content that fits does not scroll.
View ScrollView(View content);

}  // namespace vantix
