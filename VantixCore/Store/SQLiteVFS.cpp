#include "VantixCore/Store/SQLiteVFS.h"

#include "Platform/Ports/Disk.h"
#include "Platform/Values/UUID.h"

#include <sqlite3.h>

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
    }
}

int admitted(Disk& disk, DiskUse use) {
    return answered([&] { disk.admit(use); });
}

int admittedToOpen(Disk& disk, const char* path, int flags) {
    return answered([&] {
        bool makesFile = (flags & SQLITE_OPEN_CREATE) && !(path && disk.exists(path));
        disk.admit(makesFile ? DiskUse::grow : DiskUse::read);
    });
}

/// An open file. SQLite reserves the room for it and for the machine's own file object, which stands behind it.
struct AskingFile : sqlite3_file {
    Disk* disk;

    sqlite3_file* machine() { return reinterpret_cast<sqlite3_file*>(this + 1); }

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
    int code = admitted(*AskingFile::of(file)->disk, use);
    return code == SQLITE_OK ? forward<method, int>(file, arguments...) : code;
}

/// Memory that connections share lies in a file, which grows with it. SQLITE_READONLY would say that there is memory,
/// to be read only.
int mapSharedMemory(sqlite3_file* file, int page, int pageSize, int extends, void volatile** memory) {
    int code = extends ? admitted(*AskingFile::of(file)->disk, DiskUse::grow) : SQLITE_OK;
    if (code == SQLITE_READONLY) return SQLITE_CANTOPEN;
    if (code != SQLITE_OK) return code;
    return forward<&sqlite3_io_methods::xShmMap, int>(file, page, pageSize, extends, memory);
}

/// Without the methods of version 3: no file is mapped, so every read asks.
constexpr sqlite3_io_methods fileMethods{
    .iVersion = 2,
    .xClose = forward<&sqlite3_io_methods::xClose, int>,
    .xRead = ask<&sqlite3_io_methods::xRead, DiskUse::read>,
    .xWrite = ask<&sqlite3_io_methods::xWrite, DiskUse::grow>,
    .xTruncate = ask<&sqlite3_io_methods::xTruncate, DiskUse::change>,
    .xSync = ask<&sqlite3_io_methods::xSync, DiskUse::change>,
    .xFileSize = forward<&sqlite3_io_methods::xFileSize, int>,
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
    int code = admittedToOpen(*asking->disk, path, flags);
    if (code == SQLITE_OK) code = forward<&sqlite3_vfs::xOpen>(vfs, path, asking->machine(), flags, flagsUsed);
    if (code == SQLITE_OK) asking->pMethods = &fileMethods;
    return code;
}

int SQLiteVFS::Registration::remove(sqlite3_vfs* vfs, const char* path, int syncsFolder) {
    int code = admitted(*of(vfs).disk, DiskUse::change);
    return code == SQLITE_OK ? forward<&sqlite3_vfs::xDelete>(vfs, path, syncsFolder) : code;
}

SQLiteVFS::SQLiteVFS(std::shared_ptr<Disk> disk) : registration_(std::make_unique<Registration>(std::move(disk))) {
    sqlite3_vfs_register(&registration_->vfs, false);
}

SQLiteVFS::~SQLiteVFS() { sqlite3_vfs_unregister(&registration_->vfs); }

const char* SQLiteVFS::name() const { return registration_->name.c_str(); }

Disk& SQLiteVFS::disk() const { return *registration_->disk; }

}  // namespace vantix
