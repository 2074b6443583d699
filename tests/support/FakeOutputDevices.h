// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/OutputDevices.h"

namespace velarin::test {

class FakeOutputDevices final : public OutputDevices
{
public:
    void startWatching(std::function<void(const QList<Device>&)> newHandler) override
    {
        changed = std::move(newHandler);
        changed(devices);
    }
    void stopWatching() override { changed = {}; }
    QString selected() const override { return chosen; }
    void select(const QString& id) override { chosen = id; }

    QList<Device> devices{ { QString(), QStringLiteral("Uscita predefinita") },
        { QStringLiteral("headset"), QStringLiteral("Cuffie") } };
    QString chosen;
    std::function<void(const QList<Device>&)> changed;
};

}
