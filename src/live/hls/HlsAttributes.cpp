// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsAttributes.h"

#include <cmath>

namespace velarin::live {

namespace {

// The end of the value that begins at `at`: the next comma outside quotes, or the end of the list.
qsizetype valueEnd(QByteArrayView list, qsizetype at)
{
    bool quoted = false;
    for (; at < list.size(); ++at) {
        if (list[at] == '"')
            quoted = !quoted;
        else if (list[at] == ',' && !quoted)
            break;
    }
    return at;
}

QByteArrayView withoutQuotes(QByteArrayView value)
{
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        return value.sliced(1, value.size() - 2);
    return value;
}

}

std::optional<QByteArray> hlsAttribute(QByteArrayView list, QByteArrayView name)
{
    qsizetype at = 0;
    while (at < list.size()) {
        const qsizetype equals = list.indexOf('=', at);
        if (equals < 0)
            break;
        const QByteArrayView found = list.sliced(at, equals - at).trimmed();
        const qsizetype end = valueEnd(list, equals + 1);
        if (found == name)
            return withoutQuotes(list.sliced(equals + 1, end - equals - 1).trimmed()).toByteArray();
        at = end + 1;
    }
    return std::nullopt;
}

std::optional<double> hlsNumber(QByteArrayView text)
{
    bool valid = false;
    const double value = text.trimmed().toByteArray().toDouble(&valid);
    if (!valid || !std::isfinite(value) || value < 0.0)
        return std::nullopt;
    return value;
}

std::optional<qint64> hlsInteger(QByteArrayView text)
{
    constexpr qint64 greatest = qint64(1) << 62;
    bool valid = false;
    const qint64 value = text.trimmed().toByteArray().toLongLong(&valid);
    if (!valid || value < 0 || value > greatest)
        return std::nullopt;
    return value;
}

std::optional<QByteArray> hlsHexadecimal128(QByteArrayView text)
{
    constexpr qsizetype digits = 32;
    const QByteArray lower = text.trimmed().toByteArray().toLower();
    if (!lower.startsWith("0x") || lower.size() < 3 || lower.size() > digits + 2)
        return std::nullopt;
    const QByteArray padded = lower.sliced(2).rightJustified(digits, '0');
    const QByteArray bytes = QByteArray::fromHex(padded);
    // fromHex() leaves out what is no digit.
    if (bytes.toHex() != padded)
        return std::nullopt;
    return bytes;
}

}
