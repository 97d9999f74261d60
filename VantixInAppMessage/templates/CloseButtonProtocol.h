#pragma once

namespace vantix {

/// Hears of taps on a close control. Main thread.
class CloseButtonProtocol {
public:
    virtual ~CloseButtonProtocol() = default;
    virtual void handleClickAction() = 0;
};

}  // namespace vantix
