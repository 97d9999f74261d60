#include <QApplication>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTimer>

#include <VantixQtWidgets/WidgetsHost.h>

/// Ends with 0 once a popup was shown and gone.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QTemporaryDir data;
    QWidget window;
    window.resize(400, 600);
    window.show();

    vantix::qt::HostOptions options;
    options.dataDirectory = data.path();
    options.customerId = "c-1";
    vantix::qt::WidgetsHost messages(options);
    messages.addWindow(&window);
    QObject::connect(&messages, &vantix::qt::Host::messageShown, &messages, &vantix::qt::Host::dismiss);
    QObject::connect(&messages, &vantix::qt::Host::messageGone, &application, &QCoreApplication::quit);
    QTimer::singleShot(10000, &application, [] { QCoreApplication::exit(1); });
    QString whyNot;
    if (!messages.receivePush(QJsonDocument::fromJson(R"({
            "cuid": "c-1", "scope": "s-1", "trigger": {"eventName": "INSTANT"},
            "body": {"type": "POPUP", "title": "Autumn", "message": "Boots", "ctas": []}})")
                                  .object(),
                              &whyNot)) {
        qFatal("%s", qPrintable(whyNot));
    }
    return application.exec();
}
