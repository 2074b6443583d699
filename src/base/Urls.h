// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace velarin {

// An address as people write it: trimmed, and accepted as it stands if it is a valid URL with a scheme; otherwise
// percent-encoded with the characters that RFC 3986 allows in a query, which rescues blanks and accented letters.
// Absent if that is no URL with a scheme either.
[[nodiscard]] std::optional<QUrl> urlFromText(QStringView text);

// Whether the program may open the address: http or https, with a host.
[[nodiscard]] bool isWebAddress(const QUrl& url);

}
