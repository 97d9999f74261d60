#include "VantixCore/Settings/FileUserDefaults.h"

#include "Platform/Ports/Disk.h"
#include "Platform/Values/JSON.h"
#include "VantixCore/VantixLogger.h"

#include <cstdint>
#include <string>
#include <system_error>
#include <utility>

namespace vantix {

namespace {

constexpr LogSource log{"Settings/FileUserDefaults"};
constexpr const char* customerIdKey = "customerId";
constexpr const char* versionKey = "version";
/// A file without a version is of the first.
constexpr std::int64_t knownVersion = 1;
/// Bytes.
constexpr std::uintmax_t largestFile = 1U << 20;

/// Absent when the text holds no settings.
std::optional<Dictionary> parsedSettings(const std::string& text) {
    auto parsed = parseJSON(text);
    if (!parsed || !parsed.value().dictionary()) return {};
    const Dictionary& settings = *parsed.value().dictionary();
    const Value* version = settings.find(versionKey);
    const Value* customerId = settings.find(customerIdKey);
    if (version && !version->integer()) return {};
    if (customerId && !customerId->text() && !customerId->isNull()) return {};
    return settings;
}

std::int64_t versionOf(const Dictionary& settings) {
    const Value* version = settings.find(versionKey);
    return version ? *version->integer() : knownVersion;
}

}  // namespace

FileUserDefaults::FileUserDefaults(std::shared_ptr<Disk> disk, std::filesystem::path file,
                                   std::shared_ptr<DispatchQueue> writer)
    : disk_(std::move(disk)), file_(std::move(file)), writer_(std::move(writer)) {
    fileState_ = read();
}

std::optional<std::string> FileUserDefaults::customerId() const {
    if (fileState_ == FileState::unread) readAgain();
    std::lock_guard lock(mutex_);
    const Dictionary& told = changes_.find(customerIdKey) ? changes_ : stored_;
    const std::string* text = told.text(customerIdKey);
    return text ? std::optional(*text) : std::nullopt;
}

void FileUserDefaults::setCustomerId(std::optional<std::string> customerId) {
    {
        std::lock_guard lock(mutex_);
        changes_.set(customerIdKey, customerId ? Value(std::move(*customerId)) : Value());
    }
    writer_->async([self = shared_from_this()] { self->write(); });
}

void FileUserDefaults::readAgain() const {
    if (isToReadAgain_.exchange(true)) return;
    writer_->async([self = shared_from_this()] {
        self->isToReadAgain_ = false;
        if (self->fileState_ == FileState::unread) self->fileState_ = self->read();
    });
}

FileUserDefaults::FileState FileUserDefaults::read() const {
    try {
        auto text = disk_->readFile(file_, largestFile);
        removeDraft();
        if (!text) return FileState::read;
        auto settings = parsedSettings(*text);
        return settings ? take(std::move(*settings)) : setAside("it holds no settings");
    } catch (const OddFile& odd) {
        return setAside(odd.what());
    } catch (const std::system_error& problem) {
        log.error("read()", [&] { return std::string("The settings could not be read: ") + problem.what(); });
        return FileState::unread;
    }
}

/// One that stays does no harm.
void FileUserDefaults::removeDraft() const {
    try {
        disk_->removeDraft(file_);
    } catch (const std::system_error& problem) {
        log.error("removeDraft()",
                  [&] { return std::string("A draft of the settings could not be removed: ") + problem.what(); });
    }
}

FileUserDefaults::FileState FileUserDefaults::take(Dictionary settings) const {
    if (std::int64_t version = versionOf(settings); version > knownVersion) {
        log.error("take(settings:)", [&] {
            return "The settings in " + file_.string() + " are of version " + std::to_string(version) +
                   ", newer than " + std::to_string(knownVersion) + "; they stay as they are, and changes in memory.";
        });
        return FileState::newer;
    }
    std::lock_guard lock(mutex_);
    stored_ = std::move(settings);
    return FileState::read;
}

FileUserDefaults::FileState FileUserDefaults::setAside(const std::string& reason) const {
    std::string outcome;
    auto state = FileState::read;
    try {
        outcome = "were set aside as " + disk_->setAside(file_).filename().string();
    } catch (const std::system_error& problem) {
        outcome = std::string("could not be set aside: ") + problem.what();
        state = FileState::unread;
    }
    log.error("setAside(reason:)", [&] {
        return "The settings in " + file_.string() + " are damaged (" + reason + "), count as none and " + outcome;
    });
    return state;
}

void FileUserDefaults::write() {
    if (fileState_ == FileState::unread) fileState_ = read();
    if (fileState_ != FileState::read) return;
    std::string text;
    {
        std::lock_guard lock(mutex_);
        for (const auto& [key, value] : std::exchange(changes_, {})) stored_.set(key, value);
        stored_.set(versionKey, knownVersion);
        text = toJSON(stored_);
    }
    try {
        disk_->makeFolder(file_.parent_path());
        disk_->replaceFile(file_, text);
    } catch (const std::system_error& problem) {
        log.error("write()", [&] { return std::string("The settings could not be written: ") + problem.what(); });
    }
}

}  // namespace vantix
