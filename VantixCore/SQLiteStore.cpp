#include "VantixCore/SQLiteStore.h"

#include "VantixCore/PrivateFiles.h"
#include "VantixCore/SQLiteTable.h"
#include "VantixCore/VantixLogger.h"

#include <exception>
#include <string>
#include <utility>

namespace vantix {

namespace {

std::filesystem::path withEnding(std::filesystem::path file, const std::string& ending) { return file += ending; }

std::filesystem::path freeNameBeside(const std::filesystem::path& file) {
    for (int number = 1;; ++number) {
        auto name = withEnding(file, ".damaged-" + std::to_string(number));
        if (!std::filesystem::exists(name)) return name;
    }
}

}  // namespace

SQLiteStore::SQLiteStore(std::filesystem::path file, ObjectModel model, bool infersMapping,
                         std::shared_ptr<DispatchQueue> queue)
    : file_(std::move(file)), model_(std::move(model)), infersMapping_(infersMapping), queue_(std::move(queue)) {}

SQLiteStore::~SQLiteStore() {
    if (connection_) queue_->async([queue = queue_, connection = std::move(connection_)] {});
}

bool SQLiteStore::keeps(const std::filesystem::path& file, const ObjectModel& model, bool infersMapping) const {
    return file == file_ && model == model_ && infersMapping == infersMapping_;
}

std::optional<Error> SQLiteStore::perform(const std::function<void(SQLiteConnection&)>& operation) {
    try {
        performOrReplace(operation);
        return {};
    } catch (const std::exception& problem) {
        connection_.reset();
        return Error{"The store " + file_.filename().string() + " failed: " + problem.what()};
    }
}

void SQLiteStore::performOrReplace(const std::function<void(SQLiteConnection&)>& operation) {
    try {
        operation(opened());
        return;
    } catch (const SQLiteError& problem) {
        if (!problem.isDamage()) throw;
        setAside(problem.what());
    }
    operation(opened());
}

SQLiteConnection& SQLiteStore::opened() {
    if (!connection_) {
        makePrivateDirectory(file_.parent_path());
        auto connection = std::make_shared<SQLiteConnection>(file_);
        extendToModel(*connection);
        connection_ = std::move(connection);
    }
    return *connection_;
}

void SQLiteStore::extendToModel(SQLiteConnection& connection) const {
    for (const auto& entity : model_.entities) {
        SQLiteTable table(entity);
        table.create(connection);
        if (infersMapping_) table.addMissingColumns(connection);
    }
}

void SQLiteStore::setAside(const char* reason) {
    connection_.reset();
    auto name = freeNameBeside(file_);
    for (const char* part : {"", "-wal"}) {
        if (std::filesystem::exists(withEnding(file_, part))) {
            std::filesystem::rename(withEnding(file_, part), withEnding(name, part));
        }
    }
    VantixLogger::error("The store " + file_.filename().string() + " is damaged (" + reason +
                            "); it was set aside as " + name.filename().string() + " and is replaced.",
                        {"SQLiteStore", "setAside(reason:)"});
}

}  // namespace vantix
