#include "CampaignCheck/Rules/Wording.h"

#include "CampaignCheck/Fields/CampaignField.h"
#include "CampaignCheck/Fields/NearestWord.h"
#include "Platform/Values/UTF8.h"

#include <algorithm>

namespace vantix {

namespace {

/// The beginning of a text, whole characters only.
std::string_view beginning(std::string_view text, std::size_t longest) {
    if (text.size() <= longest) return text;
    auto end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return text.substr(0, end);
}

}  // namespace

std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 60;
    std::string marked = "\"";
    marked += repairUTF8(beginning(text, longest));
    return marked + (text.size() > longest ? "…\"" : "\"");
}

std::string nearestOrAll(std::string_view written, const std::vector<std::string_view>& words) {
    if (auto nearest = nearestWord(written, words); !nearest.empty()) return quoted(nearest);
    std::string all;
    for (std::string_view word : words) all += (all.empty() ? "one of " : ", ") + quoted(word);
    return all;
}

std::vector<std::string_view> wordsOf(std::string_view field) {
    auto fields = campaignFields();
    auto found = std::ranges::find(fields, field, &CampaignField::place);
    return found == fields.end() ? std::vector<std::string_view>() : found->words;
}

}  // namespace vantix
