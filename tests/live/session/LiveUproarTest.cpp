// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

#include <random>

namespace velarin::live::test {

namespace {

const QUrl other(QStringLiteral("http://radio.test/other"));

}

// Whatever the listener, the servers and the device do in whatever order: what holds always.
class LiveUproarTest : public LivePlayerTest
{
protected:
    void listenerDoes(int choice)
    {
        switch (choice) {
        case 0:
            start();
            break;
        case 1:
            start(other, 12.0);
            break;
        case 2:
            player->replaceCurrentItem(std::nullopt);
            break;
        case 3:
            player->pause();
            break;
        case 4:
            observations.clear();
            break;
        default:
            player->play();
            break;
        }
    }
    void serverDoes(FakeConnection& connection, int choice)
    {
        switch (choice) {
        case 0:
            connection.close();
            break;
        case 1:
            connection.reset();
            break;
        case 2:
            connection.answer(404);
            break;
        case 3:
            connection.bytes("<html><body>");
            break;
        case 4:
            connection.head("audio/mpeg", 64);
            break;
        default:
            connection.bytes(frames(m_programme, m_programme + 60));
            m_programme += 60;
            break;
        }
    }
    void outputDoes(int choice)
    {
        if (sound().alive == 0)
            return;
        if (choice == 0)
            pipeline().failDevice();
        else if (pipeline().newestBranch() > 0 && choice == 1)
            pipeline().failBranch(pipeline().newestBranch(), { { AudioErrorDomain::gstStream, 7, QString() } });
    }
    void expectOrder()
    {
        EXPECT_LE(m_engine->m_connections.open(), 3U);
        EXPECT_LE(sound().alive, 1);
        EXPECT_LE(m_engine->m_loop.timers(), 12U);
        if (!player->currentItem()) {
            EXPECT_EQ(m_engine->m_connections.open(), 0U);
            EXPECT_EQ(sound().alive, 0);
        }
        if (player->currentItemStatus() == ItemStatus::Failed) {
            EXPECT_EQ(m_engine->m_connections.open(), 0U);
        }
    }
};

TEST_F(LiveUproarTest, aThousandRandomSequencesKeepOrder)
{
    std::mt19937 random(20'261'121);
    const auto pick = [&random](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    for (int sequence = 0; sequence < 1000; ++sequence) {
        m_engine->m_connections.all.clear();
        start();
        for (int step = 0; step < 30; ++step) {
            const int who = pick(10);
            if (who == 0)
                listenerDoes(pick(9));
            else if (who == 1)
                outputDoes(pick(6));
            else if (!m_engine->m_connections.all.empty())
                serverDoes(
                    *m_engine->m_connections.all[static_cast<std::size_t>(pick(static_cast<int>(asked())))], pick(14));
            advance(std::chrono::milliseconds(pick(1500)));
            expectOrder();
        }
        if (HasFailure())
            FAIL() << "sequence " << sequence;
        events.clear();
    }
}

TEST_F(LiveUproarTest, nothingIsLeftAfterAThousandItems)
{
    for (int item = 0; item < 1000; ++item) {
        start(item % 2 == 0 ? other : QUrl(QStringLiteral("http://radio.test/live")));
        if (item % 3 == 0)
            server().answer(item % 2 == 0 ? 404 : 503);
        else if (item % 3 == 1)
            send(0, 100);
        advance(100ms);
    }
    player->replaceCurrentItem(std::nullopt);
    settle();
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
    EXPECT_EQ(sound().alive, 0);
    EXPECT_EQ(m_engine->m_loop.timers(), 0U);
}

}
