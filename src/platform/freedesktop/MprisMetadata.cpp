// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/MprisMetadata.h"

#include "platform/freedesktop/MprisTime.h"

#include <QStringList>

namespace velarin {

namespace {

void insertText(QVariantMap& map, const QString& key, const QString& text)
{
    if (!text.isEmpty())
        map.insert(key, text);
}

void insertList(QVariantMap& map, const QString& key, const QString& text)
{
    if (!text.isEmpty())
        map.insert(key, QStringList{ text });
}

}

QDBusObjectPath trackPath(const QString& contentId)
{
    const QString name = contentId.isEmpty() ? QStringLiteral("_") : QString::fromLatin1(contentId.toUtf8().toHex());
    return QDBusObjectPath(QStringLiteral("/com/brenholt/velarin/track/") + name);
}

QDBusObjectPath noTrackPath()
{
    return QDBusObjectPath(QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack"));
}

QVariantMap mprisMetadata(const std::optional<NowPlaying>& nowPlaying, const QUrl& artwork)
{
    const QString trackKey = QStringLiteral("mpris:trackid");
    if (!nowPlaying)
        return { { trackKey, QVariant::fromValue(noTrackPath()) } };
    QVariantMap map{ { trackKey, QVariant::fromValue(trackPath(nowPlaying->contentId)) } };
    insertText(map, QStringLiteral("xesam:title"), nowPlaying->title);
    insertList(map, QStringLiteral("xesam:artist"), nowPlaying->artist);
    insertText(map, QStringLiteral("xesam:album"), nowPlaying->album);
    insertList(map, QStringLiteral("xesam:genre"), nowPlaying->genre);
    insertText(map, QStringLiteral("mpris:artUrl"), artwork.toString(QUrl::FullyEncoded));
    if (nowPlaying->duration > 0.0)
        map.insert(QStringLiteral("mpris:length"), QVariant::fromValue(microsecondsOf(*nowPlaying->duration)));
    return map;
}

}
