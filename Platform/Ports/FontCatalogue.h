#pragma once

#include "Platform/Values/Export.h"

#include <string_view>

namespace vantix {

/// The fonts installed on this machine.
///
/// Read once when the host makes it; usable from any thread afterwards.
class VANTIX_EXPORT FontCatalogue {
public:
    virtual ~FontCatalogue() = default;

    /// Whether a font bears exactly this family, full or PostScript name (letter case counts). A substitute that a
    /// font service would offer for an unknown name is not found.
    virtual bool contains(std::string_view name) const = 0;
};

}  // namespace vantix
