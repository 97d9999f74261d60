#pragma once

#include "VantixCore/Network/HTTPResponse.h"
#include "VantixCore/VantixResponseGenerator.h"

#include <optional>
#include <string>

namespace vantix {

/// The answer of the back end, as it came over HTTP: a status of 400 or above is an error.
class BackEndAnswer final : public VantixResponseGenerator {
public:
    explicit BackEndAnswer(HTTPResponse response);

    const std::optional<std::string>& rcvdData() const override { return data_; }
    const std::optional<VantixError>& error() const override { return error_; }

    int httpStatus() const { return httpStatus_; }
    /// How long the back end asks to be left alone; zero when it does not.
    Duration retryAfter() const { return retryAfter_; }

private:
    std::optional<std::string> data_;
    std::optional<VantixError> error_;
    int httpStatus_;
    Duration retryAfter_;
};

}  // namespace vantix
