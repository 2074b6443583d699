// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <compare>
#include <string>
#include <vector>

namespace velarin::test {

enum class Codec
{
    Mp3,
    AacAdts,
    OggVorbis,
    OggOpus,
    OggFlac,
    Flac,
};

// A stretch of the programme of ToneCode.h, encoded as a station would send it.
struct Programme
{
    Codec codec{ Codec::Mp3 };
    int framesPerSecond{ 44100 };
    // Seconds of the programme.
    double from{ 0.0 };
    double length{ 5.0 };
    // Written into the container where it holds any.
    std::string title{};
    std::string artist{};

    auto operator<=>(const Programme&) const = default;

    // Encoded with GStreamer, once in a process. Empty where an encoder is missing.
    [[nodiscard]] QByteArray encoded() const;
    // Mono, from -1 to 1.
    [[nodiscard]] std::vector<float> samples() const;
};

// A plain tone, for what must not crackle; MP3.
[[nodiscard]] QByteArray encodedTone(double frequency, double seconds);

}
