#include "VantixCore/Network/TransferError.h"

#include "Platform/Values/WordTable.h"

#include <curl/curl.h>

namespace vantix {

namespace {

using Kind = VantixError::Kind;

constexpr WordTable<Kind, 7> words{{{Kind::nameResolution, "The host was not found"},
                                    {Kind::connection, "The connection failed"},
                                    {Kind::tls, "No secure connection to the server"},
                                    {Kind::pin, "The server's public key is not the pinned one"},
                                    {Kind::timeOut, "The request timed out"},
                                    {Kind::tooLarge, "The answer is too large"},
                                    {Kind::refused, "The address cannot be fetched"}}};

}  // namespace

VantixError transferError(Kind kind, const std::string& detail) {
    return {kind, 0, std::string(words.word(kind)) + ": " + detail};
}

Kind transferErrorKind(int curlCode) {
    switch (curlCode) {
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
            return Kind::nameResolution;
        case CURLE_OPERATION_TIMEDOUT:
            return Kind::timeOut;
        case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
            return Kind::pin;
        case CURLE_FILESIZE_EXCEEDED:
            return Kind::tooLarge;
        case CURLE_URL_MALFORMAT:
            return Kind::refused;
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_SSL_CERTPROBLEM:
        case CURLE_SSL_CIPHER:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_ISSUER_ERROR:
        case CURLE_SSL_INVALIDCERTSTATUS:
        case CURLE_USE_SSL_FAILED:
            return Kind::tls;
        default:
            return Kind::connection;
    }
}

}  // namespace vantix
