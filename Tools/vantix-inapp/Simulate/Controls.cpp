#include "Tools/vantix-inapp/Simulate/Controls.h"

#include "Tools/vantix-inapp/Headless/Devices.h"
#include "Tools/vantix-inapp/Simulate/Phone.h"
#include "VantixCore/VantixLogger.h"
#include "VantixCore/VantixNetworkManager.h"
#include "VantixQtWidgets/WidgetsHost.h"

#include <QDoubleSpinBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>

namespace vantix {

namespace {

QString text(std::string_view word) { return QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size())); }

/// Offers the words of the table; `use` gets the meaning of the one that is chosen.
template <typename Meaning, std::size_t count, typename Use>
QComboBox* makeChoice(const WordTable<Meaning, count>& words, Meaning first, Use use) {
    auto* choice = new QComboBox;
    for (const auto& entry : words.entries) choice->addItem(text(entry.word));
    choice->setCurrentText(text(words.word(first)));
    QObject::connect(choice, &QComboBox::currentIndexChanged, choice,
                     [&words, use](int index) { use(words.entries[static_cast<std::size_t>(index)].value); });
    return choice;
}

}  // namespace

Controls::Controls(qt::WidgetsHost& host, Phone& phone, const QString& customerId, QWidget* parent)
    : QGroupBox(tr("Surroundings"), parent), host_(host), phone_(phone), rows_(new QFormLayout(this)) {
    addDevice();
    addSurroundings();
    addCustomer(customerId);
    addNetwork();
    addLogLevel();
}

void Controls::addDevice() {
    for (const Device& device : portraitDevices()) device_->addItem(QString::fromStdString(device.name));
    connect(device_, &QComboBox::currentIndexChanged, this, &Controls::useDevice);
    connect(isTurned_, &QCheckBox::toggled, this, &Controls::useDevice);
    rows_->addRow(tr("Device"), device_);
    rows_->addRow({}, isTurned_);
    useDevice();
}

void Controls::useDevice() {
    const auto& devices = isTurned_->isChecked() ? landscapeDevices() : portraitDevices();
    phone_.setDevice(devices[static_cast<std::size_t>(device_->currentIndex())]);
    host_.addScreen(phone_.screen(), phone_.safeArea());
}

void Controls::addSurroundings() {
    auto* textScale = new QDoubleSpinBox;
    textScale->setRange(0.5, 4);
    textScale->setSingleStep(0.1);
    textScale->setValue(1);
    connect(textScale, &QDoubleSpinBox::valueChanged, &host_, &qt::Host::setTextScale);
    host_.setTextScale(textScale->value());
    rows_->addRow(tr("Text size"), textScale);

    auto* direction = new QCheckBox(tr("right to left"));
    connect(direction, &QCheckBox::toggled, this, [](bool isRightToLeft) {
        QGuiApplication::setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    });
    rows_->addRow({}, direction);

    auto* foreground = new QCheckBox(tr("in the foreground"));
    foreground->setChecked(true);
    connect(foreground, &QCheckBox::toggled, &phone_, &Phone::setInForeground);
    connect(foreground, &QCheckBox::toggled, &host_, &qt::Host::setInForeground);
    rows_->addRow({}, foreground);
}

void Controls::addCustomer(const QString& customerId) {
    auto* customer = new QLineEdit(customerId);
    connect(customer, &QLineEdit::textChanged, &host_, &qt::Host::setCustomerId);
    auto* logOut = new QPushButton(tr("Log out"));
    connect(logOut, &QPushButton::clicked, customer, &QLineEdit::clear);
    connect(logOut, &QPushButton::clicked, &host_, &qt::Host::logOut);
    rows_->addRow(tr("Customer"), customer);
    rows_->addRow({}, logOut);
}

void Controls::addNetwork() {
    rows_->addRow(tr("Network"), makeChoice(networkFaultWords, NetworkFault::none, &VantixNetworkManager::setFault));
}

void Controls::addLogLevel() {
    VantixLogger::setConsoleLogLevel(LogLevel::info);
    rows_->addRow(tr("Log lines from"), makeChoice(logLevelWords, LogLevel::info, &VantixLogger::setConsoleLogLevel));
}

}  // namespace vantix
