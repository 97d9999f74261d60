// A small shop with in-app messages, the host in QML. It prints what it learns, a line each.
//
//     quick-shop [--data FOLDER] [--campaign FILE]…

#include <QCommandLineParser>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QTextStream>

#include <VantixQtQuick/QmlTypes.h>

/// What QML has no means for.
class Outside final : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE static void say(const QString& line) { QTextStream(stdout) << line << Qt::endl; }
    Q_INVOKABLE static QJsonObject read(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) say(path + ": " + file.errorString());
        return QJsonDocument::fromJson(file.readAll()).object();
    }
};

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addOptions({{"campaign", "Arrives after start.", "file"}, {"data", "Kept here.", "folder"}});
    arguments.process(application);
    vantix::qt::registerQmlTypes();
    Outside outside;
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("outside", &outside);
    engine.rootContext()->setContextProperty("folder", arguments.value("data"));
    engine.rootContext()->setContextProperty("campaigns", arguments.values("campaign"));
    engine.load(QUrl("qrc:/Shop.qml"));
    return QGuiApplication::exec();
}

#include "main.moc"
