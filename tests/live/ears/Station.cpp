// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/ears/Station.h"

#include <map>

namespace velarin::test {

namespace {

// Longer than any test listens, the past that a burst is taken from included.
constexpr double programmeSeconds = 60.0;

Codec other(Codec codec)
{
    return codec == Codec::Mp3 ? Codec::AacAdts : Codec::Mp3;
}

}

std::shared_ptr<const StationProgramme> Station::programme(Codec codec)
{
    static std::map<Codec, std::shared_ptr<const StationProgramme>> made;
    auto& programme = made[codec];
    if (!programme) {
        const QByteArray bytes = Programme{ .codec = codec, .length = programmeSeconds }.encoded();
        programme = std::make_shared<StationProgramme>(bytes, static_cast<double>(bytes.size()) / programmeSeconds);
    }
    return programme;
}

QByteArray Station::contentType(Codec codec)
{
    switch (codec) {
    case Codec::Mp3:
        return "audio/mpeg";
    case Codec::AacAdts:
        return "audio/aac";
    case Codec::OggVorbis:
    case Codec::OggOpus:
    case Codec::OggFlac:
        return "application/ogg";
    case Codec::Flac:
        return "audio/flac";
    }
    return {};
}

Station::Station(Codec codec, std::optional<Certificate> certificate)
    : m_scenarios(programme(codec), contentType(codec), programme(other(codec)), contentType(other(codec)))
    , m_server(m_scenarios.script(), std::move(certificate))
{
    m_scenarios.serveIn(m_server);
    QObject::connect(&m_tick, &QTimer::timeout, [this] { m_scenarios.tick(); });
    m_tick.start(20);
}

}
