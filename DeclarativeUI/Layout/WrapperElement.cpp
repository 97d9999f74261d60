#include "DeclarativeUI/Layout/WrapperElement.h"

#include "DeclarativeUI/Layout/LayoutPass.h"

namespace vantix {

Size WrapperElement::measure(const Proposal& proposal, const Environment& environment, LayoutPass& pass) const {
    return pass.measure(content_, proposal, environment);
}

void WrapperElement::place(const Rect& frame, const Proposal& proposal, const Environment& environment,
                           LayoutPass& pass) const {
    pass.place(content_, frame, proposal, environment);
}

}  // namespace vantix
