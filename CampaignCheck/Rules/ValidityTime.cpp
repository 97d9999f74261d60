#include "CampaignCheck/Rules/ValidityTime.h"

#include "VantixInAppMessage/Core/InAppMessagePayload/WholeNumber.h"

#include <cstdio>
#include <string>

namespace vantix {

namespace {

using Time = std::chrono::system_clock::time_point;

/// What follows the time of day: nothing or "Z", "+02:00", "-0330".
std::optional<std::chrono::minutes> offsetFromUTC(std::string_view text) {
    if (text.empty() || text == "Z" || text == "z") return std::chrono::minutes(0);
    int hours = 0, minutes = 0, read = 0;
    std::string offset(text.substr(1));
    bool isRead = std::sscanf(offset.c_str(), "%2d:%2d%n", &hours, &minutes, &read) == 2 ||
                  std::sscanf(offset.c_str(), "%2d%2d%n", &hours, &minutes, &read) == 2;
    if (!isRead || static_cast<std::size_t>(read) != offset.size()) return {};
    int sign = text.front() == '-' ? -1 : 1;
    if (text.front() != '-' && text.front() != '+') return {};
    return std::chrono::minutes(sign * (hours * 60 + minutes));
}

}  // namespace

std::optional<Time> validityTime(std::string_view text) {
    using namespace std::chrono;
    if (auto seconds = wholeNumber(text)) {
        constexpr std::int64_t farthest = 9'000'000'000;
        bool isTime = *seconds >= 0 && *seconds < farthest;
        return isTime ? std::optional(Time(std::chrono::seconds(*seconds))) : std::nullopt;
    }
    std::string written(text);
    int year = 0, month = 0, day = 0, read = 0;
    if (std::sscanf(written.c_str(), "%4d-%2d-%2d%n", &year, &month, &day, &read) != 3) return {};
    year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                        std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok()) return {};
    std::string rest = written.substr(static_cast<std::size_t>(read));
    if (rest.empty()) return sys_days(date) + days(1);

    int hours = 0, minutes = 0, seconds = 0, length = 0;
    if (rest.front() != 'T' && rest.front() != 't' && rest.front() != ' ') return {};
    if (std::sscanf(rest.c_str() + 1, "%2d:%2d%n", &hours, &minutes, &length) != 2) return {};
    rest = rest.substr(1 + static_cast<std::size_t>(length));
    if (std::sscanf(rest.c_str(), ":%2d%n", &seconds, &length) == 1)
        rest = rest.substr(static_cast<std::size_t>(length));
    if (rest.starts_with('.')) rest = rest.substr(std::min(rest.find_first_not_of("0123456789", 1), rest.size()));
    auto offset = offsetFromUTC(rest);
    if (!offset) return {};
    return sys_days(date) + std::chrono::hours(hours) + std::chrono::minutes(minutes) + std::chrono::seconds(seconds) -
           *offset;
}

}  // namespace vantix
