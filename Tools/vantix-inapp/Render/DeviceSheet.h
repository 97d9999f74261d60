#pragma once

#include "Tools/vantix-inapp/Headless/Devices.h"
#include "VantixQt/Drawing/Canvas.h"

#include <functional>

namespace vantix {

class DisplayListPainter;

/// One picture of all devices side by side, each under its name: the upright ones above, the turned ones below. Each
/// device's picture is asked for once, when its turn comes.
Canvas paintDeviceSheet(const std::function<Canvas(const Device& device)>& pictureOn, DisplayListPainter& painter);

}  // namespace vantix
