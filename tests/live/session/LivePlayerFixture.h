// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/LiveAudioPlayer.h"
#include "live/LiveEngine.h"
#include "live/session/FakeConnections.h"
#include "live/session/FakeLoop.h"
#include "live/session/FakePipeline.h"
#include "live/session/TestSound.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <cmath>

namespace velarin::live::test {

using namespace std::chrono_literals;

// The whole engine above thread, network and sound output, in virtual time. Everything that observers hear stands in
// `events`, in words.
class LivePlayerTest : public testing::Test
{
protected:
    struct Engine final : LiveEngine
    {
        EngineLoop& loop() override { return m_loop; }
        ConnectionFactory& connections() override { return m_connections; }
        SoundPipelineFactory& pipelines() override { return m_pipelines; }

        FakeLoop m_loop;
        FakeConnections m_connections;
        FakePipelines m_pipelines{ m_loop };
    };

    LivePlayerTest();
    ~LivePlayerTest() override;

    // Loads an item, observes it and plays; its id.
    AudioItemId start(const QUrl& url = QUrl(QStringLiteral("http://radio.test/live")), double forwardBuffer = 0.0);
    void observe(AudioItemId item, const QString& prefix = {});

    // The server sends frames `from` up to `to` in one stroke.
    void send(int from, int to) { server().bytes(frames(from, to)); }
    // The server goes on sending in real time, ten times a second, from the frame after the last one sent.
    void stream(std::chrono::milliseconds duration);
    // Begins an item whose server gives a burst and streams on, and lets it sound.
    void startSounding(double burstSeconds = 4.0);
    [[nodiscard]] FakeConnection& server() { return m_engine->m_connections.last(); }
    // The latest connection goes on with the programme where it stands, after a burst of what was sent before.
    void answerWithBurst(double seconds);

    void advance(std::chrono::nanoseconds duration) { m_engine->m_loop.advance(duration); }
    void settle() { m_engine->m_loop.settle(); }

    [[nodiscard]] std::size_t asked() const { return m_engine->m_connections.all.size(); }
    [[nodiscard]] FakePipeline& pipeline() { return *m_engine->m_pipelines.last; }
    [[nodiscard]] PipelineLog& sound() { return m_engine->m_pipelines.log; }
    // Numbers of the frames that were handed on, over all branches.
    [[nodiscard]] std::vector<int> played() const;
    // Events since the last call.
    [[nodiscard]] QStringList takeEvents() { return std::exchange(events, {}); }

    std::shared_ptr<Engine> m_engine{ std::make_shared<Engine>() };
    std::unique_ptr<LiveAudioPlayer> player;
    QStringList events;
    std::vector<AudioPlayer::Observation> observations;
    // The frame that the server's programme has come to, in real time.
    int m_programme{ 0 };
};

[[nodiscard]] QString inWords(const AudioErrorChain& chain);

}
