#pragma once

#include "VantixCore/VantixError.h"

#include <string>

namespace vantix {

/// The error of a transfer that brought no answer, in words.
VantixError transferError(VantixError::Kind kind, const std::string& detail);

/// The kind of error that a code of libcurl (CURLcode) means.
VantixError::Kind transferErrorKind(int curlCode);

}  // namespace vantix
