#pragma once

#include "Platform/Values/Result.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// Which records are meant: those whose attribute compares so with the operand. Both are data; nothing of them is ever
/// read as a query language.
struct Predicate {
    enum class Comparison {
        /// Exactly equal texts; an attribute without value equals nothing.
        equals,
        /// The operand stands somewhere in the attribute, letter case aside; no wildcards.
        containsIgnoringCase,
    };

    std::string attribute;
    Comparison comparison = Comparison::equals;
    std::string operand;
};

/// Selects records of an entity: all of them, in insertion order, unless a predicate or a limit restricts it. A limit
/// below 1 selects none.
struct FetchRequest {
    std::string entityName;
    std::optional<Predicate> predicate;
    std::optional<int> fetchLimit;
};

/// One record: a text, or nothing, for each attribute.
using Record = std::map<std::string, std::optional<std::string>>;

/// The records of one entity in one store. Every operation returns at once; operations run in order on the store
/// thread, where completions are called, in order. Usable from any thread. A completion may be empty. An operation
/// fails, and changes nothing, when it names an attribute or an entity that the repository does not have or when the
/// file cannot be used; later operations try the file anew.
class BaseRepository {
public:
    virtual ~BaseRepository() = default;

    /// Creates one record; attributes without a key stay empty. What was reported as stored survives a sudden end of
    /// the process; a loss of power may cost the last changes, never the file.
    virtual void insert(std::map<std::string, std::string> values, std::function<void(Result<bool>)> completion) = 0;
    /// Creates a record of each values that `next` gives, until it gives none, as one operation: later ones wait for
    /// the last record. `next` is asked on the store thread once the record before is stored, so that one is in memory
    /// at a time. The completion is called for each. A record that fails does not keep the next ones from being stored.
    virtual void insertEach(std::function<std::optional<std::map<std::string, std::string>>()> next,
                            std::function<void(Result<bool>)> completion) = 0;
    /// Without sort descriptors (none are offered) the order is that of insertion.
    virtual void fetch(std::optional<Predicate> predicate, std::optional<int> limit,
                       std::function<void(Result<std::vector<Record>>)> completion) = 0;
    /// Deletes in one operation what the request selects. Nothing to delete is a success.
    virtual void batchDelete(FetchRequest request, std::function<void(Result<bool>)> completion) = 0;
};

}  // namespace vantix
