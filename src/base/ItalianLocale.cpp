// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/ItalianLocale.h"

#include <unicode/uloc.h>

#include <array>

namespace velarin {

QLocale interfaceLocale()
{
    const QLocale system = QLocale::system();
    if (system.language() == QLocale::Italian)
        return system;
    return { QLocale::Italian, QLocale::Italy };
}

QString regionName(const QString& code)
{
    const QByteArray locale = "und_" + code.toUtf8();
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
