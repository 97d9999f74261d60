#pragma once

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QString>
#include <QTimer>

namespace vantix {

/// Files that somebody edits.
class CampaignFiles final : public QObject {
    Q_OBJECT

public:
    explicit CampaignFiles(QObject* parent = nullptr);

    /// From now on changes of the file are told, whether it is written to or replaced.
    void watch(const QString& file);

signals:
    /// The file holds something else than before.
    void changed(const QString& file);

private:
    void lookAgain();

    QFileSystemWatcher watcher_;
    /// Some editors write in several steps; what stands still for a moment is looked at.
    QTimer settled_;
    QMap<QString, QByteArray> contents_;
};

}  // namespace vantix
