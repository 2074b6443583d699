// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/EndPlan.h"

namespace velarin::live {

namespace {

std::optional<int> statusOf(const AudioErrorChain& cause)
{
    for (const AudioError& error : cause) {
        if (error.domain == AudioErrorDomain::http && error.code >= 100 && error.code <= 599)
            return static_cast<int>(error.code);
    }
    return std::nullopt;
}

}

FirstFailure planFirstFailure(const AudioErrorChain& cause, bool soundedOfLate)
{
    const std::optional<int> status = statusOf(cause);
    if (!status)
        return FirstFailure{ .httpStatus = std::nullopt, .cause = cause };
    if (soundedOfLate && *status >= 400 && *status <= 499) {
        const QString text = QStringLiteral("source away: answered %1").arg(*status);
        return FirstFailure{ .httpStatus = std::nullopt, .cause = { { AudioErrorDomain::closed, 0, text } } };
    }
    return FirstFailure{ .httpStatus = status, .cause = cause };
}

Outcome planOutcome(const OutageFacts& facts)
{
    const bool isSilent = facts.cause.empty();
    if (isSilent || (facts.mending == Mending::Yes && facts.dryFor < dryTimeToTheEnd))
        return Outcome::Wait;
    return facts.cause.front().domain == AudioErrorDomain::closed ? Outcome::PlayedToEnd : Outcome::FailedToPlayToEnd;
}

}
