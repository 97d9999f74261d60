#pragma once

#include "DeclarativeUI/AccessibleElement.h"
#include "Platform/Values/WordTable.h"
#include "Tools/vantix-inapp/Scenario/Step.h"

namespace vantix {

struct StepSource;

/// The roles that a tap can aim at.
inline constexpr WordTable<Role, 7> tappableRoles{{{Role::close, "close"},
                                                   {Role::button, "button"},
                                                   {Role::star, "star"},
                                                   {Role::option, "option"},
                                                   {Role::image, "image"},
                                                   {Role::card, "card"},
                                                   {Role::row, "row"}}};

/// Throws BadInput.
Step readTap(const StepSource& source);

}  // namespace vantix
