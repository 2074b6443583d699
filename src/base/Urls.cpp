// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Urls.h"

#include <algorithm>

namespace velarin {

namespace {

// RFC 3986, section 3.4: query = *( pchar / "/" / "?" ), with unreserved and sub-delims in pchar. Letters and digits
// are never encoded by toPercentEncoding. The percent sign is not among them: a text that is no URL as it stands is not
// taken for an encoded one.
constexpr char queryCharacters[] = "-._~!$&'()*+,;=:@/?";

bool isPlainUrlText(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar unit) {
        const char16_t value = unit.unicode();
        return value > 0x20 && value < 0x7f && value != u'"' && value != u'<' && value != u'>' && value != u'\\' &&
               value != u'^' && value != u'`' && value != u'{' && value != u'|' && value != u'}';
    });
}

std::optional<QUrl> urlWithScheme(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty())
        return std::nullopt;
    return url;
}

}

std::optional<QUrl> urlFromText(QStringView text)
{
    const QString address = text.trimmed().toString();
    // A lone surrogate has no encoding.
    if (address.isEmpty() || !address.isValidUtf16())
        return std::nullopt;
    if (isPlainUrlText(address)) {
        if (auto url = urlWithScheme(address))
            return url;
    }
    return urlWithScheme(QString::fromLatin1(QUrl::toPercentEncoding(address, queryCharacters)));
}

bool isWebAddress(const QUrl& url)
{
    const QString scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() && (scheme == u"http" || scheme == u"https");
}

}
