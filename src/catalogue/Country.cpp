// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/Country.h"

#include "base/ItalianLocale.h"
#include "base/TextFolding.h"

#include <algorithm>

namespace velarin {

namespace {

// From "A" to U+1F1E6 REGIONAL INDICATOR SYMBOL LETTER A.
constexpr char32_t indicatorShift = 127'397;

bool isCapitalLetter(QChar unit)
{
    return unit >= u'A' && unit <= u'Z';
}

}

std::optional<QString> Country::flag(const QString& code)
{
    const QString upper = code.toUpper();
    if (upper.size() != 2 || !std::all_of(upper.begin(), upper.end(), isCapitalLetter))
        return std::nullopt;
    const char32_t indicators[] = { upper[0].unicode() + indicatorShift, upper[1].unicode() + indicatorShift };
    return QString::fromUcs4(indicators, 2);
}

QString Country::displayName(const QString& code)
{
    const QString upper = code.toUpper();
    const QString name = regionName(upper);
    return name.isEmpty() ? upper : withFirstCharacterUpperCased(name);
}

}
