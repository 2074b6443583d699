// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "catalogue/ThemeMode.h"

#include <QFlags>
#include <QObject>

#include <functional>

namespace velarin {

class AudioLevel;
class Defaults;
class Diagnostics;
class LoginItem;
class StationRepository;

// How a notification is shown while the program is in front.
enum class PresentationOption
{
    sound = 1 << 1,
    list = 1 << 3,
    banner = 1 << 4,
};
Q_DECLARE_FLAGS(PresentationOptions, PresentationOption)

// The life of the program: what happens at its start, at its end and when a notification is answered. Main thread only.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    // Everything outlives the delegate.
    struct Services
    {
        Diagnostics& diagnostics;
        LoginItem& loginItem;
        Defaults& defaults;
        StationRepository& stations;
        AudioLevel& audioLevel;
        // Gives every window, also those to come, the appearance.
        std::function<void(ThemeMode)> applyTheme;
        // Brings the program to the front.
        std::function<void()> activate;
    };
    using RingFromUser = std::function<void(const QString& alarmId)>;

    explicit AppDelegate(Services services);

    // Once, before the first window shows: the log, the login item, the appearance, the volume, then the loading, which
    // goes on while the interface comes up.
    void applicationDidFinishLaunching();
    // Closing the window neither stops the sound nor ends the program.
    [[nodiscard]] bool applicationShouldTerminateAfterLastWindowClosed() const { return false; }
    // At every orderly quit, so that the next start does not take it for a crash.
    void applicationWillTerminate();

    // A notification fires while the program is in front: the alarm rings in a later turn, `completion` is called at
    // once.
    void userNotificationWillPresent(const QString& identifier,
        const std::function<void(PresentationOptions)>& completion, const RingFromUser& ringFromUser);
    // The user acted on a notification. In a later turn the program comes to the front and, with the stations there,
    // rings; a notification of somebody else does nothing. `completion` is called at the end in every case.
    void userNotificationDidReceive(
        const QString& identifier, const std::function<void()>& completion, const RingFromUser& ringFromUser);

private:
    void restoreLoginItemIfNeeded();
    void answerAlarm(const QString& alarmId, const std::function<void()>& completion, const RingFromUser& ringFromUser);

    const Services m_services;
};

}

Q_DECLARE_OPERATORS_FOR_FLAGS(velarin::PresentationOptions)
