// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/StableHash.h"

namespace velarin {

qint32 javaHashCode(QStringView text)
{
    quint32 hash = 0;
    for (const QChar unit : text)
        hash = 31 * hash + unit.unicode();
    return static_cast<qint32>(hash);
}

}
