#pragma once

#include <csignal>

namespace vantix {

/// What asks a process to end, SIGINT and SIGTERM: blocked from now on, so that the signals wait to be fetched. Called
/// before the first thread is started, as threads inherit it.
sigset_t blockEndings();

}  // namespace vantix
