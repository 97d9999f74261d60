#pragma once

#include "Platform/Values/Export.h"
#include "VantixQt/Windows/AccessibleContent.h"

#include <memory>
#include <vector>

namespace vantix::qt {

/// Makes a message known to assistive technology: as the holder's accessible interface with the message's elements
/// below it, and by telling what changes. Whatever shows a surface has one of these, destroyed before the surface. The
/// holder's `object` needs nothing else for it, whatever toolkit it is of. GUI thread only.
class VANTIX_EXPORT AccessibleMessage final : public QObject {
    Q_OBJECT

public:
    AccessibleMessage(MessageSurface& surface, AccessibleHolder holder);
    ~AccessibleMessage() override;

private:
    void tellAppearance();
    void tellFocus();
    void tellChanges();

    std::unique_ptr<AccessibleContent> content_;
    /// As they were told last.
    std::vector<AccessibleElement> told_;
};

}  // namespace vantix::qt
