// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisState.h"

namespace velarin {

QString mprisStatus(NowPlayingState state)
{
    switch (state) {
    case NowPlayingState::Playing:
        return QStringLiteral("Playing");
    case NowPlayingState::Paused:
        return QStringLiteral("Paused");
    case NowPlayingState::Stopped:
        return QStringLiteral("Stopped");
    }
    Q_UNREACHABLE();
}

QVariantMap changedProperties(const MprisState& told, const MprisState& now)
{
    QVariantMap changed;
    auto compare = [&](const QString& name, const auto& member) {
        if (told.*member != now.*member)
            changed.insert(name, QVariant::fromValue(now.*member));
    };
    compare(QStringLiteral("PlaybackStatus"), &MprisState::playbackStatus);
    compare(QStringLiteral("Metadata"), &MprisState::metadata);
    compare(QStringLiteral("Volume"), &MprisState::volume);
    compare(QStringLiteral("CanGoNext"), &MprisState::canGoNext);
    compare(QStringLiteral("CanGoPrevious"), &MprisState::canGoPrevious);
    compare(QStringLiteral("CanSeek"), &MprisState::canSeek);
    return changed;
}

}
