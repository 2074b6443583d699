// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace velarin {

// One entry of the list of countries.
struct Country
{
    // ISO 3166 alpha-2, upper case.
    QString code;
    QString name;
    qint64 stationCount{ 0 };

    bool operator==(const Country&) const = default;

    // The two regional indicators that are drawn as a flag; absent unless the code is two letters from A to Z.
    [[nodiscard]] static std::optional<QString> flag(const QString& code);
    // The Italian name, or the upper-case code where there is none.
    [[nodiscard]] static QString displayName(const QString& code);
};

}
