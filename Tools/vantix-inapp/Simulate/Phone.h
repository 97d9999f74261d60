#pragma once

#include "Tools/vantix-inapp/Headless/Devices.h"

#include <QFrame>
#include <QMargins>
#include <QWidget>

namespace vantix {

/// A device, as large as it is in points, with the application on its screen.
class Phone final : public QWidget {
    Q_OBJECT

public:
    /// The application fills the screen up to the safe area and belongs to the phone from now on.
    explicit Phone(QWidget* application, QWidget* parent = nullptr);

    void setDevice(const Device& device);
    /// While it is in the background, the application cannot be seen.
    void setInForeground(bool inForeground);

    /// What messages cover.
    QWidget* screen() { return screen_; }
    QMargins safeArea() const { return screen_->contentsMargins(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QFrame* screen_;
    QWidget* homeScreen_;
};

}  // namespace vantix
