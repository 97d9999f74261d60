#include "VantixCore/URLRequestHeaders.h"

namespace vantix {

HTTPHeaders URLRequestHeaders::authEventReportHeaders() {
    return {{"Accept", "application/json"}, {"Content-Type", "application/json"}};
}

}  // namespace vantix
