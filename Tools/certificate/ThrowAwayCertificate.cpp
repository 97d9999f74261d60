#include "Tools/certificate/ThrowAwayCertificate.h"

#include <array>
#include <openssl/crypto.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/sha.h>
#include <openssl/x509.h>

namespace vantix {

namespace {

constexpr long day = 24 * 60 * 60;

}  // namespace

ThrowAwayCertificate::ThrowAwayCertificate(Validity validity)
    : key_(EVP_EC_gen("P-256"), &EVP_PKEY_free), certificate_(X509_new(), &X509_free) {
    X509* certificate = certificate_.get();
    X509_set_version(certificate, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -2 * day);
    X509_gmtime_adj(X509_getm_notAfter(certificate), validity == Validity::expired ? -day : day);
    X509_NAME* name = X509_get_subject_name(certificate);
    auto host = reinterpret_cast<const unsigned char*>("127.0.0.1");
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, host, -1, -1, 0);
    X509_set_issuer_name(certificate, name);
    X509_set_pubkey(certificate, key_.get());
    X509_sign(certificate, key_.get(), EVP_sha256());
}

std::string ThrowAwayCertificate::pin() const {
    unsigned char* encoded = nullptr;
    int length = i2d_PUBKEY(key_.get(), &encoded);
    std::array<unsigned char, SHA256_DIGEST_LENGTH> hash{};
    SHA256(encoded, static_cast<std::size_t>(length), hash.data());
    OPENSSL_free(encoded);
    std::array<unsigned char, 64> text{};
    EVP_EncodeBlock(text.data(), hash.data(), static_cast<int>(hash.size()));
    return "sha256//" + std::string(reinterpret_cast<const char*>(text.data()));
}

}  // namespace vantix
