#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>

namespace vantix {

class Phone;

namespace qt {
class WidgetsHost;
}

/// Changes what the application runs on and who uses it.
class Controls final : public QGroupBox {
    Q_OBJECT

public:
    /// The phone's screen takes part in the host from now on.
    Controls(qt::WidgetsHost& host, Phone& phone, const QString& customerId, QWidget* parent = nullptr);

private:
    void addDevice();
    void addSurroundings();
    void addCustomer(const QString& customerId);
    void addNetwork();
    void addLogLevel();
    void useDevice();

    qt::WidgetsHost& host_;
    Phone& phone_;
    QFormLayout* rows_;
    QComboBox* device_ = new QComboBox;
    QCheckBox* isTurned_ = new QCheckBox(tr("turned"));
};

}  // namespace vantix
