#include "VantixQtQuick/QuickHost.h"
#include "tests/Support/TemporaryFolder.h"

#include <QJsonArray>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <memory>

using namespace vantix;
using namespace vantix::qt;

namespace {

constexpr const char* shop = R"(
    import QtQuick
    Window {
        property int heard: 0
        property alias cover: cover
        width: 400; height: 600; visible: true
        Item {
            anchors.fill: parent
            TapHandler { onPressedChanged: heard += pressed; acceptedButtons: Qt.AllButtons }
            PointHandler { acceptedDevices: PointerDevice.TouchScreen; onActiveChanged: heard += active }
            WheelHandler { onWheel: ++heard }
            MouseArea { anchors.fill: parent; onPressed: ++heard; onReleased: ++heard }
        }
        Rectangle { id: cover; color: "red"; z: 1000; visible: false; anchors.fill: parent }
    }
)";

constexpr QPoint inHeader(200, 70);
constexpr QPoint inMiddle(200, 300);
constexpr QPoint inLowerHalf(200, 550);

/// A window with handlers below the message, and the message in it.
struct Shop : testing::Test {
    void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get())); }

    void show(const QString& type, const QString& text = "You") {
        QJsonObject body{{"type", type}, {"title", "Hello"}, {"message", text}, {"ctas", buttons}};
        host.setReducesMotion(true);
        host.addWindow(window.get());
        QSignalSpy shown(&host, &Host::messageShown);
        QString whyNot;
        ASSERT_TRUE(host.receivePush({{"cuid", "c"},
                                      {"scope", "s"},
                                      {"trigger", QJsonObject{{"eventName", "INSTANT"}}},
                                      {"body", body},
                                      {"template", QJsonObject{{"layoutBackgroundColor", "#12abcd"}}}},
                                     &whyNot))
            << whyNot.toStdString();
        ASSERT_TRUE(shown.wait());
        ASSERT_TRUE(QTest::qWaitFor([&] { return color(inHeader) == card || color(inMiddle) == card; }));
    }

    /// Where a message with such a button leads when it is tapped.
    QStringList ledTo(const QString& type, const QString& action) {
        buttons = {QJsonObject{{"type", type}, {"action", action}, {"actionText", "Go"}}};
        show("POPUP");
        QSignalSpy links(&host, &Host::deepLinkActivated), addresses(&host, &Host::urlActivated);
        QSignalSpy gone(&host, &Host::messageGone);
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, inMiddle);
        EXPECT_TRUE(QTest::qWaitFor([&] { return gone.count() == 1; }));
        QStringList led;
        for (const auto& arguments : links + addresses) led << arguments.first().toUrl().toString();
        return led;
    }

    int heard(QPoint place) {
        window->setProperty("heard", 0);
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, place);
        QTest::mouseClick(window.get(), Qt::RightButton, {}, place);
        QWheelEvent wheel(place, place, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.get(), &wheel);
        QTest::touchEvent(window.get(), finger.get()).press(0, place).press(1, place + QPoint(20, 0));
        QTest::touchEvent(window.get(), finger.get()).release(0, place).release(1, place + QPoint(20, 0));
        return window->property("heard").toInt();
    }

    QColor color(QPoint place) { return window->grabWindow().pixelColor(place); }

    QJsonArray buttons;
    const QColor card{"#12abcd"};
    TemporaryFolder folder;
    QQmlEngine engine;
    QQmlComponent component{&engine};
    std::unique_ptr<QQuickWindow> window{[this] {
        component.setData(shop, QUrl());
        return qobject_cast<QQuickWindow*>(component.create());
    }()};
    std::unique_ptr<QPointingDevice> finger{QTest::createTouchDevice()};
    QuickHost host{[this] {
        HostOptions options;
        options.dataDirectory = QString::fromStdString(folder.path().string());
        options.refusedSchemes = QStringList{"ssh"};
        options.deepLinkSchemes = QStringList{"content"};
        return options;
    }()};
};

TEST_F(Shop, NoHandlerBelowAPopupHearsOfAnything) {
    EXPECT_GT(heard(inLowerHalf), 4);
    show("POPUP");
    for (QPoint place : {inHeader, inMiddle, inLowerHalf}) EXPECT_EQ(heard(place), 0);
    QSignalSpy gone(&host, &Host::messageGone);
    host.dismiss();
    ASSERT_TRUE(gone.wait());
    EXPECT_GT(heard(inLowerHalf), 4);
}

TEST_F(Shop, ALinkOfItsOwnSchemeIsFollowed) {
    EXPECT_EQ(ledTo("DEEPLINK", "content://orders"), QStringList{"content://orders"});
}

TEST_F(Shop, AnAddressOfASchemeThatItRefusesIsNot) { EXPECT_EQ(ledTo("EXTERNAL", "ssh://host"), QStringList{}); }

TEST_F(Shop, AnAddressThatNobodyCanReadIsNot) { EXPECT_EQ(ledTo("EXTERNAL", "https://["), QStringList{}); }

TEST_F(Shop, ABannerLeavesTheRestToTheApplication) {
    show("HEADER");
    EXPECT_EQ(heard(inHeader), 0);
    EXPECT_GT(heard(inLowerHalf), 4);
}

TEST_F(Shop, APressThatBeganBelowEndsThere) {
    QTest::mousePress(window.get(), Qt::LeftButton, {}, inLowerHalf);
    show("POPUP");
    EXPECT_GT(window->property("heard").toInt(), 0);
    window->setProperty("heard", 0);
    QTest::mouseRelease(window.get(), Qt::LeftButton, {}, inLowerHalf);
    EXPECT_GT(window->property("heard").toInt(), 0);
}

TEST_F(Shop, StaysAboveWhatIsRaisedLater) {
    show("POPUP");
    window->property("cover").value<QQuickItem*>()->setVisible(true);
    EXPECT_EQ(color(inMiddle), card);
    EXPECT_EQ(color(inLowerHalf), QColor("red"));
}

TEST_F(Shop, AFingerThatLetsGoInMotionScrollsOn) {
    show("FULLSCREEN", QString("A long story. ").repeated(300));
    QImage before = window->grabWindow();
    QTest::touchEvent(window.get(), finger.get()).press(0, inLowerHalf);
    for (int step = 1; step <= 5; ++step) {
        QTest::qWait(10);
        QTest::touchEvent(window.get(), finger.get()).move(0, inLowerHalf - QPoint(0, 30 * step));
    }
    QTest::touchEvent(window.get(), finger.get()).release(0, inLowerHalf - QPoint(0, 150));
    QImage letGo = window->grabWindow();
    EXPECT_NE(letGo, before);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->grabWindow() != letGo; }, 2000));
}

}  // namespace
