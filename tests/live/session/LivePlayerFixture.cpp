// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

QString inWords(const AudioErrorChain& chain)
{
    QStringList links;
    for (const AudioError& error : chain)
        links += QStringLiteral("%1 %2").arg(error.domain).arg(error.code);
    return links.join(QStringLiteral(" < "));
}

LivePlayerTest::LivePlayerTest()
    : player(std::make_unique<LiveAudioPlayer>([this] { return m_engine; }))
{
    player->setTimeControlHandler([this](TimeControl value) {
        const QStringList names{ QStringLiteral("paused"), QStringLiteral("waiting"), QStringLiteral("playing") };
        events += names[static_cast<int>(value)];
    });
}

LivePlayerTest::~LivePlayerTest()
{
    player.reset();
    settle();
}

AudioItemId LivePlayerTest::start(const QUrl& url, double forwardBuffer)
{
    AudioItem item = makeAudioItem(url);
    item.forwardBufferDuration = forwardBuffer;
    observe(item.id);
    player->replaceCurrentItem(item);
    player->play();
    settle();
    return item.id;
}

void LivePlayerTest::observe(AudioItemId item, const QString& prefix)
{
    const auto note = [this, prefix](const QString& what) { events += prefix + what; };
    AudioPlayer::ItemHandlers handlers;
    handlers.status = [note](ItemStatus status, const AudioErrorChain& cause) {
        note(status == ItemStatus::Ready ? QStringLiteral("ready") : QStringLiteral("failed: ") + inWords(cause));
    };
    handlers.likelyToKeepUp = [note] { note(QStringLiteral("likely")); };
    handlers.stalled = [note] { note(QStringLiteral("stalled")); };
    handlers.failedToPlayToEnd = [note](const AudioErrorChain& cause) {
        note(QStringLiteral("broke: ") + inWords(cause));
    };
    handlers.playedToEnd = [note] { note(QStringLiteral("ended")); };
    handlers.httpStatus = [note](int status) { note(QStringLiteral("http %1").arg(status)); };
    handlers.title = [note](const QString& title) { note(QStringLiteral("title ") + title); };
    observations.push_back(player->observe(item, std::move(handlers)));
}

void LivePlayerTest::stream(std::chrono::milliseconds duration)
{
    constexpr std::chrono::milliseconds step{ 100 };
    const auto server = m_engine->m_connections.all.back();
    const int first = m_programme;
    for (std::chrono::milliseconds passed{ 0 }; passed < duration; passed += step) {
        advance(step);
        const int now = first + framesIn(std::chrono::duration<double>(passed + step).count());
        server->bytes(frames(m_programme, now));
        m_programme = now;
    }
    settle();
}

void LivePlayerTest::startSounding(double burstSeconds)
{
    start();
    m_programme = framesIn(burstSeconds);
    send(0, m_programme);
    advance(50ms);
}

void LivePlayerTest::answerWithBurst(double seconds)
{
    server().bytes(frames(m_programme - framesIn(seconds), m_programme));
    settle();
}

std::vector<int> LivePlayerTest::played() const
{
    std::vector<int> numbers;
    for (const PipelineLog::Branch& branch : m_engine->m_pipelines.log.branches) {
        const std::vector<int> inBranch = numbersIn(branch.pushed);
        numbers.insert(numbers.end(), inBranch.begin(), inBranch.end());
    }
    return numbers;
}

}
