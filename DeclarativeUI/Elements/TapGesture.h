#pragma once

#include "DeclarativeUI/View.h"

#include <functional>

namespace vantix {

/// Acts on touches within the content, unless something inside wants them.
View tappable(const View& content, std::function<void()> action);

}  // namespace vantix
