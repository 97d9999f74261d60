#pragma once

namespace vantix {

/// The side from which lines and rows run.
enum class LayoutDirection { leftToRight, rightToLeft };

}  // namespace vantix
