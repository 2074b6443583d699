// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"

#include <QString>

#include <functional>
#include <optional>
#include <span>

namespace velarin {

// Sound as every device takes it: interleaved stereo, 32-bit floats, nominally -1 to 1.
constexpr int soundChannels = 2;

// Where sound leaves the program. A device lives from its opening to its loss; SoundOutput replaces it then.
//
// write() is called by one thread at a time, everything else from any thread. The events come from threads of the
// device with its lock held: whoever gets one posts it on and calls nothing of the device.
class SoundDevice
{
public:
    struct Events
    {
        // The device's clock moves with sound in it: for the first time since sound was written to it, since it ran
        // dry, or since it was paused.
        std::function<void()> heard;
        // Everything written was heard. Also when the device was lost: nothing more will be heard from it.
        std::function<void()> dry;
    };

    virtual ~SoundDevice() = default;

    // Waits until the device takes sound, or says why it does not. `device` is the sound server's name of it; where it
    // does not exist, and for the empty text, the default is taken. It begins paused.
    [[nodiscard]] virtual std::optional<AudioError> open(int framesPerSecond, const QString& device) = 0;

    // Waits for room until everything is written, or the device is lost or was interrupted. Returns the samples taken.
    [[nodiscard]] virtual std::size_t write(std::span<const float> samples) = 0;
    // What was written so far shall sound although it is little: nothing more comes for now.
    virtual void settle() = 0;

    // Silent at once, keeping what it holds; or goes on.
    virtual void setPaused(bool paused) = 0;
    // Forgets what it holds.
    virtual void flush() = 0;
    // Moves the sound to another device without a break, where it can.
    virtual void moveTo(const QString& device) = 0;
    // A write under way returns, and so does every later one, until it is lifted.
    virtual void setInterrupted(bool interrupted) = 0;

    [[nodiscard]] virtual bool isLost() const = 0;
    // Whether everything written was heard.
    [[nodiscard]] virtual bool isDry() const = 0;
    // Frames heard since it was opened or flushed. After the loss the last value, as exact as is known.
    [[nodiscard]] virtual qint64 heardFrames() const = 0;
};

}
