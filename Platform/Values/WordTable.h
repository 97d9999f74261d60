#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vantix {

/// The words of an enumeration, case by case. A table names every case once:
///
///     constexpr WordTable<TextFontStyle, 3> words{{{TextFontStyle::regular, "REGULAR"}, …}};
template <typename Case, std::size_t count>
struct WordTable {
    /// A value and its word.
    struct Entry {
        Case value;
        std::string_view word;
    };
    Entry entries[count];

    /// Empty for a case that the table does not name.
    constexpr std::string_view word(Case value) const {
        for (const Entry& entry : entries) {
            if (entry.value == value) return entry.word;
        }
        return {};
    }
    /// Absent for an unknown word; letter case counts.
    constexpr std::optional<Case> value(std::string_view word) const {
        for (const Entry& entry : entries) {
            if (entry.word == word) return entry.value;
        }
        return {};
    }
};

}  // namespace vantix
