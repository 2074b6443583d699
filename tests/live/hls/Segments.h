// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <vector>

namespace velarin::test {

enum class SegmentKind
{
    TransportAac,
    TransportMp3,
    PackedAac,
    FragmentedMp4,
};

// A stretch of the programme that can be told apart by ear, cut into segments by ffmpeg.
struct Segments
{
    struct Segment
    {
        QByteArray bytes;
        double duration{ 0.0 };
    };
    // What stands before segments of fragmented MP4; empty for the others.
    QByteArray map;
    std::vector<Segment> segments;

    // Made once in a process. `from` and `length` in seconds of the programme, segments of about `each` seconds.
    [[nodiscard]] static const Segments& of(SegmentKind kind, double from, double length, double each);
};

}
