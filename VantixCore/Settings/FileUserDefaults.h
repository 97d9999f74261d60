#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Value.h"
#include "VantixCore/SharedUserDefaults.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vantix {

class Disk;

/// Settings of the installed host, kept as one JSON object in a file. The constructor reads the file; every change is
/// written on the queue, which is serial. Keys of others stay as they are.
///
/// Nothing here throws; what goes wrong is logged. A file that holds no settings, or is no file at all, counts as empty
/// and is set aside. One that the disk fails to read counts as empty until it can be read, which is tried
/// again, on the queue, with each question and each change. One of a newer version is left as it is; the settings then
/// live in memory alone.
class FileUserDefaults final : public SharedUserDefaults, public std::enable_shared_from_this<FileUserDefaults> {
public:
    FileUserDefaults(std::shared_ptr<Disk> disk, std::filesystem::path file, std::shared_ptr<DispatchQueue> writer);

    std::optional<std::string> customerId() const override;
    void setCustomerId(std::optional<std::string> customerId) override;

private:
    /// What is known of the file.
    enum class FileState { unread, read, newer };

    void readAgain() const;
    FileState read() const;
    void removeDraft() const;
    FileState take(Dictionary settings) const;
    FileState setAside(const std::string& reason) const;
    void write();

    std::shared_ptr<Disk> disk_;
    std::filesystem::path file_;
    std::shared_ptr<DispatchQueue> writer_;
    /// Once made, changed on the queue only.
    mutable std::atomic<FileState> fileState_ = FileState::unread;
    mutable std::atomic<bool> isToReadAgain_ = false;
    mutable std::mutex mutex_;
    /// Only under the lock. What the file says, and what was changed since it was read.
    mutable Dictionary stored_;
    Dictionary changes_;
};

}  // namespace vantix
