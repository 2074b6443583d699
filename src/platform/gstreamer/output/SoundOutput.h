// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/gstreamer/output/DeviceSelection.h"
#include "platform/gstreamer/output/SoundDevice.h"
#include "platform/gstreamer/output/SoundHistory.h"
#include "platform/gstreamer/output/VolumeRamp.h"

#include <gst/gst.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace velarin {

// The end of every pipeline: an element that takes sound, brings it to the volume and plays it on PulseAudio's device,
// or ALSA's where there is no such server.
//
// Sound is played as soon as it comes; the device's pace holds the pipeline back, so there is no clock to miss. Pausing
// is done here and not with GStreamer's states: the pipeline stays in PLAYING. A device that is lost is replaced by
// the default one within a second, and the sound that it was lost with is played again there; the pipeline's thread,
// which waits anyway, does that.
//
// The element belongs to the pipeline it is put in. close() comes before that pipeline is stopped, which it could not
// be while its thread waits for the device. All functions from any thread.
class SoundOutput
{
public:
    struct Events
    {
        // See SoundDevice::Events.
        std::function<void()> heard;
        std::function<void()> dry;
        // No device could be opened: at once at the start, within a second after a loss. Silent until setPaused(false)
        // is called again.
        std::function<void(const AudioErrorChain&)> failed;
    };

    // Begins paused. The events come from other threads and may come from inside calls.
    SoundOutput(std::shared_ptr<DeviceSelection> selection, Events events);
    ~SoundOutput();
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;

    // A sink for raw sound of any rate that outputRateFor() gives; what has another goes through a converter first.
    [[nodiscard]] GstElement* element() const { return m_element; }
    // The caps that it takes, at this rate.
    [[nodiscard]] static GstCaps* makeCaps(int framesPerSecond);
    // The rate to convert to: a lasting one, since a change would interrupt the sound.
    [[nodiscard]] static int outputRateFor(int framesPerSecond);

    void setPaused(bool paused);
    // Linear factor, 0 to 1.
    void setVolume(float volume);
    // No more sound comes for now: what is there shall be heard although it is little.
    void settle();
    // Silent for good; the pipeline's thread is let go.
    void close();

    [[nodiscard]] bool isDry() const;
    // Seconds since the start, and those of them that came out of the device.
    [[nodiscard]] double takenSeconds() const;
    [[nodiscard]] double heardSeconds() const;

private:
    static GstFlowReturn takeSample(GstElement* sink, void* self);
    static GstPadProbeReturn watchFlushes(GstPad* pad, GstPadProbeInfo* info, void* self);

    // On the pipeline's thread.
    void take(GstBuffer* buffer, int framesPerSecond);
    void changeRate(int framesPerSecond);
    void play(std::span<const float> samples);
    bool waitUntilWanted();
    std::shared_ptr<SoundDevice> openedDevice();
    std::shared_ptr<SoundDevice> preparedDevice();
    std::shared_ptr<SoundDevice> open(const std::shared_ptr<SoundDevice>& candidate);
    void letGo(const std::shared_ptr<SoundDevice>& lost);
    void fail();
    bool rest(std::chrono::milliseconds time);

    std::shared_ptr<SoundDevice> device() const;
    SoundDevice::Events deviceEvents();
    void beginFlush();
    void endFlush();

    Events m_events;
    std::shared_ptr<DeviceSelection> m_selection;
    GstElement* m_element{ nullptr };
    std::atomic<float> m_volume{ 1.0F };
    std::atomic<int> m_rate{ 0 };
    std::atomic<qint64> m_taken{ 0 };

    // The pipeline's thread alone.
    std::optional<VolumeRamp> m_ramp;
    std::optional<SoundHistory> m_history;
    AudioErrorChain m_failure;
    bool m_hasPlayed{ false };

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    // Protected by the mutex.
    // Connecting but not yet open, so that the first sound need not wait.
    std::shared_ptr<SoundDevice> m_prepared;
    std::shared_ptr<SoundDevice> m_device;
    // Frames heard before the present device.
    qint64 m_heardBefore{ 0 };
    bool m_paused{ true };
    bool m_failed{ false };
    bool m_flushing{ false };
    bool m_closed{ false };

    // Last: what it calls is whole while it lives.
    std::unique_ptr<DeviceSelection::Subscription> m_subscription;
};

}
