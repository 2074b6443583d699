// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/Segments.h"

#include "live/hls/HlsPlaylist.h"
#include "support/ears/Programme.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <map>
#include <tuple>

namespace velarin::test {

namespace {

QStringList words(const QString& text)
{
    return text.split(u' ', Qt::SkipEmptyParts);
}

// Encoder and container, as ffmpeg wants them; the list of the segments is always "list.m3u8".
QStringList options(SegmentKind kind, double each)
{
    const QString time = QString::number(each);
    switch (kind) {
    case SegmentKind::TransportAac:
        return words(QStringLiteral("-c:a aac -b:a 96k -f hls -hls_time %1 -hls_list_size 0 list.m3u8").arg(time));
    case SegmentKind::TransportMp3:
        return words(
            QStringLiteral("-c:a libmp3lame -b:a 96k -f hls -hls_time %1 -hls_list_size 0 list.m3u8").arg(time));
    case SegmentKind::PackedAac:
        return words(QStringLiteral("-c:a aac -b:a 96k -f segment -segment_format adts -segment_time %1 "
                                    "-segment_list list.m3u8 -segment_list_type m3u8 segment%d.aac")
                         .arg(time));
    case SegmentKind::FragmentedMp4:
        return words(QStringLiteral("-c:a aac -b:a 96k -f hls -hls_time %1 -hls_list_size 0 -hls_segment_type fmp4 "
                                    "-hls_fmp4_init_filename map.mp4 list.m3u8")
                         .arg(time));
    }
    return {};
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Segments cut(SegmentKind kind, double from, double length, double each)
{
    const QTemporaryDir folder;
    const std::vector<float> sound = Programme{ .from = from, .length = length }.samples();
    QProcess ffmpeg;
    ffmpeg.setWorkingDirectory(folder.path());
    ffmpeg.start(QStringLiteral("ffmpeg"),
        words(QStringLiteral("-v error -f f32le -ar 44100 -ac 1 -i pipe:0 -ac 2")) + options(kind, each));
    ffmpeg.write(reinterpret_cast<const char*>(sound.data()), static_cast<qint64>(sound.size() * sizeof(float)));
    ffmpeg.closeWriteChannel();
    ffmpeg.waitForFinished(120'000);

    Segments result;
    result.map = contentOf(folder.filePath(QStringLiteral("map.mp4")));
    const QByteArray text = contentOf(folder.filePath(QStringLiteral("list.m3u8")));
    const live::HlsPlaylist list = live::readHlsPlaylist(text, QUrl(QStringLiteral("http://test/list.m3u8")));
    if (const auto* media = std::get_if<live::HlsMediaPlaylist>(&list))
        for (const live::HlsSegment& segment : media->segments)
            result.segments.push_back({ contentOf(folder.filePath(segment.url.fileName())), segment.duration });
    return result;
}

}

const Segments& Segments::of(SegmentKind kind, double from, double length, double each)
{
    static std::map<std::tuple<SegmentKind, double, double, double>, Segments> known;
    const auto key = std::tuple(kind, from, length, each);
    if (!known.contains(key))
        known[key] = cut(kind, from, length, each);
    return known[key];
}

}
