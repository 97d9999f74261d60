#pragma once

#include "DeclarativeUI/View.h"

#include <functional>

namespace vantix {

/// A control that acts on a tap, with the given label in the accent colour unless another is set, its lines centred; an
/// element of role "button". What is put around it without padding (a frame, a background) belongs to it.
View Button(std::function<void()> action, View label);
/// The same without role, colour and centring, for controls that name their own.
View PlainButton(std::function<void()> action, View label);

}  // namespace vantix
