// SPDX-License-Identifier: GPL-3.0-or-later
#include "diagnostics/Diagnostics.h"

#include "diagnostics/DiagnosticEventText.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/Files.h"

#include <QStringList>

namespace velarin {

namespace {

constexpr qint64 maxFileBytes = 8LL * 1024 * 1024;
constexpr qsizetype maxEvents = 400;
constexpr std::chrono::seconds saveDelay{ 1 };
constexpr std::chrono::seconds heartbeatInterval{ 300 };

}

Diagnostics::Diagnostics(QString filePath, ApplicationInfo info, Files& files, Defaults& defaults, Clock& clock)
    : m_filePath(std::move(filePath))
    , m_info(std::move(info))
    , m_files(files)
    , m_defaults(defaults)
    , m_clock(clock)
{
    readFile();
}

void Diagnostics::readFile()
{
    if (!m_files.exists(m_filePath))
        return;
    const auto bytes = m_files.readNow(m_filePath, maxFileBytes);
    if (auto stored = decodeDiagnostics(bytes.value_or(QByteArray())))
        m_events = *std::move(stored);
    else
        m_files.keepUnreadable(m_filePath);
}

void Diagnostics::append(DiagnosticCategory category, const QString& message)
{
    QList<DiagnosticEvent> events = m_events;
    events.append({ QUuid::createUuid(), m_clock.now(), category, message });
    if (events.size() > maxEvents)
        events.remove(0, events.size() - maxEvents);
    m_events = events;
    scheduleSave();
}

void Diagnostics::clear()
{
    m_events = QList<DiagnosticEvent>();
    scheduleSave();
}

void Diagnostics::scheduleSave()
{
    m_saveTask = m_clock.after(saveDelay, [this] { saveNow(); });
}

void Diagnostics::saveNow()
{
    m_saveTask.cancel();
    // The writer gets a list of its own and encodes it off this thread.
    m_files.write(m_filePath, [events = this->events()] { return encodeDiagnostics(events); });
}

void Diagnostics::noteLaunch()
{
    append(DiagnosticCategory::app,
        QStringLiteral("Avvio · versione %1 (%2) · macOS %3").arg(m_info.version, m_info.build, m_info.systemVersion));
    if (m_defaults.boolean(wasPlayingKey).value_or(false)) {
        append(DiagnosticCategory::error,
            QStringLiteral("La sessione precedente è finita mentre qualcosa suonava: l'app è stata chiusa di forza o "
                           "si è bloccata."));
    }
    m_defaults.setBoolean(wasPlayingKey, false);
}

void Diagnostics::setPlaying(bool playing, std::function<QString()> describe)
{
    m_defaults.setBoolean(wasPlayingKey, playing);
    cancelHeartbeat();
    if (playing)
        armHeartbeat(std::move(describe));
}

void Diagnostics::cancelHeartbeat()
{
    m_heartbeat.cancel();
}

void Diagnostics::armHeartbeat(std::function<QString()> describe)
{
    m_heartbeat = m_clock.after(heartbeatInterval, [this, describe = std::move(describe)] {
        // The next beat is armed first, so that whoever hears of this one can still cancel it.
        armHeartbeat(describe);
        append(DiagnosticCategory::heartbeat, describe());
    });
}

QString Diagnostics::report() const
{
    QStringList lines{
        QStringLiteral("Velarin %1 (%2)").arg(m_info.version, m_info.build),
        QStringLiteral("Mac · macOS %1").arg(m_info.systemVersion),
        QString(),
    };
    for (const DiagnosticEvent& event : events()) {
        const QString date = event.date.toLocalTime().toString(QStringLiteral("dd/MM HH:mm:ss"));
        lines.append(QStringLiteral("%1  [%2] %3").arg(date, label(event.category), event.message));
    }
    return lines.join(u'\n');
}

}
