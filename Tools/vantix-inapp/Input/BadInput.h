#pragma once

#include <stdexcept>
#include <string>

namespace vantix {

/// What was asked for cannot be done, in words for the last line on standard error.
class BadInput final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;

    /// "FILE:LINE: what is wrong".
    static BadInput at(const std::string& file, int line, const std::string& problem) {
        return BadInput(file + ":" + std::to_string(line) + ": " + problem);
    }
};

}  // namespace vantix
