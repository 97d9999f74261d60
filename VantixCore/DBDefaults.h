#pragma once

#include "VantixCore/BaseRepository.h"

#include <optional>
#include <string_view>

namespace vantix {

/// Reads the description of a store: a JSON text {"entities": [{"name": …, "attributes": [text, …]}, …]}. Absent when
/// the text is none.
std::optional<ObjectModel> objectModel(std::string_view modelText);

}  // namespace vantix
