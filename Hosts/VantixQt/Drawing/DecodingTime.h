#pragma once

#include <chrono>

namespace vantix {

/// How long a decode may go on, in time that the processor spends on this thread: a busy machine gives up nothing that
/// an idle one decodes. To be made and asked on the thread that decodes.
class DecodingTime {
public:
    explicit DecodingTime(std::chrono::nanoseconds most);

    bool isOver() const;

private:
    std::chrono::nanoseconds end_;
};

}  // namespace vantix
