#include "VantixCore/Store/SQLiteFile.h"

#include "Platform/Ports/Disk.h"
#include "VantixCore/VantixLogger.h"

#include <array>
#include <exception>
#include <string>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Store/SQLiteFile"};
/// Of the file itself and of those that SQLite keeps beside it.
constexpr std::array<const char*, 4> endings{"", "-journal", "-wal", "-shm"};

}  // namespace

SQLiteFile::SQLiteFile(std::shared_ptr<Disk> disk, std::filesystem::path file, Duration busyTimeOut, Operation prepare)
    : disk_(std::move(disk)), file_(std::move(file)), busyTimeOut_(busyTimeOut), prepare_(std::move(prepare)) {}

std::optional<Error> SQLiteFile::perform(const Operation& operation) {
    isNewer_ = false;
    try {
        performOrReplace(operation);
        return {};
    } catch (const NewerFile& problem) {
        isNewer_ = true;
        return failure(problem);
    } catch (const std::exception& problem) {
        return failure(problem);
    }
}

void SQLiteFile::performOrReplace(const Operation& operation) {
    try {
        operation(opened());
        return;
    } catch (const SQLiteError& problem) {
        if (!problem.isDamage()) throw;
        connection_.reset();
        setAside(file_, problem.what());
    }
    operation(opened());
}

Error SQLiteFile::failure(const std::exception& problem) {
    connection_.reset();
    return {"The store " + file_.filename().string() + " failed: " + problem.what()};
}

SQLiteConnection& SQLiteFile::opened() {
    if (!connection_) {
        disk_->makeFolder(file_.parent_path());
        clearTheWay();
        auto connection = std::make_unique<SQLiteConnection>(disk_, file_, busyTimeOut_);
        prepare_(*connection);
        connection_ = std::move(connection);
    }
    return *connection_;
}

void SQLiteFile::clearTheWay() {
    for (const char* ending : endings) {
        auto file = file_;
        file += ending;
        try {
            disk_->hideFile(file);
        } catch (const OddFile& odd) {
            setAside(file, odd.what());
        }
    }
}

/// A log beside it that SQLite has left is dropped by SQLite when it finds the successor empty.
void SQLiteFile::setAside(const std::filesystem::path& file, const char* reason) {
    auto name = disk_->setAside(file);
    log.error("setAside(file:reason:)", [&] {
        return "The store " + file.filename().string() + " is damaged (" + reason + "); it was set aside as " +
               name.filename().string() + " and is replaced.";
    });
}

}  // namespace vantix
