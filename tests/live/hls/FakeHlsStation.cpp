// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/FakeHlsStation.h"

#include <algorithm>

namespace velarin::live::test {

namespace {

constexpr std::chrono::milliseconds step{ 10 };

}

FakeHlsStation::FakeHlsStation(FakeLoop& loop, FakeConnections& connections)
    : m_loop(loop)
    , m_connections(connections)
    , m_start(loop.now())
{
    tick();
}

QUrl FakeHlsStation::address(const QString& path)
{
    return QUrl(QStringLiteral("http://radio.test") + path);
}

double FakeHlsStation::now() const
{
    return std::chrono::duration<double>(m_loop.now() - m_start).count();
}

int FakeHlsStation::asked(const QString& path) const
{
    return static_cast<int>(std::count(requests.begin(), requests.end(), path));
}

void FakeHlsStation::tick()
{
    m_tick = m_loop.after(step, [this] { tick(); });
    accept();
    for (std::size_t index = 0; index < m_transfers.size(); ++index)
        serve(m_transfers[index]);
    std::erase_if(
        m_transfers, [](const Transfer& transfer) { return transfer.isOver || !transfer.connection->isOpen(); });
}

void FakeHlsStation::accept()
{
    for (; m_accepted < m_connections.all.size(); ++m_accepted) {
        const auto connection = m_connections.all[m_accepted];
        const QString path = connection->request.url.path();
        requests.push_back(path);
        const std::optional<Reply> special = script ? script(path, connection->request) : std::nullopt;
        m_transfers.push_back({ connection, special.value_or(reply(path)), now() });
    }
}

void FakeHlsStation::serve(Transfer& transfer)
{
    // Serving one may end another.
    const auto connection = transfer.connection;
    const Reply& reply = transfer.reply;
    const double elapsed = now() - transfer.begun;
    if (reply.isSilent || elapsed < reply.delay || !connection->isReading)
        return;
    if (reply.status != 200) {
        transfer.isOver = true;
        connection->answer(reply.status);
        return;
    }
    const qsizetype end = std::min(reply.body.size(), reply.breaksAfter.value_or(reply.body.size()));
    const qsizetype due =
        reply.pace ? std::min(end, static_cast<qsizetype>(*reply.pace * (elapsed - reply.delay))) : end;
    const QByteArray bytes = reply.body.mid(transfer.sent, due - transfer.sent);
    transfer.isOver = due == end;
    transfer.sent = due;
    const bool isOver = transfer.isOver;
    const bool breaks = reply.breaksAfter.has_value();
    if (transfer.sent > 0 && !bytes.isEmpty())
        connection->bytes(bytes);
    if (isOver)
        breaks ? connection->reset() : connection->close();
}

FakeHlsStation::Reply FakeHlsStation::reply(const QString& path) const
{
    const QStringList words = path.split(u'/', Qt::SkipEmptyParts);
    Reply reply;
    reply.contentType = "application/vnd.apple.mpegurl";
    if (path == QStringLiteral("/master"))
        reply.body = master();
    else if (words.size() == 2 && words[1] == QStringLiteral("list"))
        reply.body = currentList(words[0]);
    else if (words.size() == 2 && !missing.contains(words[1].toInt()))
        reply.body = segment(words[1].toInt());
    else
        reply.status = 404;
    return reply;
}

QByteArray FakeHlsStation::master() const
{
    QByteArray text = "#EXTM3U\n";
    for (const auto& [name, bandwidth] : variants)
        text += "#EXT-X-STREAM-INF:BANDWIDTH=" + QByteArray::number(bandwidth) + "\n" + name.toUtf8() + "/list\n";
    return text;
}

QByteArray FakeHlsStation::currentList(const QString& variant) const
{
    const bool isStuck = now() >= stuckFrom && now() < stuckUntil;
    const int edge = isStuck ? static_cast<int>((stuckFrom + past) / segmentSeconds) : complete();
    const int to = std::min(edge, last.value_or(edge));
    return list(last ? 0 : std::max(0, to - window), to, variant);
}

QByteArray FakeHlsStation::list(int from, int to, const QString& variant) const
{
    QByteArray text = "#EXTM3U\n#EXT-X-TARGETDURATION:4\n#EXT-X-MEDIA-SEQUENCE:" +
                      QByteArray::number(from < to ? numbering(from) : 0) + "\n";
    for (int number = from; number < to; ++number) {
        if (discontinuities.contains(number))
            text += "#EXT-X-DISCONTINUITY\n";
        text += linesBefore(number);
        text += "#EXTINF:" + QByteArray::number(segmentSeconds) + ",\n/" + variant.toUtf8() + "/" +
                QByteArray::number(number) + "\n";
    }
    return last && to >= *last ? text + "#EXT-X-ENDLIST\n" : text;
}

}
