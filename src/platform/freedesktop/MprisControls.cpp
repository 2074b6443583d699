// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisControls.h"

#include "platform/freedesktop/FreedesktopLog.h"
#include "platform/freedesktop/MprisAdaptors.h"
#include "platform/freedesktop/MprisMetadata.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace velarin {

namespace {

const QString serviceName = QStringLiteral("org.mpris.MediaPlayer2.velarin");
const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");

}

MprisControls::MprisControls(
    const QDBusConnection& sessionBus, Clock& clock, Executor& executor, const QString& artworkFolder)
    : m_bus(sessionBus)
    , m_model{ .clock = clock, .handlers = {}, .application = {}, .shown = {}, .time = {}, .track = {} }
    , m_artwork(executor, artworkFolder, [this] { showMetadata(); })
    , m_object(std::make_unique<QObject>())
{
    new MprisRootAdaptor(m_model, m_object.get());
    m_player = new MprisPlayerAdaptor(m_model, m_object.get());
    m_model.shown.metadata = mprisMetadata({}, {});
    m_told = m_model.shown;
    enterBus();
}

MprisControls::~MprisControls()
{
    if (!m_isOnBus)
        return;
    m_bus.unregisterService(serviceName);
    m_bus.unregisterObject(objectPath);
}

QString MprisControls::userArtworkFolder()
{
    const QString runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return runtimeFolder.isEmpty() ? QString() : runtimeFolder + QStringLiteral("/velarin");
}

void MprisControls::enterBus()
{
    if (!m_bus.isConnected())
        return;
    // The object first, so that whoever sees the name finds it.
    m_bus.registerObject(objectPath, m_object.get(), QDBusConnection::ExportAdaptors);
    m_isOnBus = m_bus.registerService(serviceName);
    if (m_isOnBus)
        return;
    qCWarning(desktopLog) << "another program has the name of the media controls";
    m_bus.unregisterObject(objectPath);
}

void MprisControls::setHandlers(Handlers handlers)
{
    m_model.handlers = std::move(handlers);
}

void MprisControls::setApplicationHandlers(ApplicationHandlers handlers)
{
    m_model.application = std::move(handlers);
}

void MprisControls::setEnabled(MediaCommand command, bool enabled)
{
    switch (command) {
    case MediaCommand::SkipForward:
    case MediaCommand::SkipBackward:
        // No property of its own: it only decides how a relative seek is carried out.
        m_model.canSkip = enabled;
        return;
    case MediaCommand::ChangePosition:
        m_model.shown.canSeek = enabled;
        break;
    case MediaCommand::Next:
        m_model.shown.canGoNext = enabled;
        break;
    case MediaCommand::Previous:
        m_model.shown.canGoPrevious = enabled;
        break;
    }
    tellSoon();
}

void MprisControls::publish(const std::optional<NowPlaying>& nowPlaying, NowPlayingState state)
{
    showTime(nowPlaying);
    m_nowPlaying = nowPlaying;
    m_artwork.show(nowPlaying ? nowPlaying->artwork : QImage());
    m_model.shown.playbackStatus = mprisStatus(state);
    showMetadata();
}

void MprisControls::showTime(const std::optional<NowPlaying>& nowPlaying)
{
    const auto now = m_model.clock.continuous();
    const auto track = nowPlaying ? std::optional(trackPath(nowPlaying->contentId)) : std::nullopt;
    const auto shown = track == m_model.track ? m_model.time.at(now) : std::nullopt;
    const auto elapsed = nowPlaying ? nowPlaying->elapsed : std::nullopt;
    m_hasJumped = m_hasJumped || isJump(shown, elapsed);
    m_model.track = track;
    m_model.time = { .elapsed = elapsed,
        .duration = nowPlaying ? nowPlaying->duration : std::nullopt,
        .rate = nowPlaying ? nowPlaying->rate : 0.0,
        .publishedAt = now };
}

void MprisControls::showMetadata()
{
    m_model.shown.metadata = mprisMetadata(m_nowPlaying, m_artwork.address());
    tellSoon();
}

void MprisControls::publishVolume(double volume)
{
    m_model.shown.volume = volume;
    tellSoon();
}

void MprisControls::tellSoon()
{
    if (!m_isOnBus || std::exchange(m_isTelling, true))
        return;
    QMetaObject::invokeMethod(
        m_object.get(), [this] { tell(); }, Qt::QueuedConnection);
}

void MprisControls::tell()
{
    m_isTelling = false;
    const QVariantMap changed = changedProperties(m_told, m_model.shown);
    m_told = m_model.shown;
    if (!changed.isEmpty()) {
        auto signal = QDBusMessage::createSignal(
            objectPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
        signal << playerInterface << changed << QStringList();
        m_bus.send(signal);
    }
    if (std::exchange(m_hasJumped, false))
        Q_EMIT m_player->Seeked(m_player->position());
}

}
