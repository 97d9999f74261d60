#include "VantixCore/Store/SQLiteVFS.h"

#include "Platform/Ports/Disk.h"
#include "Platform/Values/UUID.h"

#include <sqlite3.h>

#include <cstdint>
#include <new>
#include <string>
#include <system_error>
#include <utility>

namespace vantix {

namespace {

/// What the disk says, as a result code of SQLite.
template <typename Question>
int answered(Question question) {
    try {
        question();
        return SQLITE_OK;
    } catch (const std::system_error& problem) {
        if (problem.code() == std::errc::no_space_on_device) return SQLITE_FULL;
        if (problem.code() == std::errc::read_only_file_system) return SQLITE_READONLY;
        return SQLITE_IOERR;
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
}

int admitted(Disk& disk, const DiskAccess& access) {
    return answered([&] { disk.admit(access); });
}

/// A file without a path is one that SQLite wants for a while only.
int admittedToOpen(Disk& disk, const char* path, int flags) {
    return answered([&] {
        bool makesFile = (flags & SQLITE_OPEN_CREATE) && !(path && disk.exists(path));
        disk.admit({makesFile ? DiskUse::make : DiskUse::read, path ? path : ""});
    });
}

/// An open file. SQLite reserves the room for it and for the machine's own file object, which stands behind it.
struct AskingFile : sqlite3_file {
    Disk* disk;
    /// SQLite keeps it for as long as the file is open.
    const char* path;

    sqlite3_file* machine() { return reinterpret_cast<sqlite3_file*>(this + 1); }
    int admitted(DiskUse use, sqlite3_int64 offset = 0, int size = 0) const {
        return vantix::admitted(*disk,
                                {use, path, static_cast<std::uint64_t>(offset), static_cast<std::uint64_t>(size)});
    }
    int admittedToShare() const { return vantix::admitted(*disk, {DiskUse::make, std::string(path) + "-shm"}); }

    static AskingFile* of(sqlite3_file* file) { return static_cast<AskingFile*>(file); }
};

/// A method of a file that the machine carries out without the disk being asked.
template <auto method, typename Answer, typename... Arguments>
Answer forward(sqlite3_file* file, Arguments... arguments) {
    sqlite3_file* machine = AskingFile::of(file)->machine();
    return (machine->pMethods->*method)(machine, arguments...);
}

/// A method that the machine carries out when the disk admits it.
template <auto method, DiskUse use, typename... Arguments>
int ask(sqlite3_file* file, Arguments... arguments) {
    int code = AskingFile::of(file)->admitted(use);
    return code == SQLITE_OK ? forward<method, int>(file, arguments...) : code;
}

int write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
    int code = AskingFile::of(file)->admitted(DiskUse::write, offset, size);
    return code == SQLITE_OK ? forward<&sqlite3_io_methods::xWrite, int>(file, bytes, size, offset) : code;
}

int truncate(sqlite3_file* file, sqlite3_int64 size) {
    int code = AskingFile::of(file)->admitted(DiskUse::truncate, size);
    return code == SQLITE_OK ? forward<&sqlite3_io_methods::xTruncate, int>(file, size) : code;
}

/// Memory that connections share lies in a file, which grows with it. SQLITE_READONLY would say that there is memory,
/// to be read only.
int mapSharedMemory(sqlite3_file* file, int page, int pageSize, int extends, void volatile** memory) {
    int code = extends ? AskingFile::of(file)->admittedToShare() : SQLITE_OK;
    if (code == SQLITE_READONLY) return SQLITE_CANTOPEN;
    if (code != SQLITE_OK) return code;
    return forward<&sqlite3_io_methods::xShmMap, int>(file, page, pageSize, extends, memory);
}

/// Without the methods of version 3: no file is mapped, so every read asks.
constexpr sqlite3_io_methods fileMethods{
    .iVersion = 2,
    .xClose = forward<&sqlite3_io_methods::xClose, int>,
    .xRead = ask<&sqlite3_io_methods::xRead, DiskUse::read>,
    .xWrite = write,
    .xTruncate = truncate,
    .xSync = ask<&sqlite3_io_methods::xSync, DiskUse::sync>,
    .xFileSize = ask<&sqlite3_io_methods::xFileSize, DiskUse::read>,
    .xLock = forward<&sqlite3_io_methods::xLock, int>,
    .xUnlock = forward<&sqlite3_io_methods::xUnlock, int>,
    .xCheckReservedLock = forward<&sqlite3_io_methods::xCheckReservedLock, int>,
    .xFileControl = forward<&sqlite3_io_methods::xFileControl, int>,
    .xSectorSize = forward<&sqlite3_io_methods::xSectorSize, int>,
    .xDeviceCharacteristics = forward<&sqlite3_io_methods::xDeviceCharacteristics, int>,
    .xShmMap = mapSharedMemory,
    .xShmLock = forward<&sqlite3_io_methods::xShmLock, int>,
    .xShmBarrier = forward<&sqlite3_io_methods::xShmBarrier, void>,
    .xShmUnmap = forward<&sqlite3_io_methods::xShmUnmap, int>,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

}  // namespace

/// The VFS as SQLite knows it.
struct SQLiteVFS::Registration {
    explicit Registration(std::shared_ptr<Disk> diskToAsk);

    static Registration& of(sqlite3_vfs* vfs) { return *static_cast<Registration*>(vfs->pAppData); }
    static int open(sqlite3_vfs* vfs, const char* path, sqlite3_file* file, int flags, int* flagsUsed);
    static int remove(sqlite3_vfs* vfs, const char* path, int syncsFolder);
    /// A method that the machine carries out without the disk being asked.
    template <auto method, typename... Arguments>
    static int forward(sqlite3_vfs* vfs, Arguments... arguments) {
        sqlite3_vfs* machine = of(vfs).machine;
        return (machine->*method)(machine, arguments...);
    }

    std::shared_ptr<Disk> disk;
    sqlite3_vfs* machine = sqlite3_vfs_find(nullptr);
    std::string name = "vantix-" + makeUUID();
    sqlite3_vfs vfs;
};

SQLiteVFS::Registration::Registration(std::shared_ptr<Disk> diskToAsk)
    : disk(std::move(diskToAsk)),
      vfs{.iVersion = 2,
          .szOsFile = static_cast<int>(sizeof(AskingFile)) + machine->szOsFile,
          .mxPathname = machine->mxPathname,
          .pNext = nullptr,
          .zName = name.c_str(),
          .pAppData = this,
          .xOpen = open,
          .xDelete = remove,
          .xAccess = forward<&sqlite3_vfs::xAccess>,
          .xFullPathname = forward<&sqlite3_vfs::xFullPathname>,
          .xDlOpen = nullptr,
          .xDlError = nullptr,
          .xDlSym = nullptr,
          .xDlClose = nullptr,
          .xRandomness = forward<&sqlite3_vfs::xRandomness>,
          .xSleep = forward<&sqlite3_vfs::xSleep>,
          .xCurrentTime = forward<&sqlite3_vfs::xCurrentTime>,
          .xGetLastError = forward<&sqlite3_vfs::xGetLastError>,
          .xCurrentTimeInt64 = forward<&sqlite3_vfs::xCurrentTimeInt64>,
          .xSetSystemCall = nullptr,
          .xGetSystemCall = nullptr,
          .xNextSystemCall = nullptr} {}

int SQLiteVFS::Registration::open(sqlite3_vfs* vfs, const char* path, sqlite3_file* file, int flags, int* flagsUsed) {
    AskingFile* asking = AskingFile::of(file);
    asking->pMethods = nullptr;
    asking->disk = of(vfs).disk.get();
    asking->path = path ? path : "";
    int code = admittedToOpen(*asking->disk, path, flags);
    if (code == SQLITE_OK) code = forward<&sqlite3_vfs::xOpen>(vfs, path, asking->machine(), flags, flagsUsed);
    if (code == SQLITE_OK) asking->pMethods = &fileMethods;
    return code;
}

int SQLiteVFS::Registration::remove(sqlite3_vfs* vfs, const char* path, int syncsFolder) {
    int code = admitted(*of(vfs).disk, {DiskUse::remove, path});
    return code == SQLITE_OK ? forward<&sqlite3_vfs::xDelete>(vfs, path, syncsFolder) : code;
}

SQLiteVFS::SQLiteVFS(std::shared_ptr<Disk> disk) : registration_(std::make_unique<Registration>(std::move(disk))) {
    sqlite3_vfs_register(&registration_->vfs, false);
}

SQLiteVFS::~SQLiteVFS() { sqlite3_vfs_unregister(&registration_->vfs); }

const char* SQLiteVFS::name() const { return registration_->name.c_str(); }

Disk& SQLiteVFS::disk() const { return *registration_->disk; }

}  // namespace vantix
