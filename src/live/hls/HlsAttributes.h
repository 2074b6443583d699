// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace velarin::live {

// The value of one attribute of an attribute list ("BANDWIDTH=128000,CODECS=\"mp4a.40.2\"", RFC 8216, section 4.2), as
// it stands, without the quotes of a quoted string; absent if the list does not have it. Blanks around names and commas
// inside quotes are borne.
[[nodiscard]] std::optional<QByteArray> hlsAttribute(QByteArrayView list, QByteArrayView name);

// A decimal number, not negative and finite, with nothing behind it but blanks.
[[nodiscard]] std::optional<double> hlsNumber(QByteArrayView text);
// A decimal integer from 0 to 2^62, with nothing behind it but blanks.
[[nodiscard]] std::optional<qint64> hlsInteger(QByteArrayView text);
// "0x" and 1 to 32 hexadecimal digits, as 16 bytes, filled up with zeros in front.
[[nodiscard]] std::optional<QByteArray> hlsHexadecimal128(QByteArrayView text);

}
