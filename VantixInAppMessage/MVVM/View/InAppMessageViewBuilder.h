#pragma once

#include "Platform/Ports/Application.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixInAppMessage/Manager/InAppMessageActions.h"

#include <memory>

namespace vantix {

/// Puts a message on screen in a window of its own above the application's, and takes it away again. Main thread only.
class InAppMessageViewBuilder : public std::enable_shared_from_this<InAppMessageViewBuilder> {
public:
    /// Holds the manager strongly, as the manager holds the builder; InAppDisplayManager::tearDown ends both.
    explicit InAppMessageViewBuilder(std::shared_ptr<InAppMessageActions> displayManager);

    /// False when no scene in the foreground gives the message a window.
    bool createInAppWindow(const SharedPayload& message);
    /// Removes the window on the main queue's next turn.
    void dismissInAppMessage();
    /// Removes the window at once.
    void tearDown();

private:
    std::unique_ptr<Window> customizeWindow(Scene& scene, const SharedPayload& message);
    /// The scene took the window away: the message counts as dismissed.
    void windowEnded(const SharedPayload& message);
    void removeWindow();

    std::shared_ptr<InAppMessageActions> inAppDisplayManager_;
    std::unique_ptr<Window> inAppWindow_;
};

}  // namespace vantix
