#include "CampaignCheck/Fields/NearestWord.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace vantix {

namespace {

std::string lettersOnly(std::string_view word) {
    std::string letters;
    for (char character : word) {
        if (character == ' ' || character == '-' || character == '_') continue;
        bool isUpper = character >= 'A' && character <= 'Z';
        letters += isUpper ? static_cast<char>(character - 'A' + 'a') : character;
    }
    return letters;
}

/// How many letters must be put in, left out or replaced.
std::size_t distance(const std::string& one, const std::string& other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < other.size(); ++j) {
            std::size_t replaced = diagonal + (one[i] != other[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string_view nearestWord(std::string_view written, const std::vector<std::string_view>& words) {
    constexpr std::size_t longestWord = 64;
    if (written.size() > longestWord) return {};
    std::string letters = lettersOnly(written);
    std::string_view nearest;
    std::size_t least = letters.size() / 3 + 2;
    for (std::string_view word : words) {
        std::size_t apart = distance(letters, lettersOnly(word));
        if (apart >= least) continue;
        least = apart;
        nearest = word;
    }
    return nearest;
}

}  // namespace vantix
