import QtQuick
import Vantix.InAppMessage

ShopWindow {
    title: "Shop"
    messages: QuickHost {
        id: host
        dataDirectory: folder
        onMessageShown: scope => outside.say("shown " + scope)
        onMessageGone: scope => outside.say("gone " + scope)
        onReported: name => outside.say("reported " + name)
        onDeepLinkActivated: link => outside.say("link " + link)
        onUrlActivated: address => outside.say("url " + address)
        onPushRefused: whyNot => outside.say("refused " + whyNot)
    }
    Component.onCompleted: campaigns.forEach(path => {
        if (host.receivePush(outside.read(path))) outside.say("received " + path)
    })
}
