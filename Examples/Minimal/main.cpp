#include <QApplication>
#include <QJsonObject>
#include <QLabel>

#include <VantixQtWidgets/WidgetsHost.h>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QLabel window("The application");
    window.resize(390, 640);

    vantix::qt::HostOptions options;
    options.customerId = "c-2041";
    vantix::qt::WidgetsHost messages(options);
    messages.addWindow(&window);
    window.show();

    // Whatever receives the application's pushes hands them over like this.
    messages.receivePush(
        {{"cuid", "c-2041"},
         {"scope", "hello"},
         {"trigger", QJsonObject{{"eventName", "INSTANT"}}},
         {"body", QJsonObject{{"type", "POPUP"}, {"title", "Hello"}, {"message", "It works."}}},
         {"template", QJsonObject{{"phoneBackgroundColor", "#80000000"}, {"layoutBackgroundColor", "#FBF7F0"}}}});
    return QApplication::exec();
}
