#pragma once

#include "VantixCore/Store/SQLiteFile.h"

#include <cstddef>
#include <deque>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// A report on its way to the back end.
struct PendingReport {
    /// By this the back end knows a report that it is sent again.
    std::string id;
    /// The JSON object that is sent.
    std::string event;
};

/// The reports that the back end has not taken yet, in a file of their own, oldest first. Those that the file does not
/// take wait in memory, for as long as the process lives, until it does. Beyond ReportPolicy::mostPending the oldest
/// are dropped, counted and logged. Usable from any thread but the main one: every operation waits for the disk, and
/// logs at error level why it failed; that the file is of a newer version it says once.
class ReportOutbox {
public:
    ReportOutbox(std::shared_ptr<Disk> disk, std::filesystem::path file);

    /// Whether the report is in the file; once it is, it survives a sudden end of the process. One that is not waits
    /// in memory and is sent all the same, unless the process ends first.
    bool add(const PendingReport& report);
    /// The reports of the next batch; none when nothing waits. Absent when the file cannot be read for now, so that
    /// younger reports do not overtake those in it; when it fails again the next time, those in memory go ahead.
    std::optional<std::vector<PendingReport>> nextBatch();
    /// Whether the reports are gone.
    bool remove(const std::vector<PendingReport>& reports);

private:
    bool perform(const char* function, const SQLiteFile::Operation& operation);
    bool moveIntoFile();
    /// Absent when the file cannot be read.
    std::optional<std::vector<PendingReport>> batchOfFile();
    /// Whether a file that cannot be read may become readable and hold reports older than those in memory.
    bool mayHoldOlder();
    void countDropped(std::size_t count);

    std::mutex mutex_;
    std::shared_ptr<Disk> disk_;
    SQLiteFile file_;
    /// All of them younger than those in the file.
    std::deque<PendingReport> inMemory_;
    bool hasFailedToRead_ = false;
    bool hasSaidThatFileIsNewer_ = false;
    std::size_t dropped_ = 0;
};

}  // namespace vantix
