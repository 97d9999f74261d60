#pragma once

#include "Platform/Ports/Application.h"
#include "Platform/Values/Export.h"

#include <QObject>

namespace vantix::qt {

/// What the platform says about the person in front of it, for every scene alike: text size, direction, colours,
/// motion, language. GUI thread only.
class VANTIX_EXPORT Surroundings final : public QObject {
    Q_OBJECT

public:
    /// The QGuiApplication exists.
    explicit Surroundings(QObject* parent = nullptr);

    /// Without size, safe area and scale, which are a window's.
    SceneTraits traits() const;

    /// Instead of the platform's text size; 0: the platform's.
    void setTextScale(double scale);
    /// What the toolkit knows about animations.
    void setReducesMotion(bool reduces);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();

private:
    double textScale_ = 0;
    bool reducesMotion_ = false;
};

}  // namespace vantix::qt
