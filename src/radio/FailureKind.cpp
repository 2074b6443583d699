// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/FailureKind.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace velarin {

namespace {

using Kind = PlaybackFailure::Kind;

// Codes of one domain, from first to last, and what they mean.
struct Row
{
    QString domain;
    qint64 firstCode;
    qint64 lastCode;
    Kind kind;
};

constexpr qint64 anyCodeFrom = std::numeric_limits<qint64>::min();
constexpr qint64 anyCodeTo = std::numeric_limits<qint64>::max();

// More codes of GstStreamError (gst/gsterror.h) that say that what arrived cannot be turned into sound.
constexpr qint64 streamDecode = 7;
constexpr qint64 streamDemux = 9;
constexpr qint64 streamFormat = 11;

Row row(const QString& domain, qint64 code, Kind kind)
{
    return { domain, code, code, kind };
}

Row wholeDomain(const QString& domain, Kind kind)
{
    return { domain, anyCodeFrom, anyCodeTo, kind };
}

const std::array<Row, 19>& rows()
{
    using namespace AudioErrorDomain;
    static const std::array<Row, 19> table{ {
        { http, 400, 499, Kind::notFound },
        { http, 500, 599, Kind::unknown },
        row(http, HttpError::malformedHead, Kind::notFound),
        row(http, HttpError::badAddress, Kind::notFound),
        row(http, HttpError::redirectLoop, Kind::unknown),
        wholeDomain(resolve, Kind::network),
        wholeDomain(AudioErrorDomain::connect, Kind::network),
        wholeDomain(tls, Kind::network),
        wholeDomain(reset, Kind::network),
        wholeDomain(closed, Kind::network),
        wholeDomain(timeout, Kind::timeout),
        row(gstStream, GstError::streamTypeNotFound, Kind::unsupported),
        row(gstStream, GstError::streamWrongType, Kind::unsupported),
        row(gstStream, GstError::streamCodecNotFound, Kind::unsupported),
        row(gstStream, streamDecode, Kind::unsupported),
        row(gstStream, streamDemux, Kind::unsupported),
        row(gstStream, streamFormat, Kind::unsupported),
        row(gstCore, GstError::coreMissingPlugin, Kind::unsupported),
        row(gstResource, GstError::resourceNoDevice, Kind::unknown),
    } };
    return table;
}

std::optional<Kind> clearKind(const AudioError& link)
{
    for (const Row& row : rows()) {
        if (row.domain == link.domain && link.code >= row.firstCode && link.code <= row.lastCode)
            return row.kind;
    }
    return std::nullopt;
}

bool isOurDomain(const QString& domain)
{
    return std::any_of(rows().begin(), rows().end(), [&](const Row& row) { return row.domain == domain; });
}

}

bool isTransient(Kind kind)
{
    return kind == Kind::timeout || kind == Kind::network || kind == Kind::unknown;
}

Kind classifyFailure(const AudioErrorChain& error, Kind hint, bool isOnline)
{
    if (!isOnline)
        return Kind::offline;
    QSet<QString> seen;
    // A link of ours without a row of its own is unclear, but it is not nothing.
    bool isUnclear = false;
    for (const AudioError& link : error) {
        const QString text = link.domain + u'#' + QString::number(link.code);
        if (seen.contains(text))
            return hint;
        seen.insert(text);
        if (const auto kind = clearKind(link))
            return *kind;
        isUnclear = isUnclear || isOurDomain(link.domain);
    }
    return isUnclear ? Kind::unknown : hint;
}

QString describe(const AudioErrorChain& error)
{
    if (error.empty())
        return QStringLiteral("none");
    QStringList links;
    for (const AudioError& link : error)
        links.append(QStringLiteral("%1 %2 (%3)").arg(link.domain, QString::number(link.code), link.text));
    return links.join(QStringLiteral(" < "));
}

}
