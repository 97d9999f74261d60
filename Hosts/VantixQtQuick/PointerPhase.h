#pragma once

namespace vantix::qt {

/// What becomes of a pointer: the left button, or the first finger.
enum class PointerPhase { down, move, up, cancelled };

}  // namespace vantix::qt
