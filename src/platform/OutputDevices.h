// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace velarin {

// The places where sound can come out. Main thread only. The choice is not stored: every start begins with the
// system's default device.
class OutputDevices
{
public:
    struct Device
    {
        // The sound server's own name of the device; empty for "whatever the system's default is".
        QString id;
        // As the sound server describes it to people.
        QString name;
        bool operator==(const Device&) const = default;
    };

    virtual ~OutputDevices() = default;

    // Calls `changed` on the main thread with the devices present, in a later turn and then at each change. Watching
    // begins with this call and ends with stopWatching(), so that nothing runs while no menu is open.
    virtual void startWatching(std::function<void(const QList<Device>&)> changed) = 0;
    virtual void stopWatching() = 0;

    // The id of the chosen device; empty at start.
    [[nodiscard]] virtual QString selected() const = 0;
    // Moves the sound of all players there, without a break in what is playing.
    virtual void select(const QString& id) = 0;
};

}
