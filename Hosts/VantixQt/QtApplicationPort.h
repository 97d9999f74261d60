#pragma once

#include "Platform/Ports/Application.h"
#include "VantixQt/Windows/WindowScene.h"

#include <memory>
#include <vector>

namespace vantix::qt {

/// The running application with the windows that it gave the host, as a port. GUI thread only.
class QtApplicationPort final : public Application {
public:
    /// The window that was active last comes first.
    std::vector<std::shared_ptr<Scene>> connectedScenes() const override;
    Image icon() const override;

    /// Whether a message may be put up now.
    bool isReady() const;

    void add(std::shared_ptr<WindowScene> scene);
    void remove(const WindowScene& scene);
    /// The window is the active one from now on.
    void bringToFront(const WindowScene& scene);
    void removeAll() { scenes_.clear(); }

private:
    std::vector<std::shared_ptr<WindowScene>> scenes_;
};

}  // namespace vantix::qt
