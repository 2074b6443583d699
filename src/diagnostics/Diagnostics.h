// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"
#include "diagnostics/DiagnosticEvent.h"

#include <QList>
#include <QObject>
#include <QProperty>

#include <functional>

namespace velarin {

class Clock;
class Defaults;
class Files;

// Settings key: true while something is the active source, so that it survives a crash as true.
inline const QString wasPlayingKey = QStringLiteral("diag_was_playing");

// What a reader of the report must know of the program and the machine.
struct ApplicationInfo
{
    // "?" where the program does not know.
    QString version{ QStringLiteral("?") };
    QString build{ QStringLiteral("?") };
    // The distribution's own name, "Debian GNU/Linux 12 (bookworm)".
    QString systemVersion;
};

// The flight recorder: the last 400 events about sound, network, alarms and media keys, in plain Italian, kept on disk
// so that a user can send them in. It also notices that the former run ended while something was sounding. Main thread
// only; nothing here fails or waits.
class Diagnostics : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<velarin::DiagnosticEvent> events READ events NOTIFY eventsChanged BINDABLE bindableEvents)

public:
    // The file is read here, whole; what does not decode counts as empty and is kept beside.
    Diagnostics(QString filePath, ApplicationInfo info, Files& files, Defaults& defaults, Clock& clock);

    // Adds an event and saves a second after the last one of a burst.
    void append(DiagnosticCategory category, const QString& message);
    // Oldest first.
    [[nodiscard]] QList<DiagnosticEvent> events() const { return m_events; }
    [[nodiscard]] QBindable<QList<DiagnosticEvent>> bindableEvents() { return &m_events; }
    // Does not wait for the end of a burst: at an orderly end nothing of the log is lost.
    void saveNow();
    // Empties the list, and the file a second later.
    void clear();

    // Once, first thing at launch: the start entry, and the crash entry if the former run ended while sounding.
    void noteLaunch();
    // Whether something is the active source now. `describe` is asked every 300 seconds for the line to log.
    void setPlaying(bool playing, std::function<QString()> describe);
    void cancelHeartbeat();

    // The whole log as text to be sent, made anew at each call.
    [[nodiscard]] QString report() const;

Q_SIGNALS:
    void eventsChanged();

private:
    void readFile();
    void scheduleSave();
    void armHeartbeat(std::function<QString()> describe);

    const QString m_filePath;
    const ApplicationInfo m_info;
    Files& m_files;
    Defaults& m_defaults;
    Clock& m_clock;
    // The write that waits for the end of a burst.
    Task m_saveTask;
    Task m_heartbeat;
    Q_OBJECT_BINDABLE_PROPERTY(Diagnostics, QList<DiagnosticEvent>, m_events, &Diagnostics::eventsChanged)
};

}
