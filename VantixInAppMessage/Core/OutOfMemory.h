#pragma once

#include "VantixCore/VantixLogger.h"

#include <new>

namespace vantix {

/// Does what is to be done with a message, or with several; whether it could be done. When memory runs out on the way,
/// they are dropped with an error line, and nothing else comes to harm.
template <typename Work>
bool dropWhenOutOfMemory(const LogSource& log, const char* function, Work work) {
    try {
        work();
        return true;
    } catch (const std::bad_alloc&) {
        try {
            log.error(function, "An in-app message was dropped: there is no memory left");
        } catch (const std::bad_alloc&) {
            // Not even for the line.
        }
        return false;
    }
}

}  // namespace vantix
