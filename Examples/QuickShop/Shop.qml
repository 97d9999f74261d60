import QtQuick
import Vantix.InAppMessage

ShopWindow {
    id: shop
    title: "Shop"
    messages: host

    QuickHost {
        id: host
        dataDirectory: outside.folder
        onMessageShown: scope => outside.say("shown " + scope)
        onMessageGone: scope => outside.say("gone " + scope)
        onReported: name => outside.say("reported " + name)
        onDeepLinkActivated: link => outside.say("link " + link)
        onUrlActivated: address => outside.say("url " + address)
        onPushRefused: whyNot => outside.say("refused " + whyNot)
    }
    Component.onCompleted: Qt.callLater(() => {
        for (const path of outside.campaigns)
            if (host.receivePush(outside.read(path))) outside.say("received " + path)
    })
}
