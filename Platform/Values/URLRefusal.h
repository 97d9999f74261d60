#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantix {

/// Why a text is not handed to whatever opens URLs; absent when it may be. It must be an absolute URL, without control
/// characters (see ControlCharacters.h) and without blanks at its ends, so that it cannot pass for an option of a
/// program or for a path. Its scheme must not be one that runs what it holds or reads what is on the device: about,
/// blob, content, data, file, intent, javascript, vbscript, a drive's letter, and what `refusedSchemes` adds. A URL
/// within another ("view-source:javascript:…") is judged, too. A scheme in `ownSchemes` is let through whatever it is.
/// Schemes are named without their colon, in any letter case.
std::optional<std::string> refusalToOpen(std::string_view text, const std::vector<std::string>& refusedSchemes = {},
                                         const std::vector<std::string>& ownSchemes = {});

}  // namespace vantix
