#include "Tools/vantix-inapp/Play/LineWriter.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Output/StandardOutput.h"
#include "Tools/vantix-inapp/Scenario/BackendAddress.h"

#include <chrono>
#include <cmath>
#include <cstdint>

namespace vantix {

Value roundedNumber(double number, int decimals) {
    double factor = std::pow(10, decimals);
    double rounded = std::round(number * factor) / factor;
    constexpr double exactlyWhole = 9e15;
    if (std::abs(rounded) < exactlyWhole && rounded == std::trunc(rounded)) return static_cast<std::int64_t>(rounded);
    return rounded;
}

void LineWriter::hideBackendAddress(const std::string& address) {
    std::lock_guard lock(mutex_);
    hiddenAddresses_.push_back(address);
}

void LineWriter::write(std::string kind, Value what) {
    std::lock_guard lock(mutex_);
    auto now = std::chrono::duration<double>(clock_->now()).count();
    std::string line = toJSON(Dictionary{{"t", roundedNumber(now, 3)}, {std::move(kind), std::move(what)}});
    for (const auto& address : hiddenAddresses_) line = withoutBackendAddress(std::move(line), address);
    printLine(line);
}

}  // namespace vantix
