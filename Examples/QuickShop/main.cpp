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

namespace {

/// What the shop's QML has from outside.
class Surroundings final : public QObject {
    Q_OBJECT

public:
    QString folder;
    QStringList files;
    Q_PROPERTY(QString folder MEMBER folder CONSTANT)
    Q_PROPERTY(QStringList campaigns MEMBER files CONSTANT)

    Q_INVOKABLE static void say(const QString& line) { QTextStream(stdout) << line << Qt::endl; }
    Q_INVOKABLE static QJsonObject read(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) say("refused " + file.errorString());
        return QJsonDocument::fromJson(file.readAll()).object();
    }
};

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName("QuickShop");
    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addOptions(
        {{"campaign", "A campaign that arrives after start.", "file"}, {"data", "Kept here.", "folder"}});
    arguments.process(application);

    Surroundings surroundings;
    surroundings.folder = arguments.value("data");
    surroundings.files = arguments.values("campaign");
    vantix::qt::registerQmlTypes();
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("outside", &surroundings);
    engine.load(QUrl("qrc:/Shop.qml"));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}

#include "main.moc"
