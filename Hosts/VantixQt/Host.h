#pragma once

#include "Platform/Values/Export.h"
#include "VantixQt/HostOptions.h"

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <memory>

namespace vantix::qt {

class HostRun;
class WindowScene;

/// The in-app messages of a Qt application: runs the module on the application's event loop and shows its messages in
/// the application's own windows. What both toolkits share; an application makes a WidgetsHost or a QuickHost.
///
/// Made on the GUI thread, after the QGuiApplication, one at a time in a process; a second one, or one made too early,
/// stops the process with a text that says so. All operations and all signals belong to the GUI thread. Destroying it
/// takes a shown message away, joins every thread and leaves nothing behind but the files in the data directory.
class VANTIX_EXPORT Host : public QObject {
    Q_OBJECT

public:
    ~Host() override;

    /// Takes a campaign as it comes with a silent push: "trigger", "body" and "template" may be objects or their JSON
    /// texts. False, with the reason, when nothing will ever come of it. Otherwise the message is stored and shown when
    /// its event is captured; one that waits for none is shown as soon as nothing stands in the way.
    bool receivePush(const QJsonObject& campaign, QString* whyNot = nullptr);

    /// Tells of an event of the application, which may show a message that waits for it. Attributes that JSON cannot
    /// express count as null.
    void captureEvent(const QString& name, const QVariantMap& attributes = {});

    /// Who uses the application from now on; messages for others are not shown. Empty: nobody is known.
    void setCustomerId(const QString& customerId);

    /// Forgets the customer, and removes every stored message and cached image. A message on screen goes.
    void logOut();

    /// Takes the message on screen away, as its close control does. Without one nothing happens.
    void dismiss();

    /// While false no message is shown; those that arrive wait, and are shown when nothing else stands in the way. True
    /// at start.
    void setMessagesAllowed(bool allowed);

    /// The reader's text size, 1 being the designer's, from now on instead of the platform's, which is told by its font
    /// (9 to 11 points are the designer's size). 0: the platform's again.
    void setTextScale(double scale);

    /// True when the person wants little movement: messages come and go at once. False at start, as the platforms have
    /// no common word for that wish.
    void setReducesMotion(bool reduces);

    /// While false the application counts as being in the background whatever the platform says, for devices whose
    /// platform does not know: no message is shown, and the stored ones are looked through again on the return. True
    /// at start.
    void setInForeground(bool inForeground);

signals:
    // All on the GUI thread, on a later turn of the event loop than the tap that they come from.

    /// A button leads to a place inside the application. The link is refused as an address is (see urlActivated),
    /// unless its scheme is in HostOptions::deepLinkSchemes; whatever follows the scheme was chosen by whoever wrote
    /// the campaign.
    void deepLinkActivated(const QUrl& link);
    /// A button leads out of the application. While nobody is connected, the desktop opens the address. It is absolute,
    /// without control characters, and of no scheme that runs what it holds or reads what is on the device (about,
    /// blob, content, data, file, intent, javascript, vbscript, a drive's letter) or that is in
    /// HostOptions::refusedSchemes; what is refused is an error in the log.
    void urlActivated(const QUrl& address);
    /// The message is on the screen.
    void messageShown(const QString& scope);
    /// Once for each `messageShown`, but for a message that this object's own end takes away.
    void messageGone(const QString& scope);
    /// The module reports what happened to a message ("inAppMessageShown", …), whether or not there is a back end.
    void reported(const QString& name, const QVariantMap& attributes);
    /// A request leaves the application, or tries to. For tools and logs; secrets are not in it.
    void requestSent(const QString& method, const QUrl& address, const QString& body);

protected:
    Host(const HostOptions& options, QObject* parent);

    /// The run that windows are shown in. Lives as long as this object.
    HostRun& run() { return *run_; }

private:
    void openAddress(const QUrl& address);

    std::unique_ptr<HostRun> run_;
};

}  // namespace vantix::qt
