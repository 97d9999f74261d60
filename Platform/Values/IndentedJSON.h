#pragma once

#include "Platform/Values/Value.h"

#include <string>

namespace vantix {

/// The JSON text of a value for people: lists and objects that are short stand in one line, the elements of others
/// below each other. Written as toJSON writes it otherwise. Usable from any thread.
std::string toIndentedJSON(const Value& value);

}  // namespace vantix
