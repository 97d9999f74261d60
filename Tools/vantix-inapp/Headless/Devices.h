#pragma once

#include "Platform/Ports/Application.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// A kind of device to show messages on.
struct Device {
    std::string name;
    SceneTraits traits;
};

/// Every device, upright.
const std::vector<Device>& portraitDevices();
/// The same, turned to the left: what was above stands at the left.
const std::vector<Device>& landscapeDevices();

/// The device of that name ("phone", "phone-landscape", …). Throws BadInput for an unknown one.
const Device& deviceNamed(std::string_view name);

/// A device without safe areas from "WIDTHxHEIGHT@SCALE", in points and pixels per point, or a known device from its
/// name. Throws BadInput.
Device deviceFromText(const std::string& text);

/// The reader's preferred text sizes that a screen is laid out for.
inline constexpr double smallestTextScale = 0.1;
inline constexpr double largestTextScale = 10;

/// Throws BadInput for a screen that is empty, covered by its safe areas, or too large to be painted.
void expectUsable(const SceneTraits& traits);

}  // namespace vantix
