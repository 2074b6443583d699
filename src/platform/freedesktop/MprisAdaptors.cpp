// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisAdaptors.h"

#include <cmath>

namespace velarin {

namespace {

// Commands can come before anybody has said who takes them.
template<typename... Values>
void call(const std::function<void(Values...)>& handler, std::type_identity_t<Values>... values)
{
    if (handler)
        handler(values...);
}

}

MprisRootAdaptor::MprisRootAdaptor(MprisModel& model, QObject* parent)
    : QDBusAbstractAdaptor(parent)
    , m_model(model)
{
}

QString MprisRootAdaptor::identity() const
{
    return QStringLiteral("Velarin");
}

QString MprisRootAdaptor::desktopEntry() const
{
    return QStringLiteral("com.brenholt.velarin");
}

QStringList MprisRootAdaptor::supportedUriSchemes() const
{
    return { QStringLiteral("http"), QStringLiteral("https") };
}

QStringList MprisRootAdaptor::supportedMimeTypes() const
{
    return { QStringLiteral("audio/mpeg"), QStringLiteral("audio/aac"), QStringLiteral("audio/aacp"),
        QStringLiteral("audio/mp4"), QStringLiteral("audio/ogg"), QStringLiteral("application/ogg"),
        QStringLiteral("audio/flac"), QStringLiteral("audio/x-mpegurl"), QStringLiteral("audio/x-scpls"),
        QStringLiteral("application/vnd.apple.mpegurl") };
}

void MprisRootAdaptor::Raise()
{
    call(m_model.application.raise);
}

void MprisRootAdaptor::Quit()
{
    QMetaObject::invokeMethod(
        this, [this] { call(m_model.application.quit); }, Qt::QueuedConnection);
}

MprisPlayerAdaptor::MprisPlayerAdaptor(MprisModel& model, QObject* parent)
    : QDBusAbstractAdaptor(parent)
    , m_model(model)
{
}

void MprisPlayerAdaptor::setVolume(double volume)
{
    if (std::isfinite(volume))
        call(m_model.application.setVolume, volume);
}

qlonglong MprisPlayerAdaptor::position() const
{
    return microsecondsOf(m_model.time.at(m_model.clock.continuous()).value_or(0.0));
}

void MprisPlayerAdaptor::setRate(double rate)
{
    if (rate == 0.0)
        Pause();
}

void MprisPlayerAdaptor::Play()
{
    call(m_model.handlers.play);
}

void MprisPlayerAdaptor::Pause()
{
    call(m_model.handlers.pause);
}

void MprisPlayerAdaptor::PlayPause()
{
    call(m_model.handlers.togglePlayPause);
}

void MprisPlayerAdaptor::Stop()
{
    call(m_model.handlers.stop);
}

void MprisPlayerAdaptor::Next()
{
    call(m_model.handlers.next);
}

void MprisPlayerAdaptor::Previous()
{
    call(m_model.handlers.previous);
}

void MprisPlayerAdaptor::Seek(qlonglong Offset)
{
    const SeekPlan plan = planSeek({ .offset = secondsOf(Offset),
        .canSkip = m_model.canSkip,
        .canMove = m_model.shown.canSeek,
        .shown = m_model.time.at(m_model.clock.continuous()),
        .duration = m_model.time.duration });
    switch (plan.way) {
    case SeekPlan::Way::Skip:
        return call(m_model.handlers.skip, plan.seconds);
    case SeekPlan::Way::Move:
        return call(m_model.handlers.changePosition, plan.seconds);
    case SeekPlan::Way::Next:
        return call(m_model.handlers.next);
    }
}

void MprisPlayerAdaptor::SetPosition(const QDBusObjectPath& TrackId, qlonglong Position)
{
    // A stale track id is a caller that has not heard of the new item yet.
    if (m_model.track == TrackId && isWithin(secondsOf(Position), m_model.time.duration))
        call(m_model.handlers.changePosition, secondsOf(Position));
}

void MprisPlayerAdaptor::OpenUri(const QString& Uri)
{
    call(m_model.application.openUri, Uri);
}

}
