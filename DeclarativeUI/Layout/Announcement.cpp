#include "DeclarativeUI/Layout/Announcement.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vantix {

namespace {

bool isText(Role role) { return role == Role::title || role == Role::message || role == Role::text; }

/// Puts the elements into the card that they stand on or beside.
void adopt(std::vector<AccessibleElement>& elements) {
    auto isCard = [](const AccessibleElement& element) { return element.role == Role::card; };
    auto card = std::find_if(elements.begin(), elements.end(), isCard);
    if (card == elements.end()) return;
    for (AccessibleElement& element : elements) {
        if (!element.parent && !isCard(element)) element.parent = card->identity();
    }
}

/// Counts the elements of each group.
void countGroups(std::vector<AccessibleElement>& elements) {
    for (const AccessibleElement& group : elements) {
        if (!isGroup(group.role)) continue;
        Progress place;
        auto forEachMember = [&](auto&& action) {
            for (AccessibleElement& element : elements) {
                if (element.parent == group.identity() && takesTaps(element.role)) action(element);
            }
        };
        forEachMember([&](const AccessibleElement&) { ++place.total; });
        forEachMember([&](AccessibleElement& member) { member.progress = {++place.number, place.total}; });
    }
}

/// A row that acts is one control, which has the texts on it for its name; they are not said once more.
void mergeTextsOfControls(std::vector<AccessibleElement>& elements) {
    for (AccessibleElement& row : elements) {
        if (row.role != Role::row || !row.isEnabled) continue;
        row.kind = AccessibleKind::button;
        for (AccessibleElement& text : elements) {
            if (text.parent != row.identity() || !isText(text.role)) continue;
            row.name += (row.name.empty() ? "" : ", ") + text.name;
            text.kind = AccessibleKind::none;
        }
    }
}

void replace(std::string& text, std::string_view placeholder, int number) {
    if (auto at = text.find(placeholder); at != std::string::npos)
        text.replace(at, placeholder.size(), std::to_string(number));
}

std::string inWords(const Progress& progress, const SpokenWords& words) {
    std::string text = words.place;
    replace(text, "#1", progress.number);
    replace(text, "#2", progress.total);
    return text;
}

std::string nameOf(const AccessibleElement& element, const SpokenWords& words) {
    if (element.role == Role::close) return words.close;
    if (element.role == Role::stars) return words.rating;
    if (element.role == Role::star) return words.star + " " + element.value;
    return element.name;
}

std::vector<std::string> kindInWords(const AccessibleElement& element, const SpokenWords& words) {
    auto actingAs = [&](const std::string& kind) {
        return element.isEnabled ? std::vector{kind, words.button} : std::vector{kind};
    };
    switch (element.kind) {
        case AccessibleKind::heading:
            return {words.heading};
        case AccessibleKind::image:
            return actingAs(words.image);
        case AccessibleKind::dialog:
            return actingAs(words.dialog);
        case AccessibleKind::button:
            return {words.button};
        case AccessibleKind::radioButton:
            return {words.radioButton};
        case AccessibleKind::checkBox:
            return {words.checkBox};
        case AccessibleKind::adjustable:
            return {words.adjustable};
        case AccessibleKind::none:
        case AccessibleKind::text:
            return {};
    }
    return {};
}

std::string stateInWords(const AccessibleElement& element, const SpokenWords& words) {
    if (!element.selected) return {};
    if (element.kind == AccessibleKind::checkBox) return *element.selected ? words.checked : words.notChecked;
    return *element.selected ? words.selected : words.notSelected;
}

std::string spoken(const AccessibleElement& element, const SpokenWords& words) {
    if (element.kind == AccessibleKind::none) return {};
    std::vector<std::string> parts{element.name};
    for (std::string& kind : kindInWords(element, words)) parts.push_back(std::move(kind));
    parts.push_back(stateInWords(element, words));
    if (element.role != Role::star) parts.push_back(element.value);

    std::string phrase;
    for (const std::string& part : parts) {
        if (!part.empty()) phrase += (phrase.empty() ? "" : ", ") + part;
    }
    return phrase;
}

/// The place of a role in the order of reading.
std::ptrdiff_t rank(Role role) {
    constexpr std::array order{Role::card,   Role::row,   Role::title, Role::image,  Role::message, Role::text,
                               Role::option, Role::stars, Role::star,  Role::button, Role::close};
    return std::find(order.begin(), order.end(), role) - order.begin();
}

}  // namespace

AccessibleKind usualKind(Role role) {
    switch (role) {
        case Role::title:
            return AccessibleKind::heading;
        case Role::message:
        case Role::text:
            return AccessibleKind::text;
        case Role::image:
            return AccessibleKind::image;
        case Role::button:
        case Role::close:
        case Role::star:
        case Role::option:
            return AccessibleKind::button;
        case Role::card:
        case Role::row:
        case Role::divider:
        case Role::mark:
        case Role::stars:
        case Role::options:
            return AccessibleKind::none;
    }
    return AccessibleKind::none;
}

void announce(std::vector<AccessibleElement>& elements, const SpokenWords& words) {
    adopt(elements);
    countGroups(elements);
    mergeTextsOfControls(elements);
    for (AccessibleElement& element : elements) {
        if (element.progress) element.value = inWords(*element.progress, words);
        element.name = nameOf(element, words);
        element.spokenText = spoken(element, words);
    }
}

std::vector<AccessibleElement> inReadingOrder(std::vector<AccessibleElement> elements) {
    std::erase_if(elements, [](const AccessibleElement& element) { return element.spokenText.empty(); });
    std::stable_sort(elements.begin(), elements.end(), [](const AccessibleElement& a, const AccessibleElement& b) {
        return rank(a.role) < rank(b.role);
    });
    return elements;
}

}  // namespace vantix
