#pragma once

#include "Tools/vantix-inapp/Headless/Devices.h"

#include <filesystem>
#include <optional>
#include <string>

namespace vantix {

struct RenderArguments {
    std::string campaign;
    std::filesystem::path picture;
    /// Absent: a sheet of all devices.
    std::optional<Device> device;
    double textScale = 1;
    /// Who holds the phone.
    std::string customer = "customer";
};

/// Writes the picture of one campaign. Whether the module would store it and show it like that; if not, standard error
/// says why.
/// Throws BadInput.
bool render(const RenderArguments& arguments);

}  // namespace vantix
