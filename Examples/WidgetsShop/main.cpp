// A small shop with in-app messages. It prints what it learns, a line each.
//
//     widgets-shop [--data FOLDER] [--campaign FILE]…

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonDocument>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTextStream>
#include <QTimer>
#include <QVBoxLayout>

#include <VantixQtWidgets/WidgetsHost.h>

namespace {

void say(const QString& line) { QTextStream(stdout) << line << Qt::endl; }

/// A window of the shop; closing it destroys it.
class ShopWindow final : public QWidget {
public:
    explicit ShopWindow(vantix::qt::Host& messages) : layout_(new QVBoxLayout(this)), messages_(messages) {
        setAttribute(Qt::WA_DeleteOnClose);
        resize(390, 640);
        auto search = new QLineEdit;
        search->setPlaceholderText("Search");
        search->setObjectName("search");
        connect(search, &QLineEdit::textChanged, this, [](const QString& text) { say("typed " + text); });
        layout_->addWidget(search);
        auto goods = new QListWidget;
        for (int number = 1; number <= 60; ++number) goods->addItem(QString("Tea no. %1").arg(number));
        layout_->addWidget(goods);
        addButton("Buy", [this] { messages_.captureEvent("purchase"); });
        addButton("Terms", [this] { QMessageBox::information(this, "Terms", "Tea is served hot."); });
        connect(new QShortcut(QKeySequence("Ctrl+B"), this), &QShortcut::activated, [] { say("shortcut"); });
    }

    template <typename Action>
    void addButton(const QString& text, Action action) {
        auto button = new QPushButton(text);
        connect(button, &QPushButton::clicked, this, [text, action] {
            say("clicked " + text);
            action();
        });
        layout_->addWidget(button);
    }

private:
    QVBoxLayout* layout_;
    vantix::qt::Host& messages_;
};

void receive(vantix::qt::Host& messages, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return say("refused " + file.errorString());
    QString whyNot;
    bool isReceived = messages.receivePush(QJsonDocument::fromJson(file.readAll()).object(), &whyNot);
    say(isReceived ? "received " + path : "refused " + whyNot);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("WidgetsShop");
    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addOptions(
        {{"campaign", "A campaign that arrives after start.", "file"}, {"data", "Kept here.", "folder"}});
    arguments.process(application);

    vantix::qt::HostOptions options;
    options.dataDirectory = arguments.value("data");
    vantix::qt::WidgetsHost messages(options);
    using vantix::qt::Host;
    QObject::connect(&messages, &Host::messageShown, [](const QString& scope) { say("shown " + scope); });
    QObject::connect(&messages, &Host::messageGone, [](const QString& scope) { say("gone " + scope); });
    QObject::connect(&messages, &Host::reported, [](const QString& name) { say("reported " + name); });
    QObject::connect(&messages, &Host::deepLinkActivated, [](const QUrl& link) { say("link " + link.toString()); });
    QObject::connect(&messages, &Host::urlActivated, [](const QUrl& address) { say("url " + address.toString()); });

    auto openWindow = [&](auto& self, const QString& title) -> void {
        auto window = new ShopWindow(messages);
        window->setWindowTitle(title);
        window->addButton("Another window", [self] { self(self, "Second shop"); });
        messages.addWindow(window);
        window->show();
    };
    openWindow(openWindow, "Shop");
    QTimer::singleShot(0, [&] {
        for (const QString& path : arguments.values("campaign")) receive(messages, path);
    });
    return QApplication::exec();
}
