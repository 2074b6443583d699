// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/AlsaDevice.h"

#include <gst/app/gstappsrc.h>
#include <gst/audio/gstaudiobasesink.h>

#include <algorithm>

namespace velarin {
namespace {

using namespace std::chrono_literals;

constexpr auto description = "appsrc name=source format=time block=true max-bytes=4096 "
                             "caps=audio/x-raw,format=F32LE,layout=interleaved,channels=2,rate=%1 "
                             "! audioconvert ! audioresample "
                             "! alsasink name=sink sync=false async=false buffer-time=200000 latency-time=40000";
constexpr qint64 frameBytes = soundChannels * sizeof(float);
// Between two looks at the device's clock.
constexpr auto lookStep = 20ms;

AudioError noDevice(const QString& text)
{
    return { AudioErrorDomain::gstResource, GstError::resourceNoDevice, text };
}

}

AlsaDevice::AlsaDevice(Events events)
    : m_events(std::move(events))
{
}

AlsaDevice::~AlsaDevice()
{
    m_watcher = {};
    if (!m_pipeline)
        return;
    gst_element_set_state(m_pipeline, GST_STATE_NULL);
    gst_object_unref(m_source);
    gst_object_unref(m_sink);
    gst_object_unref(m_pipeline);
}

std::optional<AudioError> AlsaDevice::open(int framesPerSecond, const QString& /*device*/)
{
    m_rate = framesPerSecond;
    const QByteArray text = QString::fromLatin1(description).arg(framesPerSecond).toLatin1();
    m_pipeline = gst_parse_launch(text.constData(), nullptr);
    m_source = m_pipeline ? gst_bin_get_by_name(GST_BIN(m_pipeline), "source") : nullptr;
    m_sink = m_pipeline ? gst_bin_get_by_name(GST_BIN(m_pipeline), "sink") : nullptr;
    if (!m_source || !m_sink)
        return noDevice(QStringLiteral("ALSA: no plugin"));
    GstBus* bus = gst_element_get_bus(m_pipeline);
    gst_bus_set_sync_handler(bus, &heardOfTrouble, this, nullptr);
    gst_object_unref(bus);
    if (gst_element_set_state(m_pipeline, GST_STATE_PAUSED) == GST_STATE_CHANGE_FAILURE)
        return noDevice(QStringLiteral("ALSA: no device"));
    m_watcher = std::jthread([this](const std::stop_token& stop) { watch(stop); });
    return std::nullopt;
}

std::size_t AlsaDevice::write(std::span<const float> samples)
{
    if (m_lost || m_interrupted)
        return 0;
    GstBuffer* buffer = gst_buffer_new_memdup(samples.data(), samples.size_bytes());
    if (gst_app_src_push_buffer(GST_APP_SRC(m_source), buffer) != GST_FLOW_OK)
        return 0;
    m_written += static_cast<qint64>(samples.size()) / soundChannels;
    if (m_dry.exchange(false))
        m_changed.notify_all();
    return samples.size();
}

void AlsaDevice::setPaused(bool paused)
{
    if (m_paused.exchange(paused) == paused || m_interrupted)
        return;
    gst_element_set_state(m_pipeline, paused ? GST_STATE_PAUSED : GST_STATE_PLAYING);
    const std::scoped_lock lock(m_mutex);
    m_awaitsHeard = true;
    m_changed.notify_all();
}

void AlsaDevice::flush()
{
    const std::scoped_lock lock(m_mutex);
    m_written = 0;
    m_dry = true;
    m_awaitsHeard = true;
}

void AlsaDevice::setInterrupted(bool interrupted)
{
    if (!m_pipeline || m_interrupted.exchange(interrupted) == interrupted)
        return;
    // In READY a push that waits returns, and what the device holds is forgotten.
    gst_element_set_state(m_pipeline, interrupted ? GST_STATE_READY : m_paused ? GST_STATE_PAUSED : GST_STATE_PLAYING);
}

qint64 AlsaDevice::heardFrames() const
{
    if (!m_sink || m_dry)
        return m_written;
    auto* sink = GST_AUDIO_BASE_SINK(m_sink);
    GstAudioRingBuffer* ring = sink->ringbuffer;
    qint64 waiting = static_cast<qint64>(gst_app_src_get_current_level_bytes(GST_APP_SRC(m_source))) / frameBytes;
    if (ring && gst_audio_ring_buffer_is_acquired(ring) && sink->next_sample != GST_BUFFER_OFFSET_NONE) {
        const auto done = static_cast<qint64>(gst_audio_ring_buffer_samples_done(ring));
        waiting += static_cast<qint64>(sink->next_sample) - done + gst_audio_ring_buffer_delay(ring);
    }
    return std::clamp<qint64>(m_written - waiting, 0, m_written);
}

GstBusSyncReply AlsaDevice::heardOfTrouble(GstBus* /*bus*/, GstMessage* message, void* self)
{
    auto& device = *static_cast<AlsaDevice*>(self);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        device.m_lost = true;
        device.m_changed.notify_all();
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void AlsaDevice::watch(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    while (m_changed.wait(lock, stop, [this] { return m_lost || (!m_paused && !m_dry); })) {
        if (m_lost) {
            // In READY a push that waits for the dead device returns.
            gst_element_set_state(m_pipeline, GST_STATE_READY);
            m_events.dry();
            return;
        }
        look();
        m_changed.wait_for(lock, stop, lookStep, [this] { return m_lost.load(); });
    }
}

void AlsaDevice::look()
{
    const qint64 heard = heardFrames();
    if (m_awaitsHeard && heard > 0) {
        m_awaitsHeard = false;
        m_events.heard();
    }
    if (heard < m_written)
        return;
    m_dry = true;
    m_awaitsHeard = true;
    m_events.dry();
}

}
