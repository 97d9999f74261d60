#include "VantixCore/Store/SQLiteFile.h"

#include "Platform/Ports/Disk.h"
#include "VantixCore/VantixLogger.h"

#include <exception>
#include <string>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Store/SQLiteFile"};

std::filesystem::path freeNameBeside(const std::filesystem::path& file, Disk& disk) {
    for (int number = 1;; ++number) {
        auto name = file;
        name += ".damaged-" + std::to_string(number);
        if (!disk.exists(name)) return name;
    }
}

}  // namespace

SQLiteFile::SQLiteFile(std::shared_ptr<Disk> disk, std::filesystem::path file, Duration busyTimeOut, Operation prepare)
    : disk_(std::move(disk)), file_(std::move(file)), busyTimeOut_(busyTimeOut), prepare_(std::move(prepare)) {}

std::optional<Error> SQLiteFile::perform(const Operation& operation) {
    try {
        performOrReplace(operation);
        return {};
    } catch (const std::exception& problem) {
        connection_.reset();
        return Error{"The store " + file_.filename().string() + " failed: " + problem.what()};
    }
}

void SQLiteFile::performOrReplace(const Operation& operation) {
    try {
        operation(opened());
        return;
    } catch (const SQLiteError& problem) {
        if (!problem.isDamage()) throw;
        setAside(problem.what());
    }
    operation(opened());
}

SQLiteConnection& SQLiteFile::opened() {
    if (!connection_) {
        disk_->makeFolder(file_.parent_path());
        auto connection = std::make_unique<SQLiteConnection>(disk_, file_, busyTimeOut_);
        prepare_(*connection);
        connection_ = std::move(connection);
    }
    return *connection_;
}

/// A log beside it that SQLite has left is dropped by SQLite when it finds the successor empty.
void SQLiteFile::setAside(const char* reason) {
    connection_.reset();
    auto name = freeNameBeside(file_, *disk_);
    disk_->renameFile(file_, name);
    log.error("setAside(reason:)", [&] {
        return "The store " + file_.filename().string() + " is damaged (" + reason + "); it was set aside as " +
               name.filename().string() + " and is replaced.";
    });
}

}  // namespace vantix
