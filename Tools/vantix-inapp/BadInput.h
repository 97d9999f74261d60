#pragma once

#include <stdexcept>

namespace vantix {

/// What was asked for cannot be done, in words for the last line on standard error.
class BadInput final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace vantix
