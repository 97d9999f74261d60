#include "VantixQt/Drawing/DisplayListPainter.h"
#include "VantixQt/Drawing/QtFontCatalogue.h"
#include "VantixQt/Drawing/QtImageDecoder.h"
#include "VantixQt/Drawing/QtTextMeasurer.h"
#include "VantixQtWidgets/WidgetsHost.h"
#include "tests/Support/TemporaryFolder.h"

#include <QApplication>
#include <QEventLoop>
#include <QJsonArray>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>
#include <gtest/gtest.h>

#include <set>

using namespace vantix;
using namespace vantix::qt;

namespace {

QApplication& application() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    static auto& made = *new QApplication(count, arguments);
    return made;
}

QJsonObject campaign(const QString& scope) {
    QJsonObject body{{"type", "POPUP"}, {"title", "Hello"}, {"message", "You"}, {"ctas", QJsonArray()}};
    return {{"cuid", "c"},
            {"scope", scope},
            {"trigger", QJsonObject{{"eventName", "INSTANT"}}},
            {"body", body},
            {"template", QJsonObject()}};
}

/// The texts of a signal of one text, from now on.
class Heard {
public:
    Heard(Host& host, void (Host::*signal)(const QString&)) {
        QObject::connect(&host, signal, &loop_, [this](const QString& text) {
            texts_ << text;
            loop_.quit();
        });
    }

    /// Waits for the next one if there is none; "nothing" when none comes.
    QString take() {
        QTimer::singleShot(10000, &loop_, &QEventLoop::quit);
        if (texts_.isEmpty()) loop_.exec();
        return texts_.isEmpty() ? "nothing" : texts_.takeFirst();
    }

private:
    QEventLoop loop_;
    QStringList texts_;
};

auto entries(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

struct WidgetsHostTest : testing::Test {
    WidgetsHostTest() { options.dataDirectory = QString::fromStdString(folder.path().string()); }

    TemporaryFolder folder;
    HostOptions options;
};

}  // namespace

TEST_F(WidgetsHostTest, LeavesNothingBehindAndMakesRoomForAnother) {
    application();
    QWidget window;
    QLineEdit edit(&window);
    window.show();
    auto run = [&](const QString& scope) {
        WidgetsHost host(options);
        Heard shown(host, &Host::messageShown), gone(host, &Host::messageGone);
        host.addWindow(&window);
        EXPECT_TRUE(host.receivePush(campaign(scope)));
        EXPECT_EQ(shown.take(), scope);
        EXPECT_EQ(window.children().size(), 2);
        host.dismiss();
        EXPECT_EQ(gone.take(), scope);
        host.receivePush(campaign("stays"));
    };
    run("first");
    auto threads = entries("/proc/self/task"), files = entries("/proc/self/fd");
    run("stays");
    EXPECT_EQ(entries("/proc/self/task"), threads);
    EXPECT_EQ(entries("/proc/self/fd"), files);
    EXPECT_EQ(window.children().size(), 1);
    EXPECT_TRUE(window.dynamicPropertyNames().isEmpty());
}

TEST_F(WidgetsHostTest, AMessageWaitsForAWindowAndEndsWithIt) {
    application();
    WidgetsHost host(options);
    Heard shown(host, &Host::messageShown), gone(host, &Host::messageGone);
    EXPECT_TRUE(host.receivePush(campaign("first")));
    QTimer::singleShot(300, [&] { host.captureEvent("nothing waits for this"); });
    auto window = std::make_unique<QWidget>();
    host.addWindow(window.get());
    QTimer::singleShot(300, window.get(), &QWidget::show);
    EXPECT_EQ(shown.take(), "first");
    window->close();
    EXPECT_TRUE(window->children().isEmpty()) << "at once: the application may be about to quit";
    EXPECT_EQ(gone.take(), "first");
}

TEST_F(WidgetsHostTest, AMessageMovesInUnlessThePersonWantsNoMovement) {
    application();
    for (bool reducesMotion : {false, true}) {
        QWidget window;
        window.resize(200, 200);
        window.show();
        WidgetsHost host(options);
        host.setReducesMotion(reducesMotion);
        host.addWindow(&window);
        std::set<QByteArray> pictures;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            QImage picture = window.grab().toImage();
            pictures.emplace(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
        });
        look.start(10);
        host.receivePush(campaign(reducesMotion ? "still" : "moving"));
        QEventLoop loop;
        QTimer::singleShot(700, &loop, &QEventLoop::quit);
        loop.exec();
        EXPECT_EQ(pictures.size() > 3, !reducesMotion) << pictures.size();
    }
}

TEST_F(WidgetsHostTest, AMessageWaitsForAMenu) {
    application();
    QWidget window;
    window.show();
    QMenu menu(&window);
    menu.addAction("Copy");
    menu.popup({});
    WidgetsHost host(options);
    Heard shown(host, &Host::messageShown);
    host.addWindow(&window);
    host.receivePush(campaign("first"));
    bool isClosed = false;
    QTimer::singleShot(300, [&] { isClosed = menu.close(); });
    EXPECT_EQ(shown.take(), "first");
    EXPECT_TRUE(isClosed);
}

TEST_F(WidgetsHostTest, SaysWhyNothingWillComeOfACampaign) {
    application();
    WidgetsHost host(options);
    QString whyNot;
    EXPECT_FALSE(host.receivePush({{"scope", "a"}}, &whyNot));
    EXPECT_FALSE(whyNot.isEmpty());
}

TEST_F(WidgetsHostTest, AWrongStartStopsTheProcessWithItsReason) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const char* reason = "make the QGuiApplication .or QApplication. first";
    EXPECT_DEATH(WidgetsHost(this->options), reason);
    EXPECT_DEATH(QtFontCatalogue(), reason);
    EXPECT_DEATH(QtTextMeasurer(nullptr), reason);
    EXPECT_DEATH(DisplayListPainter(nullptr), reason);
    EXPECT_DEATH(QtImageDecoder(), reason);
    auto makeTwo = [this] {
        application();
        WidgetsHost first(options), second(options);
    };
    EXPECT_DEATH(makeTwo(), "one host at a time");
}
