#pragma once

#include "Platform/Values/Export.h"
#include "VantixQt/Host.h"

#include <QHash>
#include <QQuickWindow>

#include <memory>

namespace vantix::qt {

class QmlParts;
class QuickScene;

/// A host for applications on Qt Quick.
///
///     QGuiApplication application(argc, argv);
///     vantix::qt::QuickHost messages(options);
///     messages.addWindow(&view);
///
/// See Host for what it does and when it may be made, and QmlTypes.h for the same in QML. It uses the QML module
/// QtQuick, and no widgets.
class VANTIX_EXPORT QuickHost final : public Host {
    Q_OBJECT

public:
    explicit QuickHost(const HostOptions& options, QObject* parent = nullptr);
    ~QuickHost() override;

    /// From now on messages may be shown in this window, as an item above everything in its scene: in the active one of
    /// those that were added, otherwise in the one that was active last. It may be closed and destroyed at any time;
    /// adding it twice does nothing.
    void addWindow(QQuickWindow* window);
    /// A message that the window shows counts as dismissed.
    void removeWindow(QQuickWindow* window);

private:
    std::shared_ptr<QmlParts> parts_;
    QHash<QQuickWindow*, std::weak_ptr<QuickScene>> scenes_;
};

}  // namespace vantix::qt
