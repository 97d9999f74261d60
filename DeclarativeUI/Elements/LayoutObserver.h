#pragma once

#include "DeclarativeUI/View.h"

#include <functional>
#include <string>

namespace vantix {

/// Tells of the content's size after each layout that changed it.
View observed(const View& content, std::string key, std::function<void(Size)> action);

}  // namespace vantix
