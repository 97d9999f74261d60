#pragma once

namespace vantix {

struct RenderArguments;

/// Writes the picture of one campaign. Throws BadInput, also for a campaign that is never shown.
void render(const RenderArguments& arguments);

}  // namespace vantix
