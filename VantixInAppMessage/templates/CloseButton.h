#pragma once

#include "DeclarativeUI/View.h"
#include "VantixInAppMessage/templates/CloseButtonProtocol.h"

#include <memory>

namespace vantix {

enum class VantixCloseButtonType { close = 0, closeFilled = 1 };

/// The control that takes a message away: a small cross in the top-right corner of a target that a finger can hit. Both
/// types look the same. A bundle without the cross is a programming error and stops the process.
class CloseButton {
public:
    /// The width and height of the target.
    static constexpr double touchSize = 44;

    /// Without a delegate a tap does nothing.
    CloseButton(VantixCloseButtonType type, std::shared_ptr<CloseButtonProtocol> delegate)
        : type_(type), delegate_(std::move(delegate)) {}

    View body() const;

private:
    bool shouldAddLeadingSpacer() const { return type_ == VantixCloseButtonType::close; }

    VantixCloseButtonType type_;
    std::shared_ptr<CloseButtonProtocol> delegate_;
};

/// A close control at the trailing end of a row.
View closeRow(const View& closeButton);

}  // namespace vantix
