#pragma once

#include "Platform/Ports/Application.h"
#include "Platform/Values/Export.h"
#include "VantixQt/Windows/MessageSurface.h"

#include <QObject>
#include <QPointer>
#include <QSizeF>

#include <functional>
#include <list>
#include <memory>

namespace vantix {
class Dispatcher;
class DisplayListPainter;
class TextMeasurer;
}  // namespace vantix

namespace vantix::qt {

class Surroundings;

/// What every scene of one host uses.
struct SceneServices {
    std::shared_ptr<Dispatcher> dispatcher;
    std::shared_ptr<const TextMeasurer> measurer;
    std::shared_ptr<DisplayListPainter> painter;
    std::shared_ptr<Surroundings> surroundings;
};

/// Holds a surface above everything in a window: a child widget, an item. Destroying it takes it away at once.
class VANTIX_EXPORT MessageOverlay {
public:
    virtual ~MessageOverlay() = default;

    /// Gives input and focus back to the application at once, shows the surface's way out, then calls back on a later
    /// turn.
    virtual void leave(std::function<void()> finished) = 0;
};

/// A window of the application, as a scene. The toolkits add what a window is to them. At most one message at a time.
/// GUI thread only.
class VANTIX_EXPORT WindowScene : public QObject, public Scene, public std::enable_shared_from_this<WindowScene> {
    Q_OBJECT

public:
    explicit WindowScene(SceneServices services);
    ~WindowScene() override;

    /// Active while the window can be seen.
    SceneActivationState activationState() const override;
    bool isWindowScene() const override { return true; }
    SceneTraits traits() const override;
    /// What the device itself covers at the edges of the window: a camera, rounded corners. None at first.
    void setSafeArea(const EdgeInsets& safeArea);
    std::unique_ptr<Window> makeWindow(WindowDescription description) override;

    /// Whether a message may be put up now: the window can be seen and nothing of the application stands before it.
    virtual bool isReady() const = 0;

    /// The window is gone for good, or was taken out of the host: a message on it ends.
    void end();

signals:
    /// The window came to the front.
    void activated();
    /// The window may be ready now: it can be seen, or what stood before it went away.
    void available();
    /// The window is gone.
    void ended();

protected:
    /// Whether the window is there and not hidden; one that is minimised is.
    virtual bool isShown() const = 0;
    virtual bool isMinimized() const = 0;
    virtual QSizeF size() const = 0;
    virtual qreal devicePixelRatio() const = 0;
    /// Puts the surface above everything in the window, at first unseen: it is shown, and takes input and focus, once
    /// the surface has settled for the first time. Null when the window cannot.
    virtual std::unique_ptr<MessageOverlay> makeOverlay(std::unique_ptr<MessageSurface> surface) = 0;

    /// To be called when size or scale changed.
    void geometryChanged();
    /// To be called when the window is about to be hidden because it is closed, and when it is hidden: until further
    /// notice, and a message on it ends, or for a moment, to be shown with other flags.
    void windowCloses();
    void windowHidden();
    /// Tells on a later turn that the window may be ready.
    void announceLater();

    /// Whether the window can be seen.
    bool isVisible() const { return isShown() && !isMinimized(); }

private:
    class SceneWindow;

    void endMessage();

    void evaluateOnNextTurn();
    /// The module takes its window away.
    void remove(const HostedView& content);

    SceneServices services_;
    EdgeInsets safeArea_;
    bool isClosing_ = false;
    std::unique_ptr<MessageOverlay> overlay_;
    /// On their way out.
    std::list<std::unique_ptr<MessageOverlay>> leaving_;
    /// The overlay's.
    QPointer<MessageSurface> surface_;
    std::function<void()> onEnded_;
};

}  // namespace vantix::qt
