#pragma once

#include "DeclarativeUI/View.h"
#include "fuzz/Choices.h"

#include <functional>

namespace vantix::fuzz {

/// A tree of every kind of element under every kind of modifier. Whatever in it takes taps calls `acted`.
View randomTree(Choices& choices, const std::function<void()>& acted, int depth = 6);

}  // namespace vantix::fuzz
