#pragma once

#include <filesystem>
#include <string>

namespace vantix {

/// The files of this process below one folder, at the calls of the C library, which stand in for the machine's: they
/// fail as told, and are recorded.
class Machine {
public:
    /// Calls below the folder count from now on.
    static void watch(const std::filesystem::path& folder);
    /// "none"; "full": from the call of that number on nothing grows; "read-only": from it on nothing changes;
    /// "broken": it alone fails; "slow": from it on each takes a tenth of a second. The first is number 0. Calls are
    /// counted anew.
    static void fail(const std::string& fault, long from);
    /// How many calls were counted.
    static long calls();
    /// "N": the time of day jumps by so many seconds, which may be negative; "still": it stands until the next jump;
    /// "+N": the clock that only moves forward jumps.
    static void setClock(const std::string& change);
    /// From now on every change is added to the file: a line of the kind ("c": a file is made, "w": written, "t": cut,
    /// "s": synced, as folders are, "r": renamed, "u": removed), the place or length, and the sizes of what follows:
    /// the file's name, and what is written, or the new name.
    static void recordIn(const std::filesystem::path& file);
};

}  // namespace vantix
