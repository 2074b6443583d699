// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/Scenarios.h"

#include "support/server/Answers.h"

namespace velarin::test {
namespace {

Seconds secondsOf(const QList<QByteArray>& words, qsizetype at)
{
    return Seconds(words.value(at).toDouble());
}

}

Scenarios::Scenarios(std::shared_ptr<const StationProgramme> programme, QByteArray contentType,
    std::shared_ptr<const StationProgramme> second, QByteArray secondType)
    : m_programme(std::move(programme))
    , m_contentType(std::move(contentType))
    , m_second(std::move(second))
    , m_secondType(std::move(secondType))
{
}

Script Scenarios::script()
{
    return [this](const ServerRequest& request) { return answer(request); };
}

Answer Scenarios::answer(const ServerRequest& request)
{
    m_firstTimes.emplace(request.path, request.time);
    const Words words = request.path.split('/').mid(1);
    if (const std::optional<Answer> silent = mute(words))
        return *silent;
    if (const std::optional<Answer> elsewhere = wayElsewhere(request, words))
        return *elsewhere;
    if (words.value(0) == "restart")
        return afterRestart(request, words);
    if (words.value(0) == "token" || words.value(0) == "ticket")
        return withToken(request, words);
    return faultyAnswer(request, words);
}

Answer Scenarios::wellAnswer(const ServerRequest& request) const
{
    Answer answer = stationAnswer(m_programme, m_contentType);
    if (const QByteArray burst = request.option("burst"); !burst.isEmpty())
        answer.burst = 1024 * burst.toInt();
    if (const QByteArray type = request.option("type"); !type.isEmpty())
        answer.contentType = type;
    if (const QByteArray protocol = request.option("protocol"); !protocol.isEmpty())
        answer.protocol = protocol;
    answer.chunked = request.option("chunked") == "1";
    answer.metadataInterval = request.option("metaint").toInt();
    return answer;
}

Answer Scenarios::faultyAnswer(const ServerRequest& request, const Words& words)
{
    const QByteArray what = words.value(0);
    const bool isAgain = request.number > 1 && request.option("every") != "1";
    Answer answer = wellAnswer(request);
    if (what == "slow")
        answer.speed = words.value(1).toDouble();
    else if (what == "trickle")
        answer.trickle = words.value(1).toDouble();
    else if (what == "head")
        answer.headDelay = secondsOf(words, 1);
    else if (what == "nohead")
        answer.protocol.clear();
    else if (what == "lie")
        answer = withFalseInterval(answer);
    else if (what == "codec" && isAgain && m_second)
        return stationAnswer(m_second, m_secondType);
    if (isAgain)
        return answer;
    if (what == "close" || what == "codec")
        return withFault(answer, Fault::Close, secondsOf(words, 1));
    if (what == "reset")
        return withFault(answer, Fault::Reset, secondsOf(words, 1));
    if (what == "stall")
        return withStall(answer, secondsOf(words, 1), words.size() > 2 ? secondsOf(words, 2) : Seconds(1e9));
    return answer;
}

std::optional<Answer> Scenarios::mute(const Words& words)
{
    const QByteArray what = words.value(0);
    if (what == "status")
        return statusAnswer(words.value(1).toInt());
    if (what == "silent")
        return silentAnswer();
    if (what == "html")
        return bodyAnswer(webPage(), "text/html");
    if (what == "text")
        return bodyAnswer("Nessuna trasmissione.\n", "text/plain");
    if (what == "picture")
        return bodyAnswer(picture(), "image/png");
    if (what == "empty")
        return bodyAnswer({}, "audio/mpeg");
    if (what == "garbage")
        return bodyAnswer(garbage(256 * 1024), "audio/mpeg");
    return std::nullopt;
}

std::optional<Answer> Scenarios::wayElsewhere(const ServerRequest& request, const Words& words) const
{
    const QByteArray what = words.value(0);
    const QByteArray target = request.option("to").isEmpty() ? "/ok" : request.option("to");
    const QByteArray address = m_server ? m_server->url(target) : target;
    if (what == "redirect")
        return redirectAnswer(words.value(1).toInt(), address);
    if (what == "loop")
        return redirectAnswer(302, "/loop");
    if (what == "m3u")
        return bodyAnswer("#EXTM3U\n#EXTINF:-1,Prova\n" + address + "\n", "audio/x-mpegurl");
    if (what == "pls")
        return bodyAnswer("[playlist]\nNumberOfEntries=1\nFile1=" + address + "\n", "audio/x-scpls");
    return std::nullopt;
}

Answer Scenarios::withToken(const ServerRequest& request, const Words& words)
{
    const Seconds life = secondsOf(words, 1);
    if (words.value(0) == "token")
        return redirectAnswer(302, "/ticket/" + words.value(1) + '/' + QByteArray::number(request.number));
    // The first ticket is good for a time, the others for good.
    if (words.value(2) != "1")
        return wellAnswer(request);
    if (request.time > m_firstTimes[request.path] + life)
        return statusAnswer(404);
    return withFault(wellAnswer(request), Fault::Close, life);
}

Answer Scenarios::afterRestart(const ServerRequest& request, const Words& words)
{
    const Seconds from = m_firstTimes[request.path] + secondsOf(words, 1);
    const Seconds to = from + secondsOf(words, 2);
    const std::scoped_lock lock(m_mutex);
    if (request.number == 1)
        m_restarts.push_back({ from, to, words.value(3) == "refuse", false });
    if (request.time < from || request.time >= to)
        return wellAnswer(request);
    const int status = words.value(3).toInt();
    return statusAnswer(status > 0 ? status : 503);
}

void Scenarios::tick()
{
    const std::scoped_lock lock(m_mutex);
    bool refuses = false;
    for (Restart& restart : m_restarts) {
        const bool isGone = m_server->now() >= restart.from && m_server->now() < restart.to;
        if (isGone && !std::exchange(restart.hasClosed, true))
            m_server->closeConnections();
        refuses = refuses || (isGone && restart.refuses);
    }
    m_server->setListening(!refuses);
}

}
