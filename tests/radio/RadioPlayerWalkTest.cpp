// SPDX-License-Identifier: GPL-3.0-or-later
// Random walks: whatever happens in whatever order, the player and the radio agree on what is going on.
#include "RadioWorld.h"

#include <functional>
#include <random>
#include <vector>

namespace velarin::test {

class RadioPlayerWalkTest : public RadioPlayerTest, public testing::WithParamInterface<unsigned>
{
protected:
    int roll(int sides) { return std::uniform_int_distribution<int>(0, sides - 1)(m_random); }

    Station anyStation()
    {
        const Station station = list.at(roll(3));
        switch (roll(4)) {
        case 0:
            return withAlternate(station);
        case 1:
            return withoutAddress(station);
        default:
            return station;
        }
    }

    AudioErrorChain anyError()
    {
        const QStringList domains{ u"http"_s, u"reset"_s, u"timeout"_s, u"gst-stream"_s, u"foreign"_s };
        return roll(4) == 0 ? AudioErrorChain() : chainOf(domains.at(roll(5)), 400 + roll(200));
    }

    void tellSomething()
    {
        const std::vector<std::function<void()>> events{ [this] { hear(); }, [this] { hear(); },
            [this] { player.tellTimeControl(TimeControl::Waiting); },
            [this] { player.tellTimeControl(TimeControl::Paused); }, [this] { fail(anyError()); },
            [this] { player.tellPlayedToEnd(); }, [this] { player.tellFailedToPlayToEnd(anyError()); },
            [this] { player.tellStalled(); }, [this] { player.tellHttpStatus(400 + roll(200)); },
            [this] { player.tellTitle(u"A - %1"_s.arg(roll(3))); } };
        // A player without an item has nothing to tell.
        if (player.item)
            events.at(static_cast<std::size_t>(roll(static_cast<int>(events.size()))))();
    }

    void wishSomething()
    {
        const std::vector<std::function<void()>> wishes{ [this] { radio->play(anyStation(), list); },
            [this] { radio->play(anyStation()); }, [this] { radio->pause(); }, [this] { radio->resume(); },
            [this] { radio->togglePlayback(); }, [this] { radio->stop(); }, [this] { radio->next(); },
            [this] { radio->previous(); }, [this] { radio->resumeLast(); },
            [this] { coordinator.activate(Source::podcast); } };
        wishes.at(static_cast<std::size_t>(roll(static_cast<int>(wishes.size()))))();
    }

    void letTheWorldChange()
    {
        const std::vector<std::function<void()>> changes{ [this] { network.changed(false); },
            [this] { network.changed(true); }, [this] { sleep.sleep(); }, [this] { sleep.handlers.didWake(); },
            [this] { repository.setAutoReconnect(roll(3) != 0); },
            [this] { repository.setAutoSkipUnreachable(roll(2) == 0); },
            [this] { repository.setConnectTimeout(roll(20)); }, [this] { artworkExecutor.runAll(); } };
        changes.at(static_cast<std::size_t>(roll(static_cast<int>(changes.size()))))();
    }

    void step()
    {
        switch (roll(8)) {
        case 0:
            wishSomething();
            break;
        case 1:
            letTheWorldChange();
            break;
        case 2:
        case 3:
        case 4:
            tellSomething();
            break;
        case 5:
            listen(std::chrono::seconds(roll(30)));
            break;
        default:
            clock.advance(std::chrono::milliseconds(100 * roll(100)));
            break;
        }
    }

    void check()
    {
        const PlaybackState state = radio->state();
        const bool silent = is<Idle>(state) || is<Failed>(state);
        ASSERT_TRUE(!silent || !player.item) << "an item that nobody wants";
        // Between a failure and its retry, or the skip to the next station, there is a timer in place of an item.
        ASSERT_TRUE(!radio->isSounding() || player.item || clock.pendingTimers() > 0) << "a wish that nothing serves";
        ASSERT_TRUE(!radio->isPlaying() || player.item) << "a sound without an item";
        ASSERT_TRUE(!player.item || player.observers(itemId()) == 1u) << "an item that nobody hears";
        ASSERT_TRUE(radio->quality().tier >= 0 && radio->quality().tier <= StreamQuality::lowestTier);
        ASSERT_TRUE(!radio->station() || radio->queue().at(radio->queueIndex()).id == radio->station()->id);
        ASSERT_TRUE(radio->songTitle() || !radio->songArtist()) << "an artist without a song";
        // One timer a slot, and the few that nobody keeps.
        ASSERT_LT(clock.pendingTimers(), 60u);
    }

private:
    std::mt19937 m_random{ GetParam() };
};

TEST_P(RadioPlayerWalkTest, theRadioAndItsPlayerAgreeAndTheWayBackIsOpen)
{
    fillCatalogue(list);
    for (int steps = 0; steps < 2000; ++steps) {
        step();
        ASSERT_NO_FATAL_FAILURE(check()) << "after step " << steps << " in " << toText(radio->state()).toStdString();
    }
    clock.advance(10s);
    hear(uno);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
    listen(60s);
    EXPECT_EQ(radio->state(), PlaybackState(Playing{}));
}

INSTANTIATE_TEST_SUITE_P(Seeds, RadioPlayerWalkTest, testing::Range(1u, 9u));

}
