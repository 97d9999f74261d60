#pragma once

#include "Platform/Values/Export.h"

#include <map>
#include <string>

namespace vantix {

/// Names and values.
using HTTPHeaders = std::map<std::string, std::string>;

/// Header sets for the back end.
namespace URLRequestHeaders {
/// For authenticated event calls.
VANTIX_EXPORT HTTPHeaders authEventReportHeaders();
}  // namespace URLRequestHeaders

}  // namespace vantix
