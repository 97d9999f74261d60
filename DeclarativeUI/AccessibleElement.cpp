#include "DeclarativeUI/AccessibleElement.h"

#include "Platform/Values/WordTable.h"

namespace vantix {

namespace {

constexpr WordTable<Role, 12> roleNames{{
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

}  // namespace

std::string roleName(Role role) { return std::string(roleNames.word(role)); }

}  // namespace vantix
