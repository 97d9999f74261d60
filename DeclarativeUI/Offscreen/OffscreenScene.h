#pragma once

#include "DeclarativeUI/HostedView.h"
#include "Platform/Ports/Application.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace vantix {

class Dispatcher;
class TextMeasurer;

/// A scene without a display: keeps the windows that are put up, evaluates their content on the main queue, and lets a
/// program look at them, touch them and paint them. Main thread only; owned by shared pointers.
class OffscreenScene final : public Scene, public std::enable_shared_from_this<OffscreenScene> {
public:
    /// A window on this scene and what it shows.
    struct ShownWindow {
        WindowDescription description;
        std::shared_ptr<HostedView> content;
    };

    OffscreenScene(SceneTraits traits, std::shared_ptr<Dispatcher> dispatcher, std::shared_ptr<TextMeasurer> measurer);

    SceneActivationState activationState() const override;
    bool isWindowScene() const override { return true; }
    SceneTraits traits() const override;
    /// Null for content that is no HostedView.
    std::unique_ptr<Window> makeWindow(WindowDescription description) override;

    void setActivationState(SceneActivationState state);
    /// As for a device that is turned: every window is laid out anew.
    void setTraits(const SceneTraits& traits);

    /// Called when a window is put up and when it is taken away, once each.
    void setOnShown(std::function<void(const HostedView&)> handler) { onShown_ = std::move(handler); }
    void setOnHidden(std::function<void(const HostedView&)> handler) { onHidden_ = std::move(handler); }

    /// From the lowest to the topmost.
    std::vector<ShownWindow> windows() const;

private:
    class OffscreenWindow;

    void assertOnMainQueue(std::string_view operation) const;
    void show(const ShownWindow& window);
    void remove(const HostedView& content);
    void evaluateOnNextTurn(std::weak_ptr<HostedView> content);
    void evaluate(HostedView& content) const;

    SceneTraits traits_;
    SceneActivationState activationState_ = SceneActivationState::foregroundActive;
    std::shared_ptr<Dispatcher> dispatcher_;
    std::shared_ptr<TextMeasurer> measurer_;
    std::function<void(const HostedView&)> onShown_;
    std::function<void(const HostedView&)> onHidden_;
    /// In the order in which they were put up.
    std::vector<ShownWindow> windows_;
};

}  // namespace vantix
