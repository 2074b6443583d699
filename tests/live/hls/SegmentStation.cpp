// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/SegmentStation.h"

#include "support/server/Answers.h"

#include <algorithm>

namespace velarin::test {

namespace {

const QByteArray listType = "application/vnd.apple.mpegurl";

}

SegmentStation::SegmentStation(Setup setup)
    : m_setup(std::move(setup))
    , m_server([this](const ServerRequest& request) { return answer(request); }, m_setup.certificate)
{
}

Answer SegmentStation::answer(const ServerRequest& request) const
{
    const double time = request.time.count();
    if (m_setup.fault)
        if (std::optional<Answer> fault = m_setup.fault(request, time))
            return *fault;
    if (request.path == "/master.m3u8")
        return bodyAnswer(master(), listType);
    const QList<QByteArray> words = request.path.split('/');
    const auto variant = m_setup.variants.find(words.value(1));
    if (variant == m_setup.variants.end())
        return statusAnswer(404);
    const Segments& segments = *variant->second.segments;
    if (words.value(2) == "list.m3u8")
        return bodyAnswer(list(variant->first, m_setup.listTime(time)), listType);
    if (words.value(2) == "map.mp4")
        return bodyAnswer(segments.map, "video/mp4");
    const auto number = static_cast<std::size_t>(words.value(2).toInt());
    if (number >= segments.segments.size())
        return statusAnswer(404);
    return bodyAnswer(
        m_setup.dress(static_cast<int>(number), segments.segments[number].bytes), "application/octet-stream");
}

QByteArray SegmentStation::master() const
{
    QByteArray text = "#EXTM3U\n";
    for (const auto& [name, variant] : m_setup.variants)
        text += "#EXT-X-STREAM-INF:BANDWIDTH=" + QByteArray::number(variant.bandwidth) + "\n" + name + "/list.m3u8\n";
    return text;
}

QByteArray SegmentStation::list(const QByteArray& name, double time) const
{
    const Segments& segments = *m_setup.variants.at(name).segments;
    int to = 0;
    for (double end = 0.0; to < static_cast<int>(segments.segments.size()); ++to) {
        end += segments.segments[static_cast<std::size_t>(to)].duration;
        if (end > time + past)
            break;
    }
    const int from = std::max(0, to - m_setup.window);
    QByteArray text = "#EXTM3U\n#EXT-X-VERSION:7\n#EXT-X-TARGETDURATION:4\n#EXT-X-MEDIA-SEQUENCE:" +
                      QByteArray::number(m_setup.numbering(from, time)) + "\n";
    if (!segments.map.isEmpty())
        text += "#EXT-X-MAP:URI=\"map.mp4\"\n";
    for (int number = from; number < to; ++number)
        text += m_setup.linesBefore(number) +
                "#EXTINF:" + QByteArray::number(segments.segments[static_cast<std::size_t>(number)].duration) + ",\n" +
                QByteArray::number(number) + "\n";
    return text;
}

}
