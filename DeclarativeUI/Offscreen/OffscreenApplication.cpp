#include "DeclarativeUI/Offscreen/OffscreenApplication.h"

#include <utility>

namespace vantix {

OffscreenApplication::OffscreenApplication(std::shared_ptr<OffscreenScene> scene, Image icon)
    : scene_(std::move(scene)), icon_(std::move(icon)) {}

std::vector<std::shared_ptr<Scene>> OffscreenApplication::connectedScenes() const { return {scene_}; }

}  // namespace vantix
