#pragma once

#include "DeclarativeUI/Offscreen/OffscreenScene.h"
#include "Platform/Ports/Application.h"

#include <memory>
#include <vector>

namespace vantix {

/// An application with one offscreen scene. Main thread only.
class OffscreenApplication final : public Application {
public:
    explicit OffscreenApplication(std::shared_ptr<OffscreenScene> scene, Image icon = {});

    std::vector<std::shared_ptr<Scene>> connectedScenes() const override;
    Image icon() const override { return icon_; }

private:
    std::shared_ptr<OffscreenScene> scene_;
    Image icon_;
};

}  // namespace vantix
