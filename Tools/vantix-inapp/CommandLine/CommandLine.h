#pragma once

namespace vantix {

/// Does what the words, of which the first is the program's name, ask for. The process's exit status: 0, 1 for
/// findings that count, or 2 for bad usage, bad input and output that finds no room; that problem is the last line on
/// standard error. Broken pipes are ignored from then on.
int runCommandLine(int count, const char* const* words);

}  // namespace vantix
