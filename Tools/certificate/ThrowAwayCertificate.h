#pragma once

#include <memory>
#include <string>

struct evp_pkey_st;
struct x509_st;

namespace vantix {

/// A key pair made on the spot and a certificate for 127.0.0.1 that it signs itself; for servers on loopback.
class ThrowAwayCertificate {
public:
    /// Valid since two days, until tomorrow; an expired one until yesterday.
    enum class Validity { current, expired };

    explicit ThrowAwayCertificate(Validity validity = Validity::current);

    x509_st* certificate() const { return certificate_.get(); }
    evp_pkey_st* key() const { return key_.get(); }
    /// The pin of the public key, "sha256//BASE64".
    std::string pin() const;

private:
    std::unique_ptr<evp_pkey_st, void (*)(evp_pkey_st*)> key_;
    std::unique_ptr<x509_st, void (*)(x509_st*)> certificate_;
};

}  // namespace vantix
