import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

ApplicationWindow {
    property var messages
    width: 390; height: 640; visible: true

    component ShopButton: Button {
        Layout.fillWidth: true
        Accessible.onPressAction: clicked()
        onClicked: outside.say("clicked " + text)
    }
    ColumnLayout {
        anchors { fill: parent; margins: 8 }
        TextField { Layout.fillWidth: true; placeholderText: "Search"; onTextChanged: outside.say("typed " + text) }
        ListView {
            Layout.fillWidth: true; Layout.fillHeight: true; Accessible.role: Accessible.List
            clip: true; model: 60
            delegate: ItemDelegate { width: ListView.view.width; text: "Tea no. " + (index + 1) }
        }
        ShopButton { text: "Buy"; onClicked: messages.captureEvent("purchase") }
        ShopButton { text: "Terms"; onClicked: terms.open() }
        ShopButton {
            text: "Another window"
            onClicked: messages.addWindow(
                Qt.createComponent("ShopWindow.qml").createObject(null, {title: "Second shop", messages: messages}))
        }
    }
    Dialog {
        id: terms
        anchors.centerIn: parent; modal: true; title: "Terms"; standardButtons: Dialog.Ok
        Label { text: "Tea is served hot." }
    }
    Shortcut { sequence: "Ctrl+B"; onActivated: outside.say("shortcut") }
}
