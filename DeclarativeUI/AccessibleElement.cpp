#include "DeclarativeUI/AccessibleElement.h"

namespace vantix {

std::string roleName(Role role) { return std::string(roleWords.word(role)); }

}  // namespace vantix
