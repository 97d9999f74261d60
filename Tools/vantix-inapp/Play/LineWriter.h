#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/Value.h"

#include <mutex>
#include <string>
#include <vector>

namespace vantix {

/// Prints what happens on standard output, one JSON object a line: the clock's time and one thing. Usable from any
/// thread.
class LineWriter {
public:
    /// From now on lines show the placeholder instead of this address of a back end.
    void hideBackendAddress(const std::string& address);
    /// Before the first line. The clock must last as long as lines are written.
    void setClock(const Clock& clock) { clock_ = &clock; }

    void write(std::string kind, Value what);

private:
    const Clock* clock_ = nullptr;
    std::vector<std::string> hiddenAddresses_;
    std::mutex mutex_;
};

/// The number rounded to so many decimals; a whole one is written without a decimal point.
Value roundedNumber(double number, int decimals);

}  // namespace vantix
