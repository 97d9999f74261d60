#pragma once

#include "Platform/Values/Value.h"
#include "Tools/vantix-inapp/Simulate/CampaignFiles.h"

#include <QGroupBox>
#include <QSet>
#include <QVBoxLayout>

namespace vantix {

class EventLog;

namespace qt {
class Host;
}

/// The campaigns, each with a button that sends it and, where it waits for an event of the application, one that raises
/// that. A campaign whose file changes is sent again; a message of it that is on screen gives way.
class CampaignList final : public QGroupBox {
    Q_OBJECT

public:
    CampaignList(qt::Host& host, EventLog& log, QWidget* parent = nullptr);

    void add(const QString& file);

private:
    void addFiles();
    void send(const QString& file);
    void sendAnew(const QString& file);
    void raiseEvent(const QString& file);
    /// Null, and a line in the log, when the file holds no campaign.
    std::optional<Dictionary> read(const QString& file);

    qt::Host& host_;
    EventLog& log_;
    CampaignFiles files_;
    QVBoxLayout* rows_;
    QString shownScope_;
};

}  // namespace vantix
