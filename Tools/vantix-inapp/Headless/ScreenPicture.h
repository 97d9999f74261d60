#pragma once

#include "DeclarativeUI/Offscreen/OffscreenApplication.h"
#include "VantixQt/Drawing/Canvas.h"

#include <filesystem>

namespace vantix {

class DisplayListPainter;

/// The whole screen of a scene as it stands: a plain white application, and every window above it.
Canvas paintScreen(const OffscreenScene& scene, DisplayListPainter& painter);

/// Writes a picture, making the folders that it stands in. Throws BadInput when it cannot.
void writePicture(const Canvas& picture, const std::filesystem::path& file);

}  // namespace vantix
