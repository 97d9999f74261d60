#pragma once

#include <QString>

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
};

}  // namespace vantix::qt
