#pragma once

#include <memory>
#include <openssl/types.h>
#include <string>

namespace vantix {

/// A key pair made on the spot and a certificate for 127.0.0.1 that it signs itself; for servers on loopback.
class ThrowAwayCertificate {
public:
    /// Valid since two days, until tomorrow; an expired one until yesterday.
    enum class Validity { current, expired };

    explicit ThrowAwayCertificate(Validity validity = Validity::current);

    X509* certificate() const { return certificate_.get(); }
    EVP_PKEY* key() const { return key_.get(); }
    /// The pin of the public key, "sha256//BASE64".
    std::string pin() const;

private:
    std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)> key_;
    std::unique_ptr<X509, void (*)(X509*)> certificate_;
};

}  // namespace vantix
