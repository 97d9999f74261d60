#pragma once

#include "Platform/Values/Color.h"
#include "Platform/Values/Export.h"
#include "Platform/Values/Geometry.h"
#include "Platform/Values/Image.h"
#include "Platform/Values/LayoutDirection.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantix {

/// Where the application stands: in front with the person's attention, visible without it, out of sight.
enum class ApplicationState { active = 0, inactive = 1, background = 2 };

/// Messages go to a scene that is `foregroundActive`; every other state means "not here, not now".
enum class SceneActivationState { foregroundActive, foregroundInactive, background, unattached };

/// Stacking order: a window of a higher level covers those of a lower one.
enum class WindowLevel { normal, alert };

/// What a window shows. The declarative library's HostedView is the one kind that hosts know.
class VANTIX_EXPORT WindowContent {
public:
    virtual ~WindowContent() = default;
};

/// From where a window comes in, and where it goes: over its edge of the screen, or in its place.
enum class WindowEntrance { inPlace, top, bottom };

/// How a new window looks and behaves.
struct WindowDescription {
    /// In points of the scene; a host whose windows cover their scenes need not look at it.
    Rect frame;
    /// Behind the content, over the whole window. Absent: transparent.
    std::optional<Color> backgroundColor;
    WindowLevel level = WindowLevel::normal;
    /// Never null. The window owns it until it goes.
    std::shared_ptr<WindowContent> rootContent;
    /// Of background and content together, from 0, invisible, to 1.
    double alpha = 1;
    /// The window is not to be seen and takes no input.
    bool isHidden = false;
    /// Whether the application below is out of reach of touches, keys and focus while the window is up. Otherwise only
    /// what the content claims belongs to the window.
    bool blocksApplication = true;
    WindowEntrance entrance = WindowEntrance::inPlace;
    /// To be called by the scene when the window is gone although nobody removed it: its surroundings were closed.
    /// On the main thread, at most once, never within `makeWindow`, and never after `removeFromSuperview` or after the
    /// handle was dropped. May be empty.
    std::function<void()> onEnded = {};
};

/// A window on screen, made by a scene and owned by whoever asked for it; dropping the handle removes it. Main thread
/// only.
class VANTIX_EXPORT Window {
public:
    virtual ~Window() = default;

    /// Takes the window off the screen and gives input and focus back at once; a way out that is only looked at may
    /// follow. Further calls do nothing.
    virtual void removeFromSuperview() = 0;
};

/// Whether dark stands on light or light on dark.
enum class ColorScheme { light, dark };

/// The surroundings in which a scene draws.
struct SceneTraits {
    Size size;
    EdgeInsets safeArea;
    /// Pixels per point.
    double scale = 1;
    /// The reader's preferred text size; 1 is the designer's.
    double textScale = 1;
    /// For content that has no direction of its own.
    LayoutDirection layoutDirection = LayoutDirection::leftToRight;
    /// Of the application behind a window: what its content leaves open is chosen to be read on it.
    ColorScheme colorScheme = ColorScheme::light;
    /// The person asked for little movement: nothing slides or fades.
    bool reducesMotion = false;
    /// The person asked for stronger contrast.
    bool increasesContrast = false;
    /// The person's language, as a BCP 47 tag ("de", "pt-BR"), for what is said of content in no known language.
    std::string locale = "en";

    bool operator==(const SceneTraits&) const = default;
};

/// One place where the application shows windows. Main thread only.
class VANTIX_EXPORT Scene {
public:
    virtual ~Scene() = default;

    virtual SceneActivationState activationState() const = 0;
    /// Whether windows can be put up in it at all.
    virtual bool isWindowScene() const = 0;
    /// As they are now. The scene tells the contents of its windows when they change.
    virtual SceneTraits traits() const = 0;

    /// Puts a window up in this scene; null when there can be none now, after which it is asked again. The window never
    /// becomes the key window of the application. The scene tells the content its traits, asks for its first evaluation
    /// on the main queue's next turn, and redraws it whenever it asks. It must not evaluate within this call.
    virtual std::unique_ptr<Window> makeWindow(WindowDescription description) = 0;
};

/// The host application. Main thread only.
class VANTIX_EXPORT Application {
public:
    virtual ~Application() = default;

    /// The one that was active last comes first; none while there is no window. Asked anew for each message.
    virtual std::vector<std::shared_ptr<Scene>> connectedScenes() const = 0;
    /// The application's icon in a size of the host's choice; a null image when it has none. Asked while a message is
    /// laid out, so it must be there at once.
    virtual Image icon() const = 0;
};

/// Names of the life-cycle notifications, which carry no object. Posted on the main thread.
namespace ApplicationNotification {
inline constexpr const char* didBecomeActive = "didBecomeActive";
inline constexpr const char* willResignActive = "willResignActive";
inline constexpr const char* didEnterBackground = "didEnterBackground";
inline constexpr const char* willTerminate = "willTerminate";
/// A scene can show windows again: it came to the front, or what stood before it went away.
inline constexpr const char* sceneDidActivate = "sceneDidActivate";
}  // namespace ApplicationNotification

}  // namespace vantix
