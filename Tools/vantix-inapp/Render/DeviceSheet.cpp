#include "Tools/vantix-inapp/Render/DeviceSheet.h"

#include "DeclarativeUI/DisplayList.h"
#include "VantixQt/Drawing/DisplayListPainter.h"

#include <algorithm>

namespace vantix {

namespace {

constexpr double margin = 40;
constexpr double nameSize = 20;
constexpr double nameHeight = 36;
constexpr Color sheetColor{0.88, 0.89, 0.91, 1};

/// A device's place on the sheet.
struct Place {
    const Device* device;
    Rect frame;
};

/// Puts the devices in a row below `top`. Returns the row's size, margins included.
Size placeRow(const std::vector<Device>& devices, double top, std::vector<Place>& places) {
    double x = margin;
    double height = 0;
    for (const Device& device : devices) {
        places.push_back({&device, {{x, top + margin + nameHeight}, device.traits.size}});
        x += device.traits.size.width + margin;
        height = std::max(height, device.traits.size.height);
    }
    return {x, margin + nameHeight + height};
}

DisplayList names(const std::vector<Place>& places) {
    DisplayList list;
    for (const auto& [device, frame] : places) {
        Point baseline{frame.minX(), frame.minY() - (nameHeight - nameSize)};
        list.push_back(DrawText{baseline, device->name, Font::system(nameSize), Color::black()});
    }
    return list;
}

}  // namespace

Canvas paintDeviceSheet(const std::function<Canvas(const Device& device)>& pictureOn, DisplayListPainter& painter) {
    std::vector<Place> places;
    Size upper = placeRow(portraitDevices(), 0, places);
    Size lower = placeRow(landscapeDevices(), upper.height, places);

    Canvas sheet({std::max(upper.width, lower.width), upper.height + lower.height + margin}, 1, sheetColor);
    sheet.paint(names(places), painter);
    for (const auto& [device, frame] : places) sheet.draw(pictureOn(*device), frame);
    return sheet;
}

}  // namespace vantix
