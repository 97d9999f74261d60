#pragma once

#include "Platform/Values/Color.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/Font.h"
#include "Platform/Values/Geometry.h"
#include "Platform/Values/WordTable.h"

#include <optional>
#include <string>

namespace vantix {

/// What an element is to the person who meets it.
enum class Role { card, title, message, text, image, button, close, star, option, row, divider, mark, stars, options };

/// The words for the roles, as tools print them.
inline constexpr WordTable<Role, 14> roleWords{{
    {Role::card, "card"},
    {Role::title, "title"},
    {Role::message, "message"},
    {Role::text, "text"},
    {Role::image, "image"},
    {Role::button, "button"},
    {Role::close, "close"},
    {Role::star, "star"},
    {Role::option, "option"},
    {Role::row, "row"},
    {Role::divider, "divider"},
    {Role::mark, "mark"},
    {Role::stars, "stars"},
    {Role::options, "options"},
}};

VANTIX_EXPORT std::string roleName(Role role);

/// Whether elements of this role hold others of one kind together, and paint nothing themselves.
constexpr bool isGroup(Role role) { return role == Role::stars || role == Role::options; }

/// Whether elements of this role hold others, and are no text or picture themselves.
constexpr bool isContainer(Role role) { return role == Role::card || role == Role::row || isGroup(role); }

/// Whether a tap on an element of this role can do something.
constexpr bool takesTaps(Role role) {
    return role == Role::card || role == Role::row || role == Role::image || role == Role::button ||
           role == Role::close || role == Role::star || role == Role::option;
}

/// What assistive technology takes an element for; with `none` it passes over it, whatever it holds is met.
enum class AccessibleKind { none, text, heading, image, button, radioButton, checkBox, adjustable, dialog };

/// Tells an element from the others of its message, and stays the same as long as the same thing is meant, whatever is
/// evaluated or scrolled in between.
struct ElementIdentity {
    Role role = Role::text;
    int index = 0;

    bool operator==(const ElementIdentity&) const = default;
};

/// How far along something is: the second of three options, four of five stars.
struct Progress {
    int number = 0;
    int total = 0;
};

/// One element of the settled layout, with what is painted for it and what is said of it.
struct AccessibleElement {
    Role role = Role::text;
    /// The text that is shown, or a name for what shows none.
    std::string label = {};
    /// From 0, among the elements of the same role, in painting order.
    int index = 0;
    /// In points of the window, after scrolling.
    Rect frame = {};
    std::optional<Color> textColor = {};
    std::optional<Color> background = {};
    std::optional<Font> font = {};
    std::optional<double> cornerRadius = {};
    /// Present for elements that can be selected.
    std::optional<bool> selected = {};
    /// Whether a tap on the element does something.
    bool isEnabled = true;
    /// Where taps mean the element and no other control, in view; of no size where none does. At least 44 points wide
    /// and high where nothing else is in the way, even if the frame is smaller.
    Rect target = {};

    /// The card or group that holds the element; what stands beside a card counts as held by it.
    std::optional<ElementIdentity> parent = {};
    AccessibleKind kind = AccessibleKind::none;
    /// What assistive technology calls the element, without kind and state. Empty where it has no name of its own.
    std::string name = {};
    /// Of an adjustable element, of a star, and of an option among its like.
    std::optional<Progress> progress = {};
    /// The progress in words: "4 of 5".
    std::string value = {};
    /// All that is said, in one phrase: "Tea, radio button, selected, 2 of 3". Empty for what is passed over.
    std::string spokenText = {};

    ElementIdentity identity() const { return {role, index}; }
    bool isHeading() const { return kind == AccessibleKind::heading; }
    bool isAdjustable() const { return kind == AccessibleKind::adjustable; }
    /// Whether nothing outside the element can be met while it is shown.
    bool isModal() const { return kind == AccessibleKind::dialog; }
    /// Whether a keyboard reaches it. Single stars are reached by adjusting their row, and what a card does, one of the
    /// controls on it does, too.
    bool isFocusable() const {
        return isAdjustable() || (isEnabled && role != Role::star && role != Role::card && !spokenText.empty());
    }
};

}  // namespace vantix
