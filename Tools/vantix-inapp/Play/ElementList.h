#pragma once

#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "Platform/Values/Value.h"

namespace vantix {

/// What a window shows, in painting order: its colour, if it has one, then the elements of its settled layout.
List elementList(const OffscreenScene::ShownWindow& window);

}  // namespace vantix
