// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/CurlCause.h"

#include <cerrno>

namespace velarin::live {
namespace {

struct Cause
{
    QString domain;
    qint64 code{ 0 };
};

Cause http(qint64 code)
{
    return { AudioErrorDomain::http, code };
}

// libcurl says "unsupported protocol" of an address that is neither http nor https, of a redirect to one, and of an
// answer without a head.
Cause ofUnsupportedProtocol(const TransferEnd& end)
{
    const bool answeredWithoutHead = end.requestBytes > 0 && end.head != StreamHeadParser::State::Passed;
    return http(answeredWithoutHead ? HttpError::malformedHead : HttpError::badAddress);
}

QString domainOfBrokenConnection(const TransferEnd& end)
{
    return end.systemError == ETIMEDOUT ? AudioErrorDomain::timeout : AudioErrorDomain::reset;
}

// The codes are hundreds, and most of them of protocols that are never spoken here: what is not named is a connection
// that broke.
QString domainOf(const TransferEnd& end)
{
    switch (static_cast<int>(end.result)) {
    case CURLE_OK:
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
        return AudioErrorDomain::closed;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return AudioErrorDomain::resolve;
    case CURLE_COULDNT_CONNECT:
    case CURLE_PROXY:
        return AudioErrorDomain::connect;
    case CURLE_OPERATION_TIMEDOUT:
        return AudioErrorDomain::timeout;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_SHUTDOWN_FAILED:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_CLIENTCERT:
    case CURLE_USE_SSL_FAILED:
        return AudioErrorDomain::tls;
    default:
        return domainOfBrokenConnection(end);
    }
}

Cause ofResult(const TransferEnd& end)
{
    switch (static_cast<int>(end.result)) {
    case CURLE_URL_MALFORMAT:
        return http(HttpError::badAddress);
    case CURLE_UNSUPPORTED_PROTOCOL:
        return ofUnsupportedProtocol(end);
    case CURLE_TOO_MANY_REDIRECTS:
        return http(HttpError::redirectLoop);
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return http(HttpError::malformedHead);
    default:
        return { domainOf(end), end.result };
    }
}

Cause ofEnd(const TransferEnd& end)
{
    if (end.head == StreamHeadParser::State::Malformed)
        return http(HttpError::malformedHead);
    if (end.head == StreamHeadParser::State::Complete && (end.status < 200 || end.status > 299))
        return http(end.status);
    return ofResult(end);
}

}

AudioErrorChain causeOf(const TransferEnd& end)
{
    const Cause cause = ofEnd(end);
    const QString text = end.text.isEmpty() ? QString::fromUtf8(curl_easy_strerror(end.result)) : end.text;
    return { AudioError{ cause.domain, cause.code, text } };
}

}
