// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

namespace velarin {

enum class Continent
{
    europe,
    northAmerica,
    southAmerica,
    asia,
    africa,
    oceania,
};

// The stored text, "northAmerica".
[[nodiscard]] QString toText(Continent continent);
// The Italian name.
[[nodiscard]] QString displayName(Continent continent);

// The countries that the program offers, grouped and in the order in which they are shown.
namespace WorldCatalog {

struct Group
{
    Continent continent{ Continent::europe };
    // ISO 3166 alpha-2, upper case.
    QStringList codes;
};

// One group a continent, in the order of Continent.
[[nodiscard]] const std::array<Group, 6>& groups();
// The codes of all groups, one after the other: the order of the list of countries.
[[nodiscard]] const QStringList& codes();
// A code in no group counts as European.
[[nodiscard]] Continent continentOf(const QString& code);

}

}
