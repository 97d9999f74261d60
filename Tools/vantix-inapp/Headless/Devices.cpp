#include "Tools/vantix-inapp/Headless/Devices.h"

#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Input/Fields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

namespace vantix {

namespace {

constexpr double largestPicture = 100e6;

/// A device without a home button keeps its corners and its camera free at both sides, and its home indicator below.
Device turned(Device device, const EdgeInsets& safeArea) {
    device.name += "-landscape";
    auto& traits = device.traits;
    traits.size = {traits.size.height, traits.size.width};
    traits.safeArea = safeArea;
    return device;
}

const Device* find(const std::vector<Device>& devices, std::string_view name) {
    auto found =
        std::find_if(devices.begin(), devices.end(), [&](const Device& device) { return device.name == name; });
    return found == devices.end() ? nullptr : &*found;
}

const Device* find(std::string_view name) {
    const Device* upright = find(portraitDevices(), name);
    return upright ? upright : find(landscapeDevices(), name);
}

std::optional<SceneTraits> traitsFromText(const std::string& text) {
    SceneTraits traits;
    int length = 0;
    int fields =
        std::sscanf(text.c_str(), "%lfx%lf@%lf%n", &traits.size.width, &traits.size.height, &traits.scale, &length);
    if (fields != 3 || static_cast<std::size_t>(length) != text.size()) return {};
    return traits;
}

}  // namespace

const std::vector<Device>& portraitDevices() {
    static const auto& devices = *new const std::vector<Device>{
        {"phone", {{390, 844}, {47, 0, 34, 0}, 3}},
        {"phone-small", {{375, 667}, {20, 0, 0, 0}, 2}},
        {"phone-large", {{430, 932}, {59, 0, 34, 0}, 3}},
        {"tablet", {{820, 1180}, {24, 0, 20, 0}, 2}},
    };
    return devices;
}

const std::vector<Device>& landscapeDevices() {
    static const auto& devices = *new const std::vector<Device>([] {
        const auto& upright = portraitDevices();
        const std::array<EdgeInsets, 4> safeAreas{{{0, 47, 21, 47}, {}, {0, 59, 21, 59}, {24, 0, 20, 0}}};
        std::vector<Device> all;
        std::transform(upright.begin(), upright.end(), safeAreas.begin(), std::back_inserter(all), turned);
        return all;
    }());
    return devices;
}

const Device& deviceNamed(std::string_view name) {
    if (const Device* device = find(name)) return *device;
    throw BadInput("unknown device " + inQuotes(name));
}

Device deviceFromText(const std::string& text) {
    if (const Device* device = find(text)) return *device;
    auto traits = traitsFromText(text);
    if (!traits) throw BadInput(inQuotes(text) + " is neither a device nor WIDTHxHEIGHT@SCALE");
    expectUsable(*traits);
    return {text, *traits};
}

void expectUsable(const SceneTraits& traits) {
    const Size& size = traits.size;
    const EdgeInsets& safeArea = traits.safeArea;
    for (double length : {size.width, size.height, traits.scale, traits.textScale}) {
        if (!(std::isfinite(length) && length > 0)) throw BadInput("a screen's size and scale must be above 0");
    }
    for (double inset : {safeArea.top, safeArea.left, safeArea.bottom, safeArea.right}) {
        if (!(std::isfinite(inset) && inset >= 0)) throw BadInput("a safe area must not be negative");
    }
    if (safeArea.left + safeArea.right >= size.width || safeArea.top + safeArea.bottom >= size.height) {
        throw BadInput("the safe areas leave nothing of the screen");
    }
    if (size.width * traits.scale * size.height * traits.scale > largestPicture) {
        throw BadInput("the screen has more than 100 megapixels");
    }
}

}  // namespace vantix
