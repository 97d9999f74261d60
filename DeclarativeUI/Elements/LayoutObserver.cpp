#include "DeclarativeUI/Elements/LayoutObserver.h"

#include "DeclarativeUI/Layout/LayoutPass.h"
#include "DeclarativeUI/Layout/WrapperElement.h"

namespace vantix {

namespace {

class LayoutObserverElement final : public WrapperElement {
public:
    LayoutObserverElement(const ElementPointer& content, std::string key, std::function<void(Size)> action)
        : WrapperElement(content), key_(std::move(key)), action_(std::move(action)) {}

    void place(const Rect& frame, const Proposal& proposal, const Environment& environment,
               LayoutPass& pass) const override {
        pass.reportSize({key_, frame.size, action_});
        WrapperElement::place(frame, proposal, environment, pass);
    }

private:
    std::string key_;
    std::function<void(Size)> action_;
};

}  // namespace

ElementPointer observed(const ElementPointer& content, std::string key, std::function<void(Size)> action) {
    return modified<LayoutObserverElement>(content, std::move(key), std::move(action));
}

}  // namespace vantix
