#pragma once

#include "VantixCore/VantixLogger.h"

#include <new>

namespace vantix {

/// Does what is to be done with one message. When memory runs out on the way, that message is dropped with an error
/// line; nothing else comes to harm.
template <typename Work>
void dropWhenOutOfMemory(const LogSource& log, const char* function, Work work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        try {
            log.error(function, "An in-app message was dropped: there is no memory left");
        } catch (const std::bad_alloc&) {
            // Not even for the line.
        }
    }
}

}  // namespace vantix
