#pragma once

namespace vantix {

struct PlayArguments;

/// Plays a scenario on standard output. Throws BadInput; a fault in the file before anything is played.
void play(const PlayArguments& arguments);

}  // namespace vantix
