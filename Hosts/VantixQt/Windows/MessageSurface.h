#pragma once

#include "DeclarativeUI/Interaction/Interaction.h"
#include "Platform/Ports/Application.h"
#include "Platform/Values/Export.h"

#include <QImage>
#include <QObject>
#include <QPointF>
#include <QRegion>
#include <QVariantAnimation>

#include <functional>
#include <memory>

class QKeyEvent;
class QPainter;

namespace vantix {
class DisplayListPainter;
class TextMeasurer;
}  // namespace vantix

namespace vantix::qt {

/// A message on its way to the screen, for whatever the toolkit shows it on: brings the content up to date, paints it,
/// moves it in and out, and turns the toolkit's input into what the message understands. GUI thread only.
class VANTIX_EXPORT MessageSurface final : public QObject {
    Q_OBJECT

public:
    /// Measurer and painter outlive the surface; both use the same fonts. The content is a HostedView.
    MessageSurface(const WindowDescription& description, std::shared_ptr<HostedView> content,
                   const TextMeasurer& measurer, DisplayListPainter& painter);
    ~MessageSurface() override;

    HostedView& content() { return *content_; }
    Interaction& interaction() { return interaction_; }
    bool blocksApplication() const { return blocksApplication_; }

    void setTraits(const SceneTraits& traits);
    const SceneTraits& traits() const { return traits_; }

    /// Brings the content up to date; on a turn of its own, never while a body is being evaluated. A layout that wants
    /// another one asks for it and is not settled yet.
    void evaluate();

    /// Paints the message as it stands between coming and going, in points.
    void paint(QPainter& painter);
    /// For a toolkit that moves and fades by itself: the message in its place, to be shown `displacement` away from it
    /// and with this opacity.
    void paintInPlace(QPainter& painter);
    QPointF displacement() const;
    double opacity() const;

    /// Where the message takes touches; everything else is the application's. Empty while it goes.
    QRegion touchRegion() const;

    /// Moves the message in; at once when the person wants no movement. To be called once, when the surface can be
    /// seen.
    void appear();
    /// Takes no more input, moves the message out, then calls back on a later turn; on the next one without movement.
    void disappear(std::function<void()> finished);

    void pointerDown(QPointF point);
    void pointerMoved(QPointF point);
    void pointerUp(QPointF point);
    void pointerCancelled();
    /// False when the message has no use for the key.
    bool keyDown(const QKeyEvent& event);
    /// By points; positive values show what lies further down. False when nothing scrolls.
    bool scroll(double points);
    /// The same, to an offset.
    bool scrollTo(double offset);

signals:
    /// What is painted in place changed.
    void updateNeeded();
    /// Displacement and opacity changed.
    void moved();
    /// The content wants `evaluate` on a later turn.
    void evaluationNeeded();
    /// The layout changed: touch region, scroll range, elements.
    void settled();
    /// The message can be seen, or begins to.
    void appeared();
    void focusChanged();

private:
    bool scrolls() const;
    void scrolled();
    void animateTo(double presence, int milliseconds);

    std::shared_ptr<HostedView> content_;
    const TextMeasurer& measurer_;
    DisplayListPainter& painter_;
    Interaction interaction_;
    std::optional<Color> background_;
    double alpha_;
    bool blocksApplication_;
    WindowEntrance entrance_;
    SceneTraits traits_;

    /// From 0, gone, to 1, there.
    double presence_ = 1;
    bool isGoing_ = false;
    bool isSettled_ = false;
    QVariantAnimation animation_;
    /// The content as one layer, while it moves.
    QImage layer_;
    std::function<void()> finished_;
};

}  // namespace vantix::qt
