// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/ItalianLocale.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <array>

namespace velarin {

QLocale interfaceLocale()
{
    return interfaceLocale(QLocale::system());
}

QLocale interfaceLocale(const QLocale& system)
{
    if (system.language() == QLocale::Italian)
        return system;
    return { QLocale::Italian, QLocale::Italy };
}

namespace {

// Whatever else a directory calls a code must not reach ICU, which would read keywords and scripts out of it.
bool isRegionCode(const QString& code)
{
    const auto isLetter = [](QChar unit) { return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z'); };
    return code.size() == 2 && std::all_of(code.begin(), code.end(), isLetter);
}

}

QString regionName(const QString& code)
{
    if (!isRegionCode(code))
        return {};
    const QByteArray locale = "und_" + code.toLatin1();
    std::array<UChar, 128> name{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        uloc_getDisplayCountry(locale.constData(), "it", name.data(), static_cast<int32_t>(name.size()), &status);
    // For a code that it does not know, ICU answers with the code and this warning.
    if (U_FAILURE(status) || status == U_USING_DEFAULT_WARNING)
        return {};
    return QString::fromUtf16(name.data(), length);
}

}
