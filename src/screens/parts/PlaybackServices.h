// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace velarin {

class AudioLevel;
class Broadcasts;
class PlaybackCoordinator;
class RadioPlayer;
class StationRepository;

// What a control needs to act on the playback; everything outlives it.
struct PlaybackServices
{
    StationRepository& repository;
    RadioPlayer& radio;
    PlaybackCoordinator& coordinator;
    AudioLevel& level;
    Broadcasts& broadcasts;
};

}
