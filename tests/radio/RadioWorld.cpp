// SPDX-License-Identifier: GPL-3.0-or-later
#include "RadioWorld.h"

#include "diagnostics/DiagnosticEventText.h"
#include "radio/ReconnectPolicy.h"

namespace velarin::test {

namespace {

const QString catalogueFile = u"/stations.json"_s;

}

Station stationNamed(const QString& name)
{
    Station station;
    station.id = u"rb/"_s + name.toLower();
    station.name = name;
    station.streamUrl = u"http://radio.example/"_s + name.toLower();
    station.genre = u"Pop"_s;
    return station;
}

Station withAlternate(Station station)
{
    station.alternateStreamUrl = station.streamUrl + u"-2"_s;
    return station;
}

Station withoutAddress(Station station)
{
    station.streamUrl.clear();
    return station;
}

AudioErrorChain chainOf(const QString& domain, qint64 code)
{
    return { { domain, code, u"text"_s } };
}

RadioWorld::RadioWorld()
    : diagnostics(u"/diagnostics.json"_s, ApplicationInfo{}, files, defaults, logClock)
    , repository({ catalogueFile }, files, defaults, executor, broadcasts)
    , coordinator(controls, diagnostics, defaults)
    , artwork(artworkExecutor)
{
    build(player, clock);
    coordinator.attach(Source::podcast, podcasts);
    coordinator.setResumeLast([this] { radio->resumeLast(); });
    QObject::connect(&broadcasts, &Broadcasts::radioPlaybackDidChange, [this] { ++announcements; });
}

void RadioWorld::build(AudioPlayer& onPlayer, Clock& onClock)
{
    radio = std::make_unique<RadioPlayer>(RadioPlayerServices{ repository, onPlayer, coordinator, controls, diagnostics,
        artwork, network, sleep, onClock, broadcasts, &alarm });
    coordinator.attach(Source::radio, *radio);
}

void RadioWorld::fillCatalogue(const QList<Station>& stations)
{
    files.contents.insert(catalogueFile, encodeStations(stations));
    repository.ensureLoaded([] {});
    files.deliverReads();
    executor.runAll();
}

void RadioWorld::hear()
{
    player.tellStatus(ItemStatus::Ready);
    player.tellTimeControl(TimeControl::Playing);
}

void RadioWorld::hear(const Station& station)
{
    radio->play(station, list);
    hear();
}

void RadioWorld::fail(const AudioErrorChain& error)
{
    player.tellStatus(ItemStatus::Failed, error);
}

void RadioWorld::failRun(const AudioErrorChain& error)
{
    for (const auto delay : ReconnectPolicy::retryDelays) {
        fail(error);
        clock.advance(delay);
    }
    fail(error);
}

void RadioWorld::listen(std::chrono::seconds duration)
{
    for (auto second = 0s; second < duration; ++second) {
        player.time += 1.0;
        clock.advance(1s);
    }
}

QStringList RadioWorld::takeLog()
{
    QStringList lines;
    for (const DiagnosticEvent& event : diagnostics.events())
        lines.append(u"%1: %2"_s.arg(toText(event.category), event.message));
    diagnostics.clear();
    return lines;
}

void enterState(RadioWorld& world, const QString& name)
{
    if (name == u"idle")
        return;
    if (name == u"failed") {
        world.radio->play(withoutAddress(world.uno), world.list);
        return;
    }
    world.radio->play(world.uno, world.list);
    if (name == u"connecting")
        return;
    world.hear();
    if (name == u"buffering")
        world.player.tellTimeControl(TimeControl::Waiting);
    if (name == u"paused")
        world.radio->pause();
}

}
