// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/gstreamer/output/SoundDevice.h"

#include <gst/gst.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace velarin {

// ALSA's default device, for machines without a sound server: a little pipeline around GStreamer's own sink.
class AlsaDevice final : public SoundDevice
{
public:
    explicit AlsaDevice(Events events);
    ~AlsaDevice() override;
    AlsaDevice(const AlsaDevice&) = delete;
    AlsaDevice& operator=(const AlsaDevice&) = delete;

    // There is one device only: the default.
    std::optional<AudioError> open(int framesPerSecond, const QString& device) override;
    std::size_t write(std::span<const float> samples) override;
    void settle() override {}
    void setPaused(bool paused) override;
    void flush() override;
    void moveTo(const QString& /*device*/) override {}
    void setInterrupted(bool interrupted) override;
    bool isLost() const override { return m_lost; }
    bool isDry() const override { return m_dry; }
    qint64 heardFrames() const override;

private:
    static GstBusSyncReply heardOfTrouble(GstBus* bus, GstMessage* message, void* self);
    void watch(const std::stop_token& stop);
    // With the lock held.
    void look();

    Events m_events;
    GstElement* m_pipeline{ nullptr };
    GstElement* m_source{ nullptr };
    GstElement* m_sink{ nullptr };
    int m_rate{ 0 };
    std::atomic<bool> m_lost{ false };
    std::atomic<bool> m_dry{ true };
    std::atomic<bool> m_paused{ true };
    std::atomic<bool> m_interrupted{ false };
    std::atomic<qint64> m_written{ 0 };

    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    // Protected by the mutex.
    bool m_awaitsHeard{ true };

    // Follows the device's clock while there is sound in it. Last, so that it ends first.
    std::jthread m_watcher;
};

}
