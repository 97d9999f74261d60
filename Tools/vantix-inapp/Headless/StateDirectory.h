#pragma once

#include <filesystem>
#include <optional>

namespace vantix {

/// Where a run keeps its store and its settings: a given directory, made when missing, or else a new temporary one,
/// which is removed with all it holds when this object goes. Throws BadInput when there can be none.
class StateDirectory {
public:
    explicit StateDirectory(const std::optional<std::filesystem::path>& given);
    ~StateDirectory();
    StateDirectory(const StateDirectory&) = delete;
    StateDirectory& operator=(const StateDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

    /// For a process that stops before its time. A given directory stays.
    void removeTemporary() const;

private:
    std::filesystem::path path_;
    bool isTemporary_;
};

}  // namespace vantix
