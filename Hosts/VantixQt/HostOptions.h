#pragma once

#include <QString>
#include <QStringList>

namespace vantix::qt {

/// What a host is started with. Everything may be left empty.
struct HostOptions {
    /// Where messages, settings, reports and images are kept, by one process at a time; made when missing. Empty: the
    /// folder "inapp" in the platform's place for the application's own data.
    QString dataDirectory;
    /// The account at the back end.
    QString accountId;
    /// Scheme and host of the back end ("https://api.example.com"). Empty: nothing is sent.
    QString baseUrl;
    /// The bearer token of requests.
    QString accessToken;
    /// The pin of the back end's public key, "sha256//BASE64". Empty: its certificate must be valid.
    QString sslKeyHash;
    /// Who uses the application, when known at start; empty leaves it as it was. See Host::setCustomerId.
    QString customerId;
    /// The application's number in the store, for the review page. Empty: there is none.
    QString appStoreId;
    /// Schemes that a message never leads to ("ssh"), beside those that run what they hold or read what is on the
    /// device, which are refused anyway: see Host::urlActivated. Without their colon, in any letter case; so below.
    QStringList refusedSchemes;
    /// The application's own schemes, for Host::deepLinkActivated: links with them are followed even where the scheme
    /// would be refused.
    QStringList deepLinkSchemes;
};

}  // namespace vantix::qt
