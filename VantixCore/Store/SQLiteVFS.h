#pragma once

#include <memory>

namespace vantix {

class Disk;

/// SQLite's own way to files, with the disk asked before each use: what the disk refuses fails with SQLITE_FULL,
/// SQLITE_READONLY or SQLITE_IOERR. Registered with SQLite for as long as it lives, so it must outlive the connections
/// that were opened with it. Usable from any thread.
class SQLiteVFS {
public:
    explicit SQLiteVFS(std::shared_ptr<Disk> disk);
    ~SQLiteVFS();
    SQLiteVFS(const SQLiteVFS&) = delete;
    SQLiteVFS& operator=(const SQLiteVFS&) = delete;

    /// By which a connection is opened with it.
    const char* name() const;
    Disk& disk() const;

private:
    struct Registration;
    std::unique_ptr<Registration> registration_;
};

}  // namespace vantix
