// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/CurlCause.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace velarin::live {
namespace {

using State = StreamHeadParser::State;

struct CauseCase
{
    const char* name;
    TransferEnd end;
    QString domain;
    qint64 code;
};

TransferEnd ended(
    CURLcode result, State head = State::Reading, int status = 0, long requestBytes = 0, long systemError = 0)
{
    return { result, systemError, requestBytes, head, status, {} };
}

class CurlCauseTest : public testing::TestWithParam<CauseCase>
{
};

TEST_P(CurlCauseTest, hasOneDomainAndCode)
{
    const AudioErrorChain chain = causeOf(GetParam().end);
    ASSERT_EQ(chain.size(), 1u);
    EXPECT_EQ(chain.front().domain, GetParam().domain);
    EXPECT_EQ(chain.front().code, GetParam().code);
    EXPECT_FALSE(chain.front().text.isEmpty());
}

namespace Domain = AudioErrorDomain;

INSTANTIATE_TEST_SUITE_P(Ends, CurlCauseTest,
    testing::Values(CauseCase{ "notFound", ended(CURLE_WRITE_ERROR, State::Complete, 404), Domain::http, 404 },
        CauseCase{ "serverError", ended(CURLE_WRITE_ERROR, State::Complete, 503), Domain::http, 503 },
        CauseCase{ "redirectToNowhere", ended(CURLE_WRITE_ERROR, State::Complete, 302), Domain::http, 302 },
        CauseCase{ "oldRefusal", ended(CURLE_WRITE_ERROR, State::Complete, 401), Domain::http, 401 },
        CauseCase{
            "headTooLong", ended(CURLE_WRITE_ERROR, State::Malformed, 200), Domain::http, HttpError::malformedHead },
        CauseCase{ "noHead", ended(CURLE_UNSUPPORTED_PROTOCOL, State::Reading, 0, 80), Domain::http,
            HttpError::malformedHead },
        CauseCase{ "strangeAnswer", ended(CURLE_WEIRD_SERVER_REPLY), Domain::http, HttpError::malformedHead },
        CauseCase{ "badEncoding", ended(CURLE_BAD_CONTENT_ENCODING), Domain::http, HttpError::malformedHead },
        CauseCase{ "redirectLoop", ended(CURLE_TOO_MANY_REDIRECTS, State::Passed, 302, 900), Domain::http,
            HttpError::redirectLoop },
        CauseCase{ "addressOfAnotherScheme", ended(CURLE_UNSUPPORTED_PROTOCOL), Domain::http, HttpError::badAddress },
        CauseCase{ "redirectToAnotherScheme", ended(CURLE_UNSUPPORTED_PROTOCOL, State::Passed, 302, 80), Domain::http,
            HttpError::badAddress },
        CauseCase{ "noAddress", ended(CURLE_URL_MALFORMAT), Domain::http, HttpError::badAddress },
        CauseCase{ "deadName", ended(CURLE_COULDNT_RESOLVE_HOST), Domain::resolve, CURLE_COULDNT_RESOLVE_HOST },
        CauseCase{ "deadProxyName", ended(CURLE_COULDNT_RESOLVE_PROXY), Domain::resolve, CURLE_COULDNT_RESOLVE_PROXY },
        CauseCase{ "refused", ended(CURLE_COULDNT_CONNECT, State::Reading, 0, 0, ECONNREFUSED), Domain::connect,
            CURLE_COULDNT_CONNECT },
        CauseCase{ "proxy", ended(CURLE_PROXY), Domain::connect, CURLE_PROXY },
        CauseCase{ "handshake", ended(CURLE_SSL_CONNECT_ERROR), Domain::tls, CURLE_SSL_CONNECT_ERROR },
        CauseCase{ "certificate", ended(CURLE_PEER_FAILED_VERIFICATION), Domain::tls, CURLE_PEER_FAILED_VERIFICATION },
        CauseCase{ "authoritiesUnreadable", ended(CURLE_SSL_CACERT_BADFILE), Domain::tls, CURLE_SSL_CACERT_BADFILE },
        CauseCase{ "connectTimeOut", ended(CURLE_OPERATION_TIMEDOUT), Domain::timeout, CURLE_OPERATION_TIMEDOUT },
        CauseCase{ "keepAliveFailed", ended(CURLE_RECV_ERROR, State::Complete, 200, 80, ETIMEDOUT), Domain::timeout,
            CURLE_RECV_ERROR },
        CauseCase{ "cleanEnd", ended(CURLE_OK, State::Complete, 200), Domain::closed, CURLE_OK },
        CauseCase{ "shorterThanAnnounced", ended(CURLE_PARTIAL_FILE, State::Complete, 200), Domain::closed,
            CURLE_PARTIAL_FILE },
        CauseCase{ "closedWithoutAnswer", ended(CURLE_GOT_NOTHING), Domain::closed, CURLE_GOT_NOTHING },
        CauseCase{
            "reset", ended(CURLE_RECV_ERROR, State::Complete, 200, 80, ECONNRESET), Domain::reset, CURLE_RECV_ERROR },
        CauseCase{ "brokenWhileAsking", ended(CURLE_SEND_ERROR), Domain::reset, CURLE_SEND_ERROR },
        CauseCase{ "anythingElse", ended(CURLE_OUT_OF_MEMORY), Domain::reset, CURLE_OUT_OF_MEMORY }),
    [](const auto& named) { return std::string(named.param.name); });

}
}
