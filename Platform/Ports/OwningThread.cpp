#include "Platform/Ports/OwningThread.h"

#include "Platform/Ports/RunningQueue.h"
#include "Platform/Values/FatalError.h"

#include <string>

namespace vantix {

void OwningThread::assertCurrent(std::string_view operation) const {
    if (std::this_thread::get_id() == thread_) return;
    fatalError(std::string(operation) + " belongs to the thread that made its object and was called on " +
               std::string(RunningQueue::label()));
}

}  // namespace vantix
