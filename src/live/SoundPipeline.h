// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/SoundFormat.h"
#include "platform/AudioPlayer.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace velarin::live {

using BranchId = int;

// What the pipeline tells. On the engine's thread, in a later turn than what caused it; never after close().
class SoundPipelineListener
{
public:
    virtual ~SoundPipelineListener() = default;

    // The branch has room: push() more. Told again only after a push. Its input is shallow (well under a second of
    // sound), so that what waits stays countable outside.
    virtual void needsBytes(BranchId branch) = 0;
    // The branch cannot play what it was given; it is gone, with what it still held. Domains gst-stream, gst-core.
    virtual void branchFailed(BranchId branch, const AudioErrorChain& cause) = 0;
    // All of the branch's sound was handed to the device (its end was announced by endBranch()).
    virtual void branchFinished(BranchId branch) = 0;
    // A title inside the container (Vorbis comment, ID3): at `seconds` of the branch's own sound.
    virtual void titleFound(BranchId branch, double seconds, const QString& title) = 0;
    // The first decoded sound since play() (or since the sound ran dry) is being heard: the device's clock moves.
    virtual void soundHeard() = 0;
    // Everything that was given has been heard, and the device is silent now. Told once; soundHeard() follows when
    // there is sound again.
    virtual void ranDry() = 0;
    // The device is gone and no other could be opened within a second (or none at the start). The pipeline is silent
    // until play() is called again, which tries anew. Domain gst-resource.
    virtual void deviceFailed(const AudioErrorChain& cause) = 0;
};

// Decodes encoded bytes and plays them without a gap: branches (one a format or encoder) that sound one after the
// other, then volume and device. Engine thread only; every call returns at once or after a state change of GStreamer.
class SoundPipeline
{
public:
    virtual ~SoundPipeline() = default;

    // A new branch whose sound follows that of the branch before it, once that one has ended. Branch numbers rise.
    [[nodiscard]] virtual BranchId openBranch(SoundFormat format) = 0;
    virtual void push(BranchId branch, const QByteArray& bytes) = 0;
    // No more bytes for it; its sound plays out.
    virtual void endBranch(BranchId branch) = 0;

    // Sound goes to the device as soon as there is some. pause() falls silent at once and keeps everything.
    virtual void play() = 0;
    virtual void pause() = 0;

    // Linear factor, 0 to 1, on what is heard from now on; without a click. 1 when made.
    virtual void setVolume(float volume) = 0;

    // Seconds of sound that left the device since the pipeline was made, over all branches. Stands still in silence.
    [[nodiscard]] virtual double heardSeconds() const = 0;
    // Seconds of sound decoded since the pipeline was made: what is heard or waits in the device's buffer.
    [[nodiscard]] virtual double decodedSeconds() const = 0;
};

// One pipeline an item; destroying it ends the sound at once.
class SoundPipelineFactory
{
public:
    virtual ~SoundPipelineFactory() = default;

    [[nodiscard]] virtual std::unique_ptr<SoundPipeline> make(SoundPipelineListener& listener) = 0;
};

}
