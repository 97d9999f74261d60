#include "Platform/Values/Value.h"

#include <cmath>
#include <functional>

namespace vantix {

namespace {

/// Up to this size a scan over the entries beats a look into the index.
constexpr std::size_t scannedEntries = 16;

/// The integer that a floating-point number is equal to, if there is one.
std::optional<std::int64_t> exactInteger(double number) {
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (!(number >= -limit && number < limit) || std::trunc(number) != number) return {};
    return static_cast<std::int64_t>(number);
}

std::size_t combine(std::size_t seed, std::size_t hash) {
    return seed ^ (hash + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2));
}

}  // namespace

Dictionary::Dictionary() = default;

Dictionary::Dictionary(std::initializer_list<Entry> entries) {
    for (const auto& [key, value] : entries) set(key, value);
}

Dictionary::Dictionary(const Dictionary& other)
    : entries_(other.entries_), index_(other.index_ ? std::make_unique<Index>(*other.index_) : nullptr) {}

Dictionary::Dictionary(Dictionary&& other) noexcept = default;

Dictionary& Dictionary::operator=(Dictionary other) noexcept {
    entries_.swap(other.entries_);
    index_.swap(other.index_);
    return *this;
}

Dictionary::~Dictionary() = default;

bool Dictionary::isEmpty() const { return entries_.empty(); }

std::size_t Dictionary::size() const { return entries_.size(); }

std::vector<Dictionary::Entry>::const_iterator Dictionary::begin() const { return entries_.begin(); }

std::vector<Dictionary::Entry>::const_iterator Dictionary::end() const { return entries_.end(); }

void Dictionary::set(std::string key, Value value) {
    if (auto known = position(key)) {
        entries_[*known].second = std::move(value);
        return;
    }
    entries_.emplace_back(std::move(key), std::move(value));
    if (entries_.size() <= scannedEntries) return;
    if (!index_) index_ = std::make_unique<Index>();
    for (std::size_t at = index_->size(); at < entries_.size(); ++at) {
        index_->emplace(std::hash<std::string_view>{}(entries_[at].first), at);
    }
}

std::optional<std::size_t> Dictionary::position(std::string_view key) const {
    if (!index_) {
        for (std::size_t at = 0; at < entries_.size(); ++at) {
            if (entries_[at].first == key) return at;
        }
        return {};
    }
    auto [first, last] = index_->equal_range(std::hash<std::string_view>{}(key));
    for (; first != last; ++first) {
        if (entries_[first->second].first == key) return first->second;
    }
    return {};
}

const Value* Dictionary::find(std::string_view key) const {
    auto at = position(key);
    return at ? &entries_[*at].second : nullptr;
}

const std::string* Dictionary::text(std::string_view key) const {
    const Value* value = find(key);
    return value ? value->text() : nullptr;
}

const Dictionary* Dictionary::dictionary(std::string_view key) const {
    const Value* value = find(key);
    return value ? value->dictionary() : nullptr;
}

const List* Dictionary::list(std::string_view key) const {
    const Value* value = find(key);
    return value ? value->list() : nullptr;
}

bool Dictionary::operator==(const Dictionary& other) const {
    if (size() != other.size()) return false;
    for (const auto& [key, value] : entries_) {
        const Value* counterpart = other.find(key);
        if (!counterpart || !(value == *counterpart)) return false;
    }
    return true;
}

Value Value::opaque(std::any value) {
    Value result;
    result.storage_ = std::make_shared<const std::any>(std::move(value));
    return result;
}

const std::any* Value::opaque() const {
    auto held = std::get_if<Opaque>(&storage_);
    return held ? held->get() : nullptr;
}

bool Value::isHashable() const {
    if (opaque()) return false;
    if (const List* values = list()) {
        for (const Value& value : *values) {
            if (!value.isHashable()) return false;
        }
    }
    if (const Dictionary* entries = dictionary()) {
        for (const auto& [key, value] : *entries) {
            if (!value.isHashable()) return false;
        }
    }
    return true;
}

bool Value::operator==(const Value& other) const {
    if (integer() && other.real()) return exactInteger(*other.real()) == *integer();
    if (real() && other.integer()) return other == *this;
    return storage_ == other.storage_;
}

std::size_t hashValue(const Value& value) {
    if (const bool* boolean = value.boolean()) return *boolean ? 0x5bd1e995 : 0x1b873593;
    if (const std::int64_t* integer = value.integer()) return std::hash<std::int64_t>{}(*integer);
    if (const double* real = value.real()) {
        auto integer = exactInteger(*real);
        return integer ? std::hash<std::int64_t>{}(*integer) : std::hash<double>{}(*real);
    }
    if (const std::string* text = value.text()) return std::hash<std::string>{}(*text);
    std::size_t hash = 0;
    if (const List* values = value.list()) {
        for (const Value& element : *values) hash = combine(hash, hashValue(element));
    }
    if (const Dictionary* entries = value.dictionary()) {
        for (const auto& [key, element] : *entries) hash += combine(std::hash<std::string>{}(key), hashValue(element));
    }
    return hash;
}

}  // namespace vantix
