#include "VantixCore/Settings/FileUserDefaults.h"

#include "Platform/Values/JSON.h"
#include "VantixCore/PrivateFiles.h"
#include "VantixCore/VantixLogger.h"

#include <exception>
#include <fstream>
#include <iterator>
#include <utility>

namespace vantix {

namespace {

constexpr const char* customerIdKey = "customerId";

Dictionary readSettings(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return {};
    std::string text(std::istreambuf_iterator<char>(stream), {});
    auto parsed = parseJSON(text);
    if (parsed && parsed.value().dictionary()) return *parsed.value().dictionary();
    VantixLogger::error("The settings in " + file.string() + " are damaged and count as none.",
                        {"FileUserDefaults", "settings()"});
    return {};
}

}  // namespace

FileUserDefaults::FileUserDefaults(std::filesystem::path file, std::shared_ptr<DispatchQueue> writer)
    : file_(std::move(file)), writer_(std::move(writer)), settings_(readSettings(file_)) {}

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
        makePrivateDirectory(file_.parent_path());
        replacePrivateFile(file_, text);
    } catch (const std::exception& problem) {
        VantixLogger::error(std::string("The settings could not be written: ") + problem.what(),
                            {"FileUserDefaults", "write()"});
    }
}

}  // namespace vantix
