// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/freedesktop/InstanceLock.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace velarin {

// One run a user: the name com.brenholt.velarin on the session bus, and a lock file beneath it, so that a run without a
// bus (or on another one) keeps off the same files too. Main thread only.
//
// claim() is called once, before anything of the user's is read:
// 1. The object /com/brenholt/velarin is registered, so that a call that comes right after the name finds it.
// 2. The name is asked for, without queueing.
// 3. Who has it takes the lock, and is the first. A former run that has given up the name and not ended yet is waited
//    for, two seconds at most.
// 4. Who has not hands its wish to the owner (org.freedesktop.Application, Desktop Entry Specification, "D-Bus
//    Activation"), waits two seconds at most for the answer, and is the second: it ends with exit code 0.
// Without a bus the lock alone decides, at once, and nobody is raised.
class SingleInstance final : public QObject
{
    Q_OBJECT

public:
    enum class Outcome
    {
        First,
        Second,
    };

    struct Handlers
    {
        // Show the window. The token is the launcher's permission to take the focus; it may be empty.
        std::function<void(const QString& token)> activated;
        // The same, with addresses to play. Any texts that a caller sent; the receiver checks them.
        std::function<void(const QStringList& addresses, const QString& token)> opened;
    };

    SingleInstance(const QDBusConnection& sessionBus, const QString& lockPath, Handlers handlers);

    // `addresses` and `token` are what this start was asked for; they go to the first run if this one is the second.
    [[nodiscard]] Outcome claim(const QStringList& addresses, const QString& token);

    // The launcher's token from the environment: XDG_ACTIVATION_TOKEN, else DESKTOP_STARTUP_ID.
    [[nodiscard]] static QString tokenFromEnvironment();

private:
    [[nodiscard]] bool ownsName();
    // False if the first run did not answer.
    [[nodiscard]] bool handOver(const QStringList& addresses, const QString& token);
    [[nodiscard]] Outcome lock(std::chrono::milliseconds patience);

    QDBusConnection m_bus;
    InstanceLock m_lock;
};

}
