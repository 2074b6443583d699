// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/FailureKind.h"

#include "RadioWorld.h"

namespace velarin::test {

namespace {

struct Row
{
    QString domain;
    qint64 code;
    Kind kind;
};

class FailureKindTest : public testing::TestWithParam<Row>
{
};

// A hint that no row gives by itself.
constexpr Kind hint = Kind::offline;

}

TEST_P(FailureKindTest, isReadFromTheError)
{
    EXPECT_EQ(classifyFailure(chainOf(GetParam().domain, GetParam().code), hint, true), GetParam().kind);
}

TEST_P(FailureKindTest, isOfflineWithoutANetwork)
{
    EXPECT_EQ(classifyFailure(chainOf(GetParam().domain, GetParam().code), Kind::timeout, false), Kind::offline);
}

TEST_P(FailureKindTest, isFoundUnderAForeignError)
{
    const AudioErrorChain chain{ { u"foreign"_s, 7, {} }, { GetParam().domain, GetParam().code, {} } };
    EXPECT_EQ(classifyFailure(chain, hint, true), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(Http, FailureKindTest,
    testing::Values(Row{ u"http"_s, 404, Kind::notFound }, Row{ u"http"_s, 410, Kind::notFound },
        Row{ u"http"_s, 400, Kind::notFound }, Row{ u"http"_s, 401, Kind::notFound },
        Row{ u"http"_s, 403, Kind::notFound }, Row{ u"http"_s, 499, Kind::notFound },
        Row{ u"http"_s, HttpError::malformedHead, Kind::notFound },
        Row{ u"http"_s, HttpError::badAddress, Kind::notFound }, Row{ u"http"_s, 500, Kind::unknown },
        Row{ u"http"_s, 503, Kind::unknown }, Row{ u"http"_s, 599, Kind::unknown },
        Row{ u"http"_s, HttpError::redirectLoop, Kind::unknown }, Row{ u"http"_s, 100, Kind::unknown },
        Row{ u"http"_s, 204, Kind::unknown }, Row{ u"http"_s, 302, Kind::unknown },
        Row{ u"http"_s, 399, Kind::unknown }, Row{ u"http"_s, 600, Kind::unknown }));

INSTANTIATE_TEST_SUITE_P(Connection, FailureKindTest,
    testing::Values(Row{ u"resolve"_s, 6, Kind::network }, Row{ u"connect"_s, 111, Kind::network },
        Row{ u"connect"_s, 113, Kind::network }, Row{ u"tls"_s, 60, Kind::network },
        Row{ u"reset"_s, 104, Kind::network }, Row{ u"closed"_s, 0, Kind::network },
        Row{ u"timeout"_s, 0, Kind::timeout }, Row{ u"timeout"_s, 28, Kind::timeout }));

INSTANTIATE_TEST_SUITE_P(Media, FailureKindTest,
    testing::Values(Row{ u"gst-stream"_s, GstError::streamCodecNotFound, Kind::unsupported },
        Row{ u"gst-core"_s, GstError::coreMissingPlugin, Kind::unsupported },
        Row{ u"gst-stream"_s, GstError::streamTypeNotFound, Kind::unsupported },
        Row{ u"gst-stream"_s, GstError::streamWrongType, Kind::unsupported },
        Row{ u"gst-stream"_s, 7, Kind::unsupported }, Row{ u"gst-stream"_s, 9, Kind::unsupported },
        Row{ u"gst-stream"_s, 11, Kind::unsupported },
        Row{ u"gst-resource"_s, GstError::resourceNoDevice, Kind::unknown }, Row{ u"gst-resource"_s, 9, Kind::unknown },
        Row{ u"gst-stream"_s, 1, Kind::unknown }, Row{ u"gst-core"_s, 1, Kind::unknown }));

TEST(FailureKind, isTheHintWithoutAnError)
{
    EXPECT_EQ(classifyFailure({}, Kind::timeout, true), Kind::timeout);
    EXPECT_EQ(classifyFailure({}, Kind::notFound, true), Kind::notFound);
}

TEST(FailureKind, isOfflineWithoutANetworkAndWithoutAnError)
{
    EXPECT_EQ(classifyFailure({}, Kind::notFound, false), Kind::offline);
}

TEST(FailureKind, isTheHintWhereNoDomainIsKnown)
{
    const AudioErrorChain foreign{ { u"foreign"_s, 1, {} }, { u"stranger"_s, 404, {} } };
    EXPECT_EQ(classifyFailure(foreign, Kind::network, true), Kind::network);
}

TEST(FailureKind, theOutermostClearLinkDecides)
{
    const AudioErrorChain chain{ { u"timeout"_s, 0, {} }, { u"http"_s, 404, {} } };
    EXPECT_EQ(classifyFailure(chain, hint, true), Kind::timeout);
}

TEST(FailureKind, anUnclearLinkOfOursLeavesTheWordToTheInnerOne)
{
    const AudioErrorChain chain{ { u"gst-stream"_s, 1, {} }, { u"reset"_s, 104, {} } };
    EXPECT_EQ(classifyFailure(chain, hint, true), Kind::network);
}

TEST(FailureKind, aChainThatContainsItselfEndsWithTheHint)
{
    const AudioErrorChain loop{ { u"foreign"_s, 1, {} }, { u"foreign"_s, 2, {} }, { u"foreign"_s, 1, {} },
        { u"http"_s, 404, {} } };
    EXPECT_EQ(classifyFailure(loop, Kind::timeout, true), Kind::timeout);
}

TEST(FailureKind, theTextOfALinkDoesNotMakeItAnotherOne)
{
    const AudioErrorChain loop{ { u"foreign"_s, 1, u"a"_s }, { u"foreign"_s, 1, u"b"_s }, { u"http"_s, 404, {} } };
    EXPECT_EQ(classifyFailure(loop, Kind::timeout, true), Kind::timeout);
}

TEST(FailureKind, noCauseOfASourceIsOffline)
{
    const QStringList domains{ u"http"_s, u"resolve"_s, u"connect"_s, u"tls"_s, u"closed"_s, u"reset"_s, u"timeout"_s,
        u"gst-resource"_s, u"gst-stream"_s, u"gst-core"_s };
    for (const QString& domain : domains) {
        for (qint64 code = -1; code <= 1000; ++code)
            ASSERT_NE(classifyFailure(chainOf(domain, code), Kind::unknown, true), Kind::offline)
                << domain.toStdString() << code;
    }
}

TEST(FailureKind, onlyWhatCanPassIsTransient)
{
    EXPECT_TRUE(isTransient(Kind::timeout));
    EXPECT_TRUE(isTransient(Kind::network));
    EXPECT_TRUE(isTransient(Kind::unknown));
    EXPECT_FALSE(isTransient(Kind::offline));
    EXPECT_FALSE(isTransient(Kind::notFound));
    EXPECT_FALSE(isTransient(Kind::unsupported));
}

TEST(FailureKind, aChainIsDescribedFromTheOutsideIn)
{
    EXPECT_EQ(describe({}), u"none"_s);
    const AudioErrorChain chain{ { u"http"_s, 404, u"Not %2 Found"_s }, { u"closed"_s, 0, u"end"_s } };
    EXPECT_EQ(describe(chain), u"http 404 (Not %2 Found) < closed 0 (end)"_s);
}

}
