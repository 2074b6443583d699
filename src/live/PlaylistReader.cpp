// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/PlaylistReader.h"

#include "base/Urls.h"
#include "live/IcyTitle.h"

#include <QMap>
#include <QStringList>

#include <algorithm>

namespace velarin::live {
namespace {

const QString plsHeader = QStringLiteral("[playlist]");
const QString fileKey = QStringLiteral("file");

QStringList linesOf(QByteArrayView bytes)
{
    QString text = textOfStreamBytes(bytes.first(std::min(bytes.size(), playlistByteLimit)));
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    text.replace(u'\r', u'\n');
    QStringList lines;
    for (const QString& line : text.split(u'\n'))
        if (const QString trimmed = line.trimmed(); !trimmed.isEmpty())
            lines.append(trimmed);
    return lines;
}

// The entries of a pls list, "File2=http://...", in the order of their numbers.
QMap<int, QString> numberedEntries(const QStringList& lines)
{
    QMap<int, QString> entries;
    for (const QString& line : lines) {
        const qsizetype equals = line.indexOf(u'=');
        if (equals < 0 || !line.startsWith(fileKey, Qt::CaseInsensitive))
            continue;
        bool isNumber = false;
        const int number = line.sliced(fileKey.size(), equals - fileKey.size()).trimmed().toInt(&isNumber);
        const QString entry = line.sliced(equals + 1).trimmed();
        if (isNumber && !entry.isEmpty() && !entries.contains(number))
            entries.insert(number, entry);
    }
    return entries;
}

QStringList plainEntries(const QStringList& lines)
{
    QStringList entries;
    for (const QString& line : lines)
        if (!line.startsWith(u'#') && !line.startsWith(u'['))
            entries.append(line);
    return entries;
}

QStringList entriesOf(QByteArrayView bytes)
{
    const QStringList lines = linesOf(bytes);
    const QMap<int, QString> numbered = numberedEntries(lines);
    const bool isPls = !numbered.isEmpty() || lines.value(0).startsWith(plsHeader, Qt::CaseInsensitive);
    return isPls ? QStringList(numbered.values()) : plainEntries(lines);
}

}

QList<QUrl> readPlaylist(QByteArrayView bytes, const QUrl& base)
{
    QList<QUrl> addresses;
    for (const QString& entry : entriesOf(bytes)) {
        const QUrl address = base.resolved(QUrl(entry));
        if (isWebAddress(address) && !addresses.contains(address))
            addresses.append(address);
        if (addresses.size() >= playlistEntryLimit)
            break;
    }
    return addresses;
}

}
