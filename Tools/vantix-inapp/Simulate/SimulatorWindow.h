#pragma once

#include "Tools/vantix-inapp/Simulate/EventLog.h"
#include "VantixQt/HostOptions.h"
#include "VantixQtWidgets/WidgetsHost.h"

#include <QStringList>
#include <QWidget>

#include <memory>

namespace vantix {

/// A phone with a small shop, in-app messages above it, what happens beside it, and controls for both.
class SimulatorWindow final : public QWidget {
    Q_OBJECT

public:
    /// The files can be read. One window at a time, since it holds the host.
    SimulatorWindow(const qt::HostOptions& options, const QStringList& campaigns);
    ~SimulatorWindow() override;

private:
    EventLog* log_ = new EventLog(this);
    /// Ends before all that it shows messages on.
    std::unique_ptr<qt::WidgetsHost> host_;
};

}  // namespace vantix
