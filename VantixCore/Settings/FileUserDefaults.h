#pragma once

#include "Platform/Ports/DispatchQueue.h"
#include "Platform/Values/Value.h"
#include "VantixCore/SharedUserDefaults.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vantix {

class Disk;

/// Settings of the installed host, kept as one JSON object in a file. The constructor reads the file; every change is
/// written on the queue, which is serial. Keys of others stay as they are. A damaged file counts as empty and is
/// logged; so is a failure to write.
class FileUserDefaults final : public SharedUserDefaults, public std::enable_shared_from_this<FileUserDefaults> {
public:
    FileUserDefaults(std::shared_ptr<Disk> disk, std::filesystem::path file, std::shared_ptr<DispatchQueue> writer);

    std::optional<std::string> customerId() const override;
    void setCustomerId(std::optional<std::string> customerId) override;

private:
    void write() const;

    std::shared_ptr<Disk> disk_;
    std::filesystem::path file_;
    std::shared_ptr<DispatchQueue> writer_;
    mutable std::mutex mutex_;
    /// Only under the lock.
    Dictionary settings_;
};

}  // namespace vantix
