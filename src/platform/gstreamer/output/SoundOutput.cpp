// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/SoundOutput.h"

#include "platform/gstreamer/output/PulseDevice.h"

#include <gst/app/gstappsink.h>

namespace velarin {
namespace {

constexpr int bestRate = 48000;
constexpr int usualRate = 44100;

}

SoundOutput::SoundOutput(std::shared_ptr<DeviceSelection> selection, Events events)
    : m_events(std::move(events))
    , m_selection(std::move(selection))
    , m_element(gst_element_factory_make("appsink", "velarin-sound-output"))
    , m_prepared(std::make_shared<PulseDevice>(deviceEvents()))
{
    gst_object_ref_sink(m_element);
    GstCaps* caps =
        gst_caps_from_string("audio/x-raw, format=F32LE, layout=interleaved, channels=2, rate={44100, 48000}");
    g_object_set(m_element, "caps", caps, "sync", FALSE, "async", FALSE, "enable-last-sample", FALSE, nullptr);
    gst_caps_unref(caps);
    GstAppSinkCallbacks callbacks{};
    callbacks.new_sample = [](GstAppSink* sink, void* self) { return takeSample(GST_ELEMENT(sink), self); };
    gst_app_sink_set_callbacks(GST_APP_SINK(m_element), &callbacks, this, nullptr);
    GstPad* pad = gst_element_get_static_pad(m_element, "sink");
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_EVENT_FLUSH, &watchFlushes, this, nullptr);
    gst_object_unref(pad);
    m_subscription = m_selection->subscribe([this](const QString& chosen) {
        if (const auto present = device())
            present->moveTo(chosen);
    });
}

SoundOutput::~SoundOutput()
{
    close();
    m_subscription.reset();
    gst_object_unref(m_element);
}

GstCaps* SoundOutput::makeCaps(int framesPerSecond)
{
    return gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, "F32LE", "layout", G_TYPE_STRING, "interleaved",
        "channels", G_TYPE_INT, soundChannels, "rate", G_TYPE_INT, framesPerSecond, nullptr);
}

int SoundOutput::outputRateFor(int framesPerSecond)
{
    // Whole multiples are the kindest to the sound: 48,000 is one of 24,000, 16,000, 12,000 and 8,000.
    return framesPerSecond > 0 && bestRate % framesPerSecond == 0 ? bestRate
           : framesPerSecond > bestRate                           ? bestRate
                                                                  : usualRate;
}

void SoundOutput::setPaused(bool paused)
{
    const std::scoped_lock lock(m_mutex);
    m_paused = paused;
    if (!paused)
        m_failed = false;
    if (m_device)
        m_device->setPaused(paused);
    m_changed.notify_all();
}

void SoundOutput::setVolume(float volume)
{
    m_volume = volume;
}

void SoundOutput::settle()
{
    if (const auto present = device())
        present->settle();
}

void SoundOutput::close()
{
    const std::scoped_lock lock(m_mutex);
    m_closed = true;
    if (m_device) {
        m_device->setPaused(true);
        m_device->setInterrupted(true);
    }
    if (m_prepared)
        m_prepared->setInterrupted(true);
    m_changed.notify_all();
}

bool SoundOutput::isDry() const
{
    const auto present = device();
    return !present || present->isDry();
}

double SoundOutput::takenSeconds() const
{
    const int rate = m_rate;
    return rate == 0 ? 0.0 : static_cast<double>(m_taken) / rate;
}

double SoundOutput::heardSeconds() const
{
    const std::scoped_lock lock(m_mutex);
    const int rate = m_rate;
    const qint64 heard = m_heardBefore + (m_device ? m_device->heardFrames() : 0);
    return rate == 0 ? 0.0 : static_cast<double>(heard) / rate;
}

std::shared_ptr<SoundDevice> SoundOutput::device() const
{
    const std::scoped_lock lock(m_mutex);
    return m_device;
}

SoundDevice::Events SoundOutput::deviceEvents()
{
    return { .heard = [this] { m_events.heard(); }, .dry = [this] { m_events.dry(); } };
}

GstPadProbeReturn SoundOutput::watchFlushes(GstPad* /*pad*/, GstPadProbeInfo* info, void* self)
{
    const auto type = GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info));
    if (type == GST_EVENT_FLUSH_START)
        static_cast<SoundOutput*>(self)->beginFlush();
    else if (type == GST_EVENT_FLUSH_STOP)
        static_cast<SoundOutput*>(self)->endFlush();
    return GST_PAD_PROBE_OK;
}

void SoundOutput::beginFlush()
{
    const std::scoped_lock lock(m_mutex);
    m_flushing = true;
    if (m_device)
        m_device->setInterrupted(true);
    m_changed.notify_all();
}

void SoundOutput::endFlush()
{
    const std::scoped_lock lock(m_mutex);
    m_flushing = false;
    m_history.reset();
    m_heardBefore = 0;
    m_taken = 0;
    if (m_device) {
        m_device->flush();
        m_device->setInterrupted(m_closed);
    }
}

}
