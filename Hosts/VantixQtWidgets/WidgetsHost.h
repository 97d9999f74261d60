#pragma once

#include "Platform/Values/Export.h"
#include "VantixQt/Host.h"

#include <QWidget>

namespace vantix::qt {

/// A host for applications on Qt Widgets.
///
///     QApplication application(argc, argv);
///     vantix::qt::WidgetsHost messages(options);
///     messages.addWindow(&window);
///
/// See Host for what it does and when it may be made.
class VANTIX_EXPORT WidgetsHost final : public Host {
    Q_OBJECT

public:
    explicit WidgetsHost(const HostOptions& options, QObject* parent = nullptr);
    ~WidgetsHost() override;

    /// From now on messages may be shown in this window: in the active one of those that were added, otherwise in the
    /// one that was active last. A window that is not the widget's own takes the message nevertheless, so that any
    /// widget of a window will do. It may be closed and destroyed at any time; adding it twice does nothing.
    void addWindow(QWidget* window);
    /// A message that the window shows counts as dismissed.
    void removeWindow(QWidget* window);
};

}  // namespace vantix::qt
