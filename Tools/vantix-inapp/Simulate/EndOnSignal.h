#pragma once

#include <QObject>

namespace vantix {

/// Ends the application's event loop when the process is asked to end (SIGINT, SIGTERM), so that everything is tidied
/// up. Made before any other thread is, so before the QApplication.
class EndOnSignal final : public QObject {
public:
    EndOnSignal();
    ~EndOnSignal() override;

    /// From now on; signals that came before count. After the QCoreApplication.
    void start();

private:
    int file_;
};

}  // namespace vantix
