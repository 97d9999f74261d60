#include "Tools/vantix-inapp/Simulate/CampaignFiles.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <utility>

namespace vantix {

namespace {

constexpr std::chrono::milliseconds untilSettled(150);

QByteArray contentOf(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

CampaignFiles::CampaignFiles(QObject* parent) : QObject(parent) {
    settled_.setSingleShot(true);
    settled_.setInterval(untilSettled);
    connect(&settled_, &QTimer::timeout, this, &CampaignFiles::lookAgain);
    auto wait = [this] { settled_.start(); };
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, wait);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, wait);
}

void CampaignFiles::watch(const QString& file) {
    contents_.insert(file, contentOf(file));
    // A file that is replaced is another one; the folder tells of it.
    watcher_.addPaths({file, QFileInfo(file).absolutePath()});
}

void CampaignFiles::lookAgain() {
    const auto files = contents_.keys();
    for (const QString& file : files) {
        if (!QFile::exists(file)) continue;
        if (!watcher_.files().contains(file)) watcher_.addPath(file);
        QByteArray content = contentOf(file);
        if (std::exchange(contents_[file], content) != content) emit changed(file);
    }
}

}  // namespace vantix
