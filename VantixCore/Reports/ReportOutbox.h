#pragma once

#include "VantixCore/Store/SQLiteFile.h"

#include <cstddef>
#include <filesystem>
#include <mutex>
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

/// The reports that the back end has not taken yet, in a file of their own, oldest first. Beyond
/// ReportPolicy::mostPending the oldest are dropped, counted and logged. Usable from any thread but the main one: every
/// operation waits for the disk, and logs at error level why it failed.
class ReportOutbox {
public:
    ReportOutbox(std::shared_ptr<Disk> disk, std::filesystem::path file);

    /// Whether the report is kept; once it is, it survives a sudden end of the process.
    bool add(const PendingReport& report);
    /// The reports of the next batch; none when nothing waits.
    std::vector<PendingReport> nextBatch();
    /// Whether the reports are gone.
    bool remove(const std::vector<PendingReport>& reports);

private:
    bool perform(const char* function, const SQLiteFile::Operation& operation);
    void countDropped(std::size_t count);

    std::mutex mutex_;
    SQLiteFile file_;
    std::size_t dropped_ = 0;
};

}  // namespace vantix
