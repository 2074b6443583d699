// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace velarin::live {

// What a stretch of encoded bytes is, as far as the choice of parser and decoder goes.
enum class SoundFormat
{
    // MPEG-1, 2 and 2.5 audio, layers I to III: mpegaudioparse ! mpg123audiodec.
    Mpeg,
    // AAC in ADTS frames: aacparse ! faad.
    AacAdts,
    // AAC in LOAS/LATM frames.
    AacLoas,
    // Ogg with Vorbis, Opus, FLAC or Speex, chained or not.
    Ogg,
    // FLAC without a container.
    Flac,
    // MPEG transport stream, fragmented MP4: for segments.
    MpegTs,
    Mp4,
    // Anything else that is not plainly no sound: typefind ! decodebin.
    Other,
};

}
