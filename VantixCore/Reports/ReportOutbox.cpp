#include "VantixCore/Reports/ReportOutbox.h"

#include "Platform/Ports/Disk.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/Reports/ReportPolicy.h"
#include "VantixCore/VantixLogger.h"

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Reports/ReportOutbox"};
constexpr auto firstOfBatch = static_cast<std::int64_t>(ReportPolicy::largestBatch);

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

/// Whether a row of event and id can be sent, and be found again once it is.
bool isWhole(const SQLiteRow& row) {
    auto event = row[0] && row[1] ? parseJSON(*row[0]) : Error{"no report"};
    const Dictionary* content = event ? event.value().dictionary() : nullptr;
    const std::string* id = content ? content->text("id") : nullptr;
    return id && *id == *row[1];
}

/// A row that stays would be met again for ever.
void assertRemoved(bool isRemoved) {
    if (!isRemoved) throw SQLiteError::damage("a report cannot be removed");
}

/// Of those that are next. One report that is no JSON would have the back end refuse all that are sent with it.
std::size_t dropDamaged(SQLiteConnection& connection) {
    std::size_t count = 0;
    for (const auto& row :
         connection.run("SELECT event, id, position FROM Report ORDER BY position LIMIT ?", {firstOfBatch})) {
        if (isWhole(row)) continue;
        auto removed = connection.run("DELETE FROM Report WHERE position = ? RETURNING position",
                                      {std::stoll(row[2].value_or("0"))});
        assertRemoved(!removed.empty());
        ++count;
    }
    return count > 0 ? count + dropDamaged(connection) : 0;
}

/// What one batch may hold of them.
std::vector<PendingReport> limited(std::vector<PendingReport> reports) {
    std::size_t count = 0;
    for (std::size_t size = 0; count < std::min(reports.size(), ReportPolicy::largestBatch); ++count) {
        size += reports[count].event.size();
        if (count > 0 && size > ReportPolicy::largestBatchBody) break;
    }
    reports.resize(count);
    return reports;
}

}  // namespace

ReportOutbox::ReportOutbox(std::shared_ptr<Disk> disk, std::filesystem::path file)
    : disk_(disk), file_(std::move(disk), std::move(file), ReportPolicy::outboxTimeOut, createTable) {}

bool ReportOutbox::add(const PendingReport& report) {
    std::lock_guard lock(mutex_);
    inMemory_.push_back(report);
    bool isInFile = moveIntoFile();
    if (inMemory_.size() > ReportPolicy::mostPending) {
        inMemory_.pop_front();
        countDropped(1);
    }
    return isInFile;
}

std::optional<std::vector<PendingReport>> ReportOutbox::nextBatch() {
    std::lock_guard lock(mutex_);
    moveIntoFile();
    auto batch = batchOfFile();
    bool hadFailed = std::exchange(hasFailedToRead_, !batch);
    if (!batch && !hadFailed && mayHoldOlder()) return {};
    return batch && !batch->empty() ? batch : limited({inMemory_.begin(), inMemory_.end()});
}

bool ReportOutbox::remove(const std::vector<PendingReport>& reports) {
    List ids;
    for (const auto& report : reports) ids.emplace_back(report.id);
    std::string listed = toJSON(ids);

    std::lock_guard lock(mutex_);
    auto wasInMemory = std::erase_if(inMemory_, [&](const PendingReport& waiting) {
        return std::ranges::find(reports, waiting.id, &PendingReport::id) != reports.end();
    });
    if (wasInMemory == reports.size()) return true;
    return perform("remove(reports:)", [&](SQLiteConnection& connection) {
        connection.run("DELETE FROM Report WHERE id IN (SELECT value FROM json_each(?))", {listed});
        assertRemoved(
            connection.run("SELECT id FROM Report WHERE id IN (SELECT value FROM json_each(?)) LIMIT 1", {listed})
                .empty());
    });
}

bool ReportOutbox::moveIntoFile() {
    while (!inMemory_.empty()) {
        const PendingReport& report = inMemory_.front();
        bool isInFile = perform("add(report:)", [&](SQLiteConnection& connection) {
            connection.run("INSERT INTO Report (id, event) VALUES (?, ?)", {report.id, report.event});
        });
        if (!isInFile) return false;
        inMemory_.pop_front();
        // The report is in the file, whatever becomes of this; what stays too many is dropped after the next.
        perform("add(report:)", [&](SQLiteConnection& connection) { countDropped(dropOldest(connection)); });
    }
    return true;
}

bool ReportOutbox::mayHoldOlder() {
    if (file_.isNewer()) return false;
    try {
        return disk_->exists(file_.path());
    } catch (const std::system_error&) {
        return true;
    }
}

std::optional<std::vector<PendingReport>> ReportOutbox::batchOfFile() {
    std::vector<PendingReport> batch;
    std::size_t damaged = 0;
    bool isRead = perform("nextBatch()", [&](SQLiteConnection& connection) {
        damaged = dropDamaged(connection);
        auto rows = connection.run("SELECT id, event FROM Report ORDER BY position LIMIT ?", {firstOfBatch});
        for (auto& row : rows) batch.push_back({std::move(*row[0]), std::move(*row[1])});
    });
    if (damaged > 0) {
        log.error("nextBatch()", [&] { return "Reports damaged on the disk and dropped: " + std::to_string(damaged); });
    }
    if (!isRead) return {};
    return limited(std::move(batch));
}

bool ReportOutbox::perform(const char* function, const SQLiteFile::Operation& operation) {
    auto error = file_.perform(operation);
    bool isSaidAlready = file_.isNewer() && std::exchange(hasSaidThatFileIsNewer_, true);
    if (error && !isSaidAlready) log.error(function, error->localizedDescription);
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
