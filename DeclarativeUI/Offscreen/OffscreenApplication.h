#pragma once

#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/Application.h"

#include <functional>
#include <memory>
#include <vector>

namespace vantix {

class Dispatcher;
class TextMeasurer;

/// A scene without a display: keeps the windows that are put up, evaluates their content on the main queue, and lets a
/// program look at them, touch them and paint them. Main thread only.
class OffscreenScene final : public Scene {
public:
    /// A window on this scene and what it shows.
    struct ShownWindow {
        WindowDescription description;
        std::shared_ptr<HostedView> content;
    };

    OffscreenScene(SceneTraits traits, std::shared_ptr<Dispatcher> dispatcher, std::shared_ptr<TextMeasurer> measurer);
    ~OffscreenScene() override;

    SceneActivationState activationState() const override;
    bool isWindowScene() const override { return true; }
    SceneTraits traits() const override;
    std::unique_ptr<Window> makeWindow(WindowDescription description) override;

    void setActivationState(SceneActivationState state);
    /// As for a device that is turned: every window is laid out anew.
    void setTraits(const SceneTraits& traits);

    /// Called when a window is put up and when it is taken away, once each.
    void setOnShown(std::function<void(const HostedView&)> handler);
    void setOnHidden(std::function<void(const HostedView&)> handler);

    /// From the lowest to the topmost.
    std::vector<ShownWindow> windows() const;

private:
    struct Implementation;
    std::shared_ptr<Implementation> implementation_;
};

/// An application with one offscreen scene. Main thread only.
class OffscreenApplication final : public Application {
public:
    explicit OffscreenApplication(std::shared_ptr<OffscreenScene> scene, Image icon = {});

    std::vector<std::shared_ptr<Scene>> connectedScenes() const override;
    Image icon() const override;
    /// False: the application has no scene at all.
    void setConnected(bool connected);

private:
    std::shared_ptr<OffscreenScene> scene_;
    Image icon_;
    bool connected_ = true;
};

}  // namespace vantix
