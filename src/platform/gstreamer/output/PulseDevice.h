// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/gstreamer/output/SoundDevice.h"

#include <pulse/pulseaudio.h>

#include <chrono>

namespace velarin {

// A stream of PulseAudio's protocol, which PipeWire speaks too.
//
// It is written here and not left to GStreamer's own sink, because that one asks the server to run on through an
// underrun and writes at absolute places: what comes after a dry spell is then lost, and nobody is told that the sound
// ran dry. This stream stands still while it is empty, so that its clock counts exactly what was heard.
class PulseDevice final : public SoundDevice
{
public:
    // Begins to connect at once, so that open() need not wait for it.
    explicit PulseDevice(Events events);
    ~PulseDevice() override;
    PulseDevice(const PulseDevice&) = delete;
    PulseDevice& operator=(const PulseDevice&) = delete;

    std::optional<AudioError> open(int framesPerSecond, const QString& device) override;
    std::size_t write(std::span<const float> samples) override;
    void settle() override;
    void setPaused(bool paused) override;
    void flush() override;
    void moveTo(const QString& device) override;
    void setInterrupted(bool interrupted) override;
    bool isLost() const override;
    bool isDry() const override;
    qint64 heardFrames() const override;

private:
    static void contextChanged(pa_context* context, void* self);
    static void streamChanged(pa_stream* stream, void* self);
    static void writable(pa_stream* stream, size_t bytes, void* self);
    static void started(pa_stream* stream, void* self);
    static void underflowed(pa_stream* stream, void* self);
    static void openTookTooLong(pa_mainloop_api* api, pa_time_event* event, const timeval* time, void* self);
    static void lookedWhetherHeard(pa_mainloop_api* api, pa_time_event* event, const timeval* time, void* self);
    static void lookedWhetherDry(pa_mainloop_api* api, pa_time_event* event, const timeval* time, void* self);
    static void gotDefaultDevice(pa_context* context, const pa_server_info* server, void* self);

    // All of these with the loop's lock held.
    bool waitForContext();
    bool connectStream(const char* device);
    void releaseStream();
    void lose();
    void awaitHeard();
    void tellHeard();
    void tellDry();
    void moveStream(const char* device);
    void restartTimer(pa_time_event*& timer, pa_time_event_cb_t callback, std::chrono::microseconds delay);
    void stopTimer(pa_time_event*& timer);
    qint64 measureHeardFrames() const;
    AudioError error() const;

    Events m_events;
    pa_threaded_mainloop* m_loop{ nullptr };

    // What follows is protected by the loop's lock.
    pa_context* m_context{ nullptr };
    pa_stream* m_stream{ nullptr };
    pa_time_event* m_openTimer{ nullptr };
    pa_time_event* m_heardTimer{ nullptr };
    pa_time_event* m_dryTimer{ nullptr };
    int m_rate{ 0 };
    bool m_paused{ true };
    bool m_interrupted{ false };
    bool m_lost{ false };
    bool m_openTimedOut{ false };
    bool m_awaitsHeard{ true };
    bool m_isDry{ true };
    // Frames, since the stream was opened or flushed.
    qint64 m_written{ 0 };
    // What the server's clock said when the frames were counted from zero.
    qint64 m_clockStart{ 0 };
    qint64 m_heardAtAwait{ 0 };
    qint64 m_writtenAtUnderflow{ 0 };
    // The last measurement, to go on from when the server can no longer be asked.
    mutable qint64 m_lastHeard{ 0 };
    mutable std::chrono::steady_clock::time_point m_lastMeasured;
};

}
