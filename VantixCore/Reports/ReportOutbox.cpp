#include "VantixCore/Reports/ReportOutbox.h"

#include "Platform/Values/JSON.h"
#include "VantixCore/Reports/ReportPolicy.h"
#include "VantixCore/VantixLogger.h"

#include <cstdint>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Reports/ReportOutbox"};

void createTable(SQLiteConnection& connection) {
    connection.run(
        "CREATE TABLE IF NOT EXISTS Report (position INTEGER PRIMARY KEY AUTOINCREMENT, id TEXT NOT NULL, event TEXT "
        "NOT NULL)");
}

/// Positions have no gaps, since reports go in the order in which they came.
std::size_t dropOldest(SQLiteConnection& connection) {
    return connection
        .run("DELETE FROM Report WHERE position <= (SELECT max(position) FROM Report) - ? RETURNING position",
             {static_cast<std::int64_t>(ReportPolicy::mostPending)})
        .size();
}

}  // namespace

ReportOutbox::ReportOutbox(std::shared_ptr<Disk> disk, std::filesystem::path file)
    : file_(std::move(disk), std::move(file), ReportPolicy::outboxTimeOut, createTable) {}

bool ReportOutbox::add(const PendingReport& report) {
    std::lock_guard lock(mutex_);
    return perform("add(report:)", [&](SQLiteConnection& connection) {
        connection.run("INSERT INTO Report (id, event) VALUES (?, ?)", {report.id, report.event});
        countDropped(dropOldest(connection));
    });
}

std::vector<PendingReport> ReportOutbox::nextBatch() {
    std::lock_guard lock(mutex_);
    std::vector<PendingReport> batch;
    perform("nextBatch()", [&](SQLiteConnection& connection) {
        auto rows = connection.run("SELECT id, event FROM Report ORDER BY position LIMIT ?",
                                   {static_cast<std::int64_t>(ReportPolicy::largestBatch)});
        std::size_t size = 0;
        for (auto& row : rows) {
            size += row[1]->size();
            if (!batch.empty() && size > ReportPolicy::largestBatchBody) return;
            batch.push_back({std::move(*row[0]), std::move(*row[1])});
        }
    });
    return batch;
}

bool ReportOutbox::remove(const std::vector<PendingReport>& reports) {
    List ids;
    for (const auto& report : reports) ids.emplace_back(report.id);
    std::string listed = toJSON(ids);

    std::lock_guard lock(mutex_);
    return perform("remove(reports:)", [&](SQLiteConnection& connection) {
        connection.run("DELETE FROM Report WHERE id IN (SELECT value FROM json_each(?))", {listed});
    });
}

bool ReportOutbox::perform(const char* function, const SQLiteFile::Operation& operation) {
    auto error = file_.perform(operation);
    if (error) log.error(function, error->localizedDescription);
    return !error;
}

void ReportOutbox::countDropped(std::size_t count) {
    if (count == 0) return;
    dropped_ += count;
    log.error("add(report:)", [&] {
        return "The outbox is full. Oldest reports dropped: " + std::to_string(count) +
               ", since the start: " + std::to_string(dropped_);
    });
}

}  // namespace vantix
