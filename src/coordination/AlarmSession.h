// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace velarin {

// A ringing alarm as the engines see it: whatever the user does to an engine ends it, unless the alarm does it itself.
class AlarmSession
{
public:
    virtual ~AlarmSession() = default;

    // The alarm is just starting an engine; the engine must not end it.
    [[nodiscard]] virtual bool isStartingOwnAudio() const = 0;
    // Does nothing while no alarm rings. The reason goes into the log.
    virtual void endSession(const QString& reason) = 0;
};

}
