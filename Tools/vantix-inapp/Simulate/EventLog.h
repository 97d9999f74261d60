#pragma once

#include "VantixCore/VantixLogger.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QPlainTextEdit>
#include <QUrl>
#include <QVariantMap>

namespace vantix {

namespace qt {
class Host;
}

/// What happens, as it happens: on screen, and on standard output, one JSON object a line.
class EventLog final : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit EventLog(QWidget* parent = nullptr);

    /// Shows what the module shows, reports, sends and logs. The host ends before this object.
    void follow(qt::Host& host);

    /// A text.
    void add(const QString& kind, const QJsonValue& what);
    /// An event of the application.
    void addEvent(const QString& name, const QVariantMap& attributes);

private:
    void add(const QString& kind, const QJsonValue& what, const QString& words);
    void addNamed(const QString& kind, const QString& name, const QJsonObject& attributes);
    void addLogLine(const LogLine& line);
};

}  // namespace vantix
