// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/ears/Listening.h"

#include "live/ProductionEngine.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace velarin::test {

QString inWords(const AudioErrorChain& chain)
{
    return chain.empty() ? QString() : QStringLiteral("%1 %2").arg(chain.front().domain).arg(chain.front().code);
}

void listenFor(double seconds)
{
    (void)waitUntil([] { return false; }, std::chrono::milliseconds(static_cast<int>(seconds * 1000.0)));
}

Listening::Listening(int device, live::TransportSettings transport)
    : ear(SoundServer::shared().address(), SoundServer::deviceName(device))
    , player(std::make_unique<live::LiveAudioPlayer>([selection = m_selection, transport = std::move(transport)] {
        return live::startProductionEngine(selection, transport);
    }))
{
    EXPECT_TRUE(ear.isListening());
    m_selection->select(SoundServer::deviceName(device));
    player->setTimeControlHandler([this](TimeControl value) {
        const QStringList names{ QStringLiteral("paused"), QStringLiteral("waiting"), QStringLiteral("playing") };
        events += names[static_cast<int>(value)];
    });
}

Listening::~Listening() = default;

void Listening::play(const QByteArray& url, double forwardBuffer)
{
    AudioItem item = makeAudioItem(QUrl(QString::fromLatin1(url)));
    item.headers = { { "User-Agent", "Velarin/1.0.1 (macOS; AVPlayer)" }, { "Icy-MetaData", "1" } };
    item.forwardBufferDuration = forwardBuffer;
    AudioPlayer::ItemHandlers handlers;
    handlers.status = [this](ItemStatus status, const AudioErrorChain& cause) {
        events += status == ItemStatus::Ready ? QStringLiteral("ready") : QStringLiteral("failed: ") + inWords(cause);
    };
    handlers.stalled = [this] { events += QStringLiteral("stalled"); };
    handlers.failedToPlayToEnd = [this](const AudioErrorChain& cause) {
        events += QStringLiteral("broke: ") + inWords(cause);
    };
    handlers.playedToEnd = [this] { events += QStringLiteral("ended"); };
    handlers.httpStatus = [this](int status) { events += QStringLiteral("http %1").arg(status); };
    handlers.title = [this](const QString& title) { events += QStringLiteral("title ") + title; };
    m_observations.push_back(player->observe(item.id, std::move(handlers)));
    m_playedAt = ear.now();
    player->replaceCurrentItem(item);
    player->play();
}

}
