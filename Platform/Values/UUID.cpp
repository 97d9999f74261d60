#include "Platform/Values/UUID.h"

#include <uuid/uuid.h>

namespace vantix {

std::string makeUUID() {
    uuid_t bytes;
    uuid_generate_random(bytes);
    char text[UUID_STR_LEN];
    uuid_unparse_upper(bytes, text);
    return text;
}

}  // namespace vantix
