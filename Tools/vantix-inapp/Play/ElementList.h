#pragma once

#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Platform/Values/Value.h"

namespace vantix {

/// What a window shows, in painting order: its colour, if it has one, then the elements of its settled layout, but for
/// groups, which show nothing themselves.
List elementList(const OffscreenScene::ShownWindow& window);

}  // namespace vantix
