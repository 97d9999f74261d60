#pragma once

#include "Platform/Values/Export.h"

#include <exception>
#include <string>

namespace vantix {

/// An error of the core library.
class VANTIX_EXPORT VantixError : public std::exception {
public:
    enum class Kind { configuration, nameResolution, connection, tls, pin, timeOut, tooLarge, refused, server };

    VantixError(Kind kind, int code, std::string description)
        : kind_(kind), code_(code), description_(std::move(description)) {}

    Kind kind() const { return kind_; }
    /// The HTTP status for `server`, otherwise 0.
    int code() const { return code_; }
    const std::string& localizedDescription() const { return description_; }
    const char* what() const noexcept override { return description_.c_str(); }

private:
    Kind kind_;
    int code_;
    std::string description_;
};

}  // namespace vantix
