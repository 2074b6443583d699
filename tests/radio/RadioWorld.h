// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "artwork/ArtworkLoader.h"
#include "base/Broadcasts.h"
#include "catalogue/StationRepository.h"
#include "coordination/AlarmSession.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/Diagnostics.h"
#include "radio/RadioPlayer.h"
#include "support/FakeAudioPlayer.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"
#include "support/FakeMediaControls.h"
#include "support/FakeNetworkMonitor.h"
#include "support/FakeSleepMonitor.h"
#include "support/ManualExecutor.h"

#include <QStringList>

#include <gmock/gmock.h>

#include <memory>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace velarin {

inline void PrintTo(const PlaybackFailure& failure, std::ostream* out)
{
    *out << toText(failure.kind).toStdString() << ": " << failure.message.toStdString();
}
inline void PrintTo(const Connecting& connecting, std::ostream* out)
{
    *out << "connecting(" << connecting.attempt << ", " << connecting.maxAttempts << ")";
}
inline void PrintTo(const Failed& failed, std::ostream* out)
{
    PrintTo(failed.failure, out);
}

}

namespace velarin::test {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Kind = PlaybackFailure::Kind;
using Source = PlaybackCoordinator::Source;

class FakeAlarmSession final : public AlarmSession
{
public:
    bool isStartingOwnAudio() const override { return startsOwnAudio; }
    void endSession(const QString& reason) override { endings.append(reason); }

    bool startsOwnAudio{ false };
    QStringList endings;
};

// Another engine, which only tells whether it was paused.
class FakeEngine final : public PlaybackEngine
{
public:
    void resume() override {}
    void pause() override { ++pauses; }
    void togglePlayback() override {}
    void stop() override {}
    void next() override {}
    void previous() override {}
    bool isPlaying() const override { return false; }
    bool isSounding() const override { return false; }
    qsizetype queueSize() const override { return 0; }
    QString heartbeatText() const override { return {}; }
    void setVolume(float) override {}

    int pauses{ 0 };
};

[[nodiscard]] Station stationNamed(const QString& name);
[[nodiscard]] Station withAlternate(Station station);
// Without an address that could be played.
[[nodiscard]] Station withoutAddress(Station station);
[[nodiscard]] AudioErrorChain chainOf(const QString& domain, qint64 code);

// The radio in the middle of everything that it needs, in virtual time.
struct RadioWorld
{
    RadioWorld();

    // Replaces the radio by one on another player or clock.
    void build(AudioPlayer& onPlayer, Clock& onClock);
    void fillCatalogue(const QList<Station>& stations);

    // The present attempt becomes heard.
    void hear();
    void hear(const Station& station);
    // The present attempt fails, for no clear reason if none is given.
    void fail(const AudioErrorChain& error = {});
    // Fails every attempt of a run, waiting out the delays between them.
    void failRun(const AudioErrorChain& error = {});
    // Time passes, and the player's clock with it.
    void listen(std::chrono::seconds duration);

    // The log since the last call: "network: Tentativo 1 fallito (unknown)".
    QStringList takeLog();
    [[nodiscard]] AudioItemId itemId() const { return player.item.value().id; }
    [[nodiscard]] QString url() const { return player.item.value().url.toString(); }
    [[nodiscard]] const FakeMediaControls::Published& shown() const { return controls.published.back(); }
    [[nodiscard]] Kind failureKind() const { return std::get<Failed>(radio->state()).failure.kind; }
    [[nodiscard]] QString failureMessage() const { return std::get<Failed>(radio->state()).failure.message; }

    FakeClock clock;
    // The log has a clock of its own, so that its timers are not counted with the radio's.
    FakeClock logClock;
    FakeDefaults defaults;
    FakeFiles files;
    ManualExecutor executor;
    ManualExecutor artworkExecutor;
    Broadcasts broadcasts;
    FakeMediaControls controls;
    FakeNetworkMonitor network;
    FakeSleepMonitor sleep;
    FakeAudioPlayer player;
    FakeAlarmSession alarm;
    FakeEngine podcasts;
    Diagnostics diagnostics;
    StationRepository repository;
    PlaybackCoordinator coordinator;
    ArtworkLoader artwork;
    std::unique_ptr<RadioPlayer> radio;

    // How often "playback did change" was posted.
    int announcements{ 0 };

    const Station uno{ stationNamed(u"Uno"_s) };
    const Station due{ stationNamed(u"Due"_s) };
    const Station tre{ stationNamed(u"Tre"_s) };
    const QList<Station> list{ uno, due, tre };
};

class RadioPlayerTest : public testing::Test, protected RadioWorld
{
};

// The six states, by name.
void enterState(RadioWorld& world, const QString& name);

}
