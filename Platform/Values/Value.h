#pragma once

#include "Platform/Values/Export.h"

#include <any>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace vantix {

class Value;

using List = std::vector<Value>;

/// Keys and values in the order in which the keys were first set. Equality and hash ignore the order.
class VANTIX_EXPORT Dictionary {
public:
    using Entry = std::pair<std::string, Value>;

    Dictionary();
    Dictionary(std::initializer_list<Entry> entries);
    Dictionary(const Dictionary& other);
    Dictionary(Dictionary&& other) noexcept;
    Dictionary& operator=(Dictionary other) noexcept;
    ~Dictionary();

    bool isEmpty() const;
    std::size_t size() const;

    /// Replaces the value of a known key where it stands, appends a new one.
    void set(std::string key, Value value);
    /// Null when the key is absent. Valid until the next `set`.
    const Value* find(std::string_view key) const;

    /// The value under the key when it is present and of that kind.
    const std::string* text(std::string_view key) const;
    const Dictionary* dictionary(std::string_view key) const;
    const List* list(std::string_view key) const;

    std::vector<Entry>::const_iterator begin() const;
    std::vector<Entry>::const_iterator end() const;

    bool operator==(const Dictionary& other) const;

private:
    std::optional<std::size_t> position(std::string_view key) const;

    /// Positions by hash of the key.
    using Index = std::unordered_multimap<std::size_t, std::size_t>;

    std::vector<Entry> entries_;
    /// Kept only once a scan would be slow; apart, since most dictionaries are small and there are many.
    std::unique_ptr<Index> index_;
};

/// A value of unknown type: what JSON can say, or an opaque value of the host that only passes through.
class VANTIX_EXPORT Value {
public:
    Value() = default;
    Value(std::nullptr_t) {}
    Value(bool value) : storage_(value) {}
    Value(int value) : storage_(std::int64_t{value}) {}
    Value(std::int64_t value) : storage_(value) {}
    Value(double value) : storage_(value) {}
    Value(const char* value) : storage_(std::string(value)) {}
    Value(std::string value) : storage_(std::move(value)) {}
    Value(List value) : storage_(std::move(value)) {}
    Value(Dictionary value) : storage_(std::move(value)) {}
    static Value opaque(std::any value);

    bool isNull() const { return std::holds_alternative<std::monostate>(storage_); }
    /// Each accessor is null unless the value is of exactly that kind.
    const bool* boolean() const { return std::get_if<bool>(&storage_); }
    const std::int64_t* integer() const { return std::get_if<std::int64_t>(&storage_); }
    const double* real() const { return std::get_if<double>(&storage_); }
    const std::string* text() const { return std::get_if<std::string>(&storage_); }
    const List* list() const { return std::get_if<List>(&storage_); }
    const Dictionary* dictionary() const { return std::get_if<Dictionary>(&storage_); }
    const std::any* opaque() const;

    /// False for opaque values and for whatever contains one.
    bool isHashable() const;

    /// Integers compare exactly, an integer and a floating-point number by value; a bool equals no number, null equals
    /// null. Opaque values are equal only to themselves (copies share an identity).
    bool operator==(const Value& other) const;

private:
    using Opaque = std::shared_ptr<const std::any>;
    std::variant<std::monostate, bool, std::int64_t, double, std::string, List, Dictionary, Opaque> storage_;
};

/// Equal values hash alike, 1 and 1.0 included. Only for hashable values.
VANTIX_EXPORT std::size_t hashValue(const Value& value);

}  // namespace vantix
