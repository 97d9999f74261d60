#include "VantixCore/Settings/FileUserDefaults.h"

#include "Platform/Ports/Disk.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/VantixLogger.h"

#include <string>
#include <system_error>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Settings/FileUserDefaults"};
constexpr const char* customerIdKey = "customerId";

Dictionary readSettings(Disk& disk, const std::filesystem::path& file) {
    try {
        auto text = disk.readFile(file, 1U << 20);
        if (!text) return {};
        auto parsed = parseJSON(*text);
        if (parsed && parsed.value().dictionary()) return *parsed.value().dictionary();
        log.error("readSettings(disk:file:)",
                  [&] { return "The settings in " + file.string() + " are damaged and count as none."; });
    } catch (const std::system_error& problem) {
        log.error("readSettings(disk:file:)",
                  [&] { return std::string("The settings could not be read: ") + problem.what(); });
    }
    return {};
}

}  // namespace

FileUserDefaults::FileUserDefaults(std::shared_ptr<Disk> disk, std::filesystem::path file,
                                   std::shared_ptr<DispatchQueue> writer)
    : disk_(std::move(disk)),
      file_(std::move(file)),
      writer_(std::move(writer)),
      settings_(readSettings(*disk_, file_)) {}

std::optional<std::string> FileUserDefaults::customerId() const {
    std::lock_guard lock(mutex_);
    const std::string* text = settings_.text(customerIdKey);
    return text ? std::optional(*text) : std::nullopt;
}

void FileUserDefaults::setCustomerId(std::optional<std::string> customerId) {
    {
        std::lock_guard lock(mutex_);
        settings_.set(customerIdKey, customerId ? Value(std::move(*customerId)) : Value());
    }
    writer_->async([self = shared_from_this()] { self->write(); });
}

void FileUserDefaults::write() const {
    std::string text;
    {
        std::lock_guard lock(mutex_);
        text = toJSON(settings_);
    }
    try {
        disk_->makeFolder(file_.parent_path());
        disk_->replaceFile(file_, text);
    } catch (const std::system_error& problem) {
        log.error("write()", [&] { return std::string("The settings could not be written: ") + problem.what(); });
    }
}

}  // namespace vantix
