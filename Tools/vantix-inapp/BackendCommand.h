#pragma once

namespace vantix {

struct BackendOptions;

/// Runs a back end until the process is asked to end (SIGINT, SIGTERM). The first line on standard output names its
/// address and, with TLS, its pin; then follows one line for each reported event. Throws BadInput.
void runBackend(const BackendOptions& options);

}  // namespace vantix
