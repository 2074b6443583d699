// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/EndPlan.h"

#include <gtest/gtest.h>

namespace velarin::live {

namespace {

AudioErrorChain chain(const QString& domain, qint64 code = 0)
{
    return { AudioError{ domain, code, QStringLiteral("text") } };
}

}

struct OutcomeRow
{
    AudioErrorChain cause;
    Mending mending;
    double dryFor;
    Outcome outcome;
};

class OutcomeTest : public testing::TestWithParam<OutcomeRow>
{
};

TEST_P(OutcomeTest, isWhatTheFirstCauseSays)
{
    const OutcomeRow& row = GetParam();
    EXPECT_EQ(planOutcome({ row.cause, row.mending, Seconds(row.dryFor) }), row.outcome);
}

INSTANTIATE_TEST_SUITE_P(CleanClose, OutcomeTest,
    testing::Values(OutcomeRow{ chain(AudioErrorDomain::closed), Mending::Yes, 0.0, Outcome::Wait },
        OutcomeRow{ chain(AudioErrorDomain::closed), Mending::Yes, 5.9, Outcome::Wait },
        OutcomeRow{ chain(AudioErrorDomain::closed), Mending::Yes, 6.0, Outcome::PlayedToEnd },
        OutcomeRow{ chain(AudioErrorDomain::closed), Mending::No, 0.0, Outcome::PlayedToEnd }));
INSTANTIATE_TEST_SUITE_P(Break, OutcomeTest,
    testing::Values(OutcomeRow{ chain(AudioErrorDomain::reset), Mending::Yes, 5.9, Outcome::Wait },
        OutcomeRow{ chain(AudioErrorDomain::reset), Mending::Yes, 6.0, Outcome::FailedToPlayToEnd },
        OutcomeRow{ chain(AudioErrorDomain::reset), Mending::No, 0.0, Outcome::FailedToPlayToEnd },
        OutcomeRow{ chain(AudioErrorDomain::timeout), Mending::No, 0.0, Outcome::FailedToPlayToEnd },
        OutcomeRow{ chain(AudioErrorDomain::gstStream, 4), Mending::No, 0.0, Outcome::FailedToPlayToEnd }));
INSTANTIATE_TEST_SUITE_P(Silence, OutcomeTest,
    testing::Values(OutcomeRow{ {}, Mending::Yes, 0.0, Outcome::Wait },
        OutcomeRow{ {}, Mending::Yes, 60.0, Outcome::Wait }, OutcomeRow{ {}, Mending::No, 60.0, Outcome::Wait }));

TEST(FirstFailureTest, aStatusIsToldAndIsTheCause)
{
    for (const int status : { 400, 401, 403, 404, 410, 451, 500, 503, 304 }) {
        const AudioErrorChain cause = chain(AudioErrorDomain::http, status);
        EXPECT_EQ(planFirstFailure(cause, false), (FirstFailure{ status, cause }));
    }
}

TEST(FirstFailureTest, whatIsNoStatusIsOnlyTheCause)
{
    for (const qint64 code : { HttpError::malformedHead, HttpError::redirectLoop, HttpError::badAddress })
        EXPECT_EQ(planFirstFailure(chain(AudioErrorDomain::http, code), false).httpStatus, std::nullopt);
    const AudioErrorChain refused = chain(AudioErrorDomain::connect);
    EXPECT_EQ(planFirstFailure(refused, false), (FirstFailure{ std::nullopt, refused }));
}

TEST(FirstFailureTest, anAddressThatSoundedOfLateAndAnswersAClientErrorIsClosed)
{
    for (const int status : { 400, 404, 410, 499 }) {
        const FirstFailure failure = planFirstFailure(chain(AudioErrorDomain::http, status), true);
        EXPECT_EQ(failure.httpStatus, std::nullopt);
        ASSERT_EQ(failure.cause.size(), 1U);
        EXPECT_EQ(failure.cause.front().domain, AudioErrorDomain::closed);
    }
}

TEST(FirstFailureTest, aServerErrorStaysAStatusEvenAfterSound)
{
    const AudioErrorChain cause = chain(AudioErrorDomain::http, 503);
    EXPECT_EQ(planFirstFailure(cause, true), (FirstFailure{ 503, cause }));
}

}
