// SPDX-License-Identifier: GPL-3.0-or-later
#include "coordination/PlaybackCoordinator.h"

#include "coordination/PlaybackEngine.h"
#include "diagnostics/Diagnostics.h"
#include "platform/Defaults.h"
#include "platform/MediaControls.h"

#include <QLoggingCategory>
#include <QPointer>

namespace velarin {

namespace {

Q_LOGGING_CATEGORY(coordinatorLog, "com.brenholt.velarin.coordinator", QtInfoMsg)

std::size_t seat(PlaybackCoordinator::Source source)
{
    return static_cast<std::size_t>(source);
}

}

PlaybackCoordinator::PlaybackCoordinator(MediaControls& controls, Diagnostics& diagnostics, Defaults& defaults)
    : m_controls(controls)
    , m_diagnostics(diagnostics)
    , m_defaults(defaults)
{
}

void PlaybackCoordinator::attach(Source source, PlaybackEngine& engine)
{
    Q_ASSERT(source != Source::none);
    m_engines[seat(source)] = &engine;
}

void PlaybackCoordinator::setResumeLast(std::function<void()> resumeLast)
{
    m_resumeLast = std::move(resumeLast);
}

PlaybackEngine* PlaybackCoordinator::engine(Source source) const
{
    return m_engines[seat(source)];
}

void PlaybackCoordinator::resumeLast() const
{
    if (m_resumeLast)
        m_resumeLast();
}

void PlaybackCoordinator::activate(Source source)
{
    if (source == m_active)
        return;
    qCInfo(coordinatorLog).noquote() << "active source:" << toText(m_active) << "→" << toText(source);
    if (PlaybackEngine* former = activeEngine())
        former->pause();
    m_active = source;
    refreshCommands();
    m_diagnostics.setPlaying(source != Source::none,
        [coordinator = QPointer(this)] { return coordinator ? coordinator->heartbeatLine() : QString(); });
}

void PlaybackCoordinator::resign(Source source)
{
    if (source != m_active)
        return;
    m_active = Source::none;
    refreshCommands();
    m_defaults.setBoolean(wasPlayingKey, false);
    m_diagnostics.cancelHeartbeat();
}

QString PlaybackCoordinator::heartbeatLine() const
{
    const PlaybackEngine* sounding = activeEngine();
    return sounding ? sounding->heartbeatText() : QStringLiteral("Niente in riproduzione");
}

QString toText(PlaybackCoordinator::Source source)
{
    switch (source) {
    case PlaybackCoordinator::Source::none:
        return QStringLiteral("none");
    case PlaybackCoordinator::Source::radio:
        return QStringLiteral("radio");
    case PlaybackCoordinator::Source::podcast:
        return QStringLiteral("podcast");
    case PlaybackCoordinator::Source::music:
        return QStringLiteral("music");
    }
    Q_UNREACHABLE();
}

}
