#include "Tools/vantix-inapp/Simulate/CampaignList.h"

#include "Platform/Values/JSON.h"
#include "Tools/vantix-inapp/Input/BadInput.h"
#include "Tools/vantix-inapp/Input/Campaign.h"
#include "Tools/vantix-inapp/Simulate/EventLog.h"
#include "VantixInAppMessage/Core/InAppMessagePayload/VantixInAppMessagePayload.h"
#include "VantixQt/Host.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>

namespace vantix {

namespace {

QJsonObject json(const Dictionary& dictionary) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(toJSON(dictionary))).object();
}

QPushButton* makeButton(const QString& text, const QString& name) {
    auto* button = new QPushButton(text);
    button->setAccessibleName(name);
    return button;
}

}  // namespace

CampaignList::CampaignList(qt::Host& host, EventLog& log, QWidget* parent)
    : QGroupBox(tr("Campaigns"), parent), host_(host), log_(log), rows_(new QVBoxLayout) {
    auto* open = new QPushButton(tr("Open…"));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(rows_);
    layout->addWidget(open);
    connect(open, &QPushButton::clicked, this, &CampaignList::addFiles);
    connect(&files_, &CampaignFiles::changed, this, &CampaignList::sendAnew);
    connect(&host_, &qt::Host::messageShown, this, [this](const QString& scope) { shownScope_ = scope; });
    connect(&host_, &qt::Host::messageGone, this, [this] { shownScope_.clear(); });
}

void CampaignList::add(const QString& file) {
    QString name = QFileInfo(file).completeBaseName();
    auto* send = makeButton(tr("Send"), tr("Send %1").arg(name));
    auto* raise = makeButton(tr("Raise its event"), tr("Raise the event of %1").arg(name));
    connect(send, &QPushButton::clicked, this, [this, file] { this->send(file); });
    connect(raise, &QPushButton::clicked, this, [this, file] { raiseEvent(file); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(send);
    buttons->addWidget(raise);
    rows_->addWidget(new QLabel(name));
    rows_->addLayout(buttons);
    files_.watch(file);
}

void CampaignList::addFiles() {
    const auto files = QFileDialog::getOpenFileNames(this, tr("Campaigns"), {}, tr("Campaigns (*.json)"));
    for (const QString& file : files) add(file);
}

void CampaignList::send(const QString& file) {
    auto push = read(file);
    if (!push) return;
    QString whyNot;
    log_.add("push", file);
    if (!host_.receivePush(json(*push), &whyNot)) log_.add("problem", file + ": " + whyNot);
}

void CampaignList::sendAnew(const QString& file) {
    auto push = read(file);
    if (!push) return;
    const std::string* scope = push->text("scope");
    if (scope && !shownScope_.isEmpty() && shownScope_ == QString::fromStdString(*scope)) host_.dismiss();
    send(file);
}

void CampaignList::raiseEvent(const QString& file) {
    auto push = read(file);
    if (!push) return;
    auto trigger = VantixInAppMessagePayload::generate(*push).trigger;
    auto name = QString::fromStdString(trigger.eventName);
    auto attributes = json(trigger.attributes).toVariantMap();
    log_.addEvent(name, attributes);
    host_.captureEvent(name, attributes);
}

std::optional<Dictionary> CampaignList::read(const QString& file) {
    try {
        return pushOfCampaignFile(file.toStdString());
    } catch (const BadInput& problem) {
        log_.add("problem", problem.what());
        return {};
    }
}

}  // namespace vantix
