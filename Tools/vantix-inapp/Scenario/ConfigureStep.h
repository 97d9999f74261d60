#pragma once

#include "Tools/vantix-inapp/Headless/Configuration.h"

#include <string_view>

namespace vantix {

class Dictionary;
class Value;

/// Reads the object of a `configure` step. Throws BadInput.
Configuration readConfiguration(const Dictionary& object);

/// "active", "inactive" or "background". Throws BadInput.
ApplicationState applicationStateField(std::string_view key, const Value& value);

}  // namespace vantix
