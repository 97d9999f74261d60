#pragma once

#include "Platform/Values/Export.h"

#include <string>

namespace vantix {

/// Account, credentials and end points of one core library instance. Read on any thread; must not change while in use.
class VANTIX_EXPORT ConfigurationGenerator {
public:
    virtual ~ConfigurationGenerator() = default;

    virtual std::string accountID() const = 0;
    /// Scheme and host of the back end ("https://api.example.com"); empty means that nothing is sent.
    virtual std::string baseURL() const = 0;
    /// The pin of the back end's public key, as "sha256//BASE64", which over https decides instead of the certificate;
    /// empty means that the certificate must be valid.
    virtual std::string sslKeyHash() const = 0;
    /// Sent as a bearer token with requests that ask for it; empty means none.
    virtual std::string accessToken() const = 0;
};

/// A configuration that is known beforehand.
struct VANTIX_EXPORT VantixConfiguration final : ConfigurationGenerator {
    std::string account;
    std::string base;
    std::string keyHash;
    std::string token;

    std::string accountID() const override { return account; }
    std::string baseURL() const override { return base; }
    std::string sslKeyHash() const override { return keyHash; }
    std::string accessToken() const override { return token; }
};

}  // namespace vantix
