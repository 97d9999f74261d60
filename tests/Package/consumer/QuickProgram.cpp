#include <QGuiApplication>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <VantixQtQuick/QuickHost.h>

/// Begins and ends a host.
int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QTemporaryDir data;
    QQuickWindow window;
    vantix::qt::HostOptions options;
    options.dataDirectory = data.path();
    vantix::qt::QuickHost messages(options);
    messages.addWindow(&window);
    return 0;
}
