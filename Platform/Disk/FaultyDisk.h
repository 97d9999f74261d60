#pragma once

#include "Platform/Ports/Clock.h"
#include "Platform/Ports/Disk.h"
#include "Platform/Values/WordTable.h"

#include <atomic>
#include <functional>
#include <memory>

namespace vantix {

/// How a disk misbehaves.
enum class DiskFault {
    none,
    /// Takes no further byte; removing and reading go on.
    full,
    /// Lets nothing be changed.
    readOnly,
    /// Each call takes 100 milliseconds longer.
    slow,
};

inline constexpr WordTable<DiskFault, 4> diskFaultWords{{{DiskFault::none, "none"},
                                                         {DiskFault::full, "full"},
                                                         {DiskFault::readOnly, "read-only"},
                                                         {DiskFault::slow, "slow"}}};

/// Another disk that misbehaves on demand, for trying out what a system makes of it. Without a fault it forwards
/// everything. The fault may change at any time, from any thread; calls that are under way end as they began.
class FaultyDisk final : public Disk {
public:
    /// `wait` takes the time of a slow call; empty: it holds up the calling thread.
    explicit FaultyDisk(std::shared_ptr<Disk> disk, std::function<void(Duration)> wait = {});

    void setFault(DiskFault fault);

    std::optional<std::string> readFile(const Path& file) override;
    std::optional<std::string> readFirstLine(const Path& file) override;
    bool exists(const Path& file) override;
    std::vector<ListedFile> filesIn(const Path& folder) override;

    void makeFolder(const Path& folder) override;
    void makeFile(const Path& file) override;
    void replaceFile(const Path& file, std::string_view content) override;
    void touchFile(const Path& file) override;
    void renameFile(const Path& from, const Path& to) override;
    void removeFile(const Path& file) override;

    void admit(DiskUse use) override;

private:
    /// What is there already need not be made.
    void admitMaking(const Path& path);

    std::shared_ptr<Disk> disk_;
    std::function<void(Duration)> wait_;
    std::atomic<DiskFault> fault_{DiskFault::none};
};

}  // namespace vantix
