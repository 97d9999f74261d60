#pragma once

#include "Platform/Values/Color.h"
#include "Platform/Values/Font.h"
#include "Platform/Values/Geometry.h"
#include "Platform/Values/WordTable.h"

#include <optional>
#include <string>

namespace vantix {

/// What an element is to the person who meets it.
enum class Role { card, title, message, text, image, button, close, star, option, row, divider, mark };

/// The words for the roles, as tools print them.
inline constexpr WordTable<Role, 12> roleWords{{
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
}};

std::string roleName(Role role);

/// Whether elements of this role hold others, and are no text or picture themselves.
constexpr bool isContainer(Role role) { return role == Role::card || role == Role::row; }

/// Whether a tap on an element of this role can do something.
constexpr bool takesTaps(Role role) {
    return isContainer(role) || role == Role::image || role == Role::button || role == Role::close ||
           role == Role::star || role == Role::option;
}

/// One element of the settled layout, with what is painted for it.
struct AccessibleElement {
    Role role = Role::text;
    /// The text that is shown, or a name for what shows none.
    std::string label = {};
    /// What assistive technology says: label, kind and state in one phrase ("3 of 5 stars, selected").
    std::string spokenText = {};
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
    bool isEnabled = false;
};

}  // namespace vantix
