#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Values/Result.h"
#include "VantixCore/Store/SQLiteConnection.h"

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace vantix {

/// A database file that is opened at its first use, made when missing, and replaced when damaged or no file at all; so
/// are the files beside it. One of a newer version is left as it is and fails. Used by one thread at a time.
class SQLiteFile {
public:
    using Operation = std::function<void(SQLiteConnection&)>;

    /// Touches nothing yet. An operation waits for `busyTimeOut` while another process holds the file. `prepare` is run
    /// on each connection that is opened, before anything else.
    SQLiteFile(std::shared_ptr<Disk> disk, std::filesystem::path file, Duration busyTimeOut, Operation prepare);

    const std::filesystem::path& path() const { return file_; }
    bool isOpen() const { return connection_ != nullptr; }
    /// Whether the last operation failed because the file is of a newer version.
    bool isNewer() const { return isNewer_; }

    /// Runs the operation on the opened file; what it throws becomes the error. A file that proves damaged is set aside
    /// and the operation runs once more, on a new one. After an error the next call opens the file anew.
    std::optional<Error> perform(const Operation& operation);

private:
    void performOrReplace(const Operation& operation);
    Error failure(const std::exception& problem);
    SQLiteConnection& opened();
    void clearTheWay();
    void setAside(const std::filesystem::path& file, const char* reason);

    std::shared_ptr<Disk> disk_;
    std::filesystem::path file_;
    Duration busyTimeOut_;
    Operation prepare_;
    std::unique_ptr<SQLiteConnection> connection_;
    bool isNewer_ = false;
};

}  // namespace vantix
