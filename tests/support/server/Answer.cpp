// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/Answer.h"

namespace velarin::test {

QByteArray ServerRequest::header(const QByteArray& name) const
{
    for (const auto& [key, value] : headers)
        if (key == name)
            return value;
    return {};
}

QByteArray ServerRequest::option(const QByteArray& name) const
{
    for (const QByteArray& pair : target.mid(path.size() + 1).split('&'))
        if (pair.startsWith(name + '='))
            return pair.mid(name.size() + 1);
    return {};
}

}
