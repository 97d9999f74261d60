#pragma once

#include "Tools/vantix-inapp/Backend/Backend.h"

#include <optional>
#include <string>

namespace vantix {

struct BackendArguments {
    /// Its triggers are those of the file.
    BackendOptions options;
    /// Read anew for each call. Absent: a successful answer without messages.
    std::optional<std::string> triggers;
};

/// Runs a back end until the process is asked to end (SIGINT, SIGTERM). The first line on standard output names its
/// address and, with TLS, its pin; then follows one line for each reported event. Throws BadInput.
void runBackend(const BackendArguments& arguments);

}  // namespace vantix
