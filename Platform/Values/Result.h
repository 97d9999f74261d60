#pragma once

#include <string>
#include <utility>
#include <variant>

namespace vantix {

/// Why an operation failed, in words for a log line.
struct Error {
    std::string localizedDescription;

    bool operator==(const Error&) const = default;
};

/// The outcome of an operation that can fail: a value, or the reason why there is none.
template <typename T, typename E = Error>
class Result {
public:
    Result(T value) : outcome_(std::in_place_index<0>, std::move(value)) {}
    Result(E error) : outcome_(std::in_place_index<1>, std::move(error)) {}

    bool succeeded() const { return outcome_.index() == 0; }
    explicit operator bool() const { return succeeded(); }

    /// Only after success.
    const T& value() const& { return std::get<0>(outcome_); }
    T&& value() && { return std::get<0>(std::move(outcome_)); }
    /// Only after failure.
    const E& error() const { return std::get<1>(outcome_); }

private:
    std::variant<T, E> outcome_;
};

}  // namespace vantix
