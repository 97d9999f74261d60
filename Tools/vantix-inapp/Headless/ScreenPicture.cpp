#include "Tools/vantix-inapp/Headless/ScreenPicture.h"

#include "Tools/vantix-inapp/Input/BadInput.h"
#include "VantixQt/Drawing/DisplayListPainter.h"

#include <system_error>

namespace vantix {

namespace {

DisplayList withBackdrop(const OffscreenScene::ShownWindow& window) {
    DisplayList list = window.content->displayList();
    const WindowDescription& description = window.description;
    if (description.backgroundColor) {
        list.insert(list.begin(), FillRect{description.frame, 0, *description.backgroundColor});
    }
    return list;
}

}  // namespace

Canvas paintScreen(const OffscreenScene& scene, DisplayListPainter& painter) {
    Canvas canvas(scene.traits().size, scene.traits().scale);
    for (const auto& window : scene.windows()) {
        if (!window.description.isHidden) canvas.paint(withBackdrop(window), painter, window.description.alpha);
    }
    return canvas;
}

void writePicture(const Canvas& picture, const std::filesystem::path& file) {
    std::error_code ignored;
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), ignored);
    if (auto problem = picture.writePNG(file.string())) {
        throw BadInput(file.string() + " cannot be written: " + problem->localizedDescription);
    }
}

}  // namespace vantix
