// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/WorldCatalog.h"

#include <QHash>

namespace velarin {

namespace {

QStringList split(const QString& codes)
{
    return codes.split(u' ');
}

QStringList allCodes()
{
    QStringList codes;
    for (const WorldCatalog::Group& group : WorldCatalog::groups())
        codes += group.codes;
    return codes;
}

QHash<QString, Continent> continentByCode()
{
    QHash<QString, Continent> continents;
    for (const WorldCatalog::Group& group : WorldCatalog::groups()) {
        for (const QString& code : group.codes)
            continents.insert(code, group.continent);
    }
    return continents;
}

}

QString toText(Continent continent)
{
    switch (continent) {
    case Continent::europe:
        return QStringLiteral("europe");
    case Continent::northAmerica:
        return QStringLiteral("northAmerica");
    case Continent::southAmerica:
        return QStringLiteral("southAmerica");
    case Continent::asia:
        return QStringLiteral("asia");
    case Continent::africa:
        return QStringLiteral("africa");
    case Continent::oceania:
        return QStringLiteral("oceania");
    }
    Q_UNREACHABLE();
}

QString displayName(Continent continent)
{
    switch (continent) {
    case Continent::europe:
        return QStringLiteral("Europa");
    case Continent::northAmerica:
        return QStringLiteral("Nord America");
    case Continent::southAmerica:
        return QStringLiteral("Sud America");
    case Continent::asia:
        return QStringLiteral("Asia");
    case Continent::africa:
        return QStringLiteral("Africa");
    case Continent::oceania:
        return QStringLiteral("Oceania");
    }
    Q_UNREACHABLE();
}

const std::array<WorldCatalog::Group, 6>& WorldCatalog::groups()
{
    static const std::array<Group, 6> table{
        Group{ Continent::europe,
            split(QStringLiteral("IT DE RU FR GB GR NL ES PL RO TR CH BE RS HU AT UA PT BG CZ HR SE IE DK FI SK BA SI "
                                 "NO LV EE LT BY MD MK CY ME AL LU IS XK VA FO AD MT MC IM GI SM LI")) },
        Group{ Continent::northAmerica,
            split(QStringLiteral("US MX CA DO GT SV CR HN PR JM HT PA NI TT CU CW LC BB BQ GP VC BM BS KY AW MQ VI DM "
                                 "GD GL AG AI KN")) },
        Group{ Continent::southAmerica, split(QStringLiteral("BR AR CO CL PE VE UY EC BO PY SR GY GF")) },
        Group{ Continent::asia,
            split(QStringLiteral("CN IN PH AE ID JP TW IL SA TH AF KR HK MY LK LB PK SG VN KZ AZ GE IR SY MO NP IQ JO "
                                 "BD QA BH AM YE KP KW PS UZ KH OM MN KG MV TM MM BN")) },
        Group{ Continent::africa,
            split(QStringLiteral("UG ZA GH NG KE MA TN DZ EG RE ET SN TZ CV AO CD MG MU NA RW ML LY CI MW BF MZ TG ZM "
                                 "KM ZW BW CM GN BJ ER SC SD")) },
        Group{ Continent::oceania, split(QStringLiteral("AU NZ AS PF NC FJ PG VU GU")) },
    };
    return table;
}

const QStringList& WorldCatalog::codes()
{
    static const QStringList list = allCodes();
    return list;
}

Continent WorldCatalog::continentOf(const QString& code)
{
    static const QHash<QString, Continent> continents = continentByCode();
    return continents.value(code, Continent::europe);
}

}
