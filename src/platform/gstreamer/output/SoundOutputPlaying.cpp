// SPDX-License-Identifier: GPL-3.0-or-later
// What runs on the pipeline's thread: taking sound, playing it, and opening a device when there is none.
#include "platform/gstreamer/output/AlsaDevice.h"
#include "platform/gstreamer/output/PulseDevice.h"
#include "platform/gstreamer/output/SoundOutput.h"

#include <gst/app/gstappsink.h>

namespace velarin {
namespace {

using namespace std::chrono_literals;

// A step of the volume lasts so long.
constexpr auto rampLength = 15ms;
// More than any device holds.
constexpr auto historyLength = 1s;
// A lost device is looked for so often and so long.
constexpr auto reopenStep = 100ms;
constexpr auto reopenPatience = 1s;
// How long the end of sound of another rate is waited for.
constexpr int longestDryingSteps = 50;
constexpr auto dryingStep = 10ms;

qint64 framesIn(std::chrono::milliseconds length, int rate)
{
    return length.count() * rate / 1000;
}

}

GstFlowReturn SoundOutput::takeSample(GstElement* sink, void* self)
{
    GstSample* sample = gst_app_sink_pull_sample(GST_APP_SINK(sink));
    if (!sample)
        return GST_FLOW_EOS;
    int rate = 0;
    gst_structure_get_int(gst_caps_get_structure(gst_sample_get_caps(sample), 0), "rate", &rate);
    static_cast<SoundOutput*>(self)->take(gst_sample_get_buffer(sample), rate);
    gst_sample_unref(sample);
    return GST_FLOW_OK;
}

void SoundOutput::take(GstBuffer* buffer, int framesPerSecond)
{
    if (m_rate != framesPerSecond)
        changeRate(framesPerSecond);
    if (!m_history)
        m_history.emplace(framesIn(historyLength, framesPerSecond));
    std::vector<float> samples(gst_buffer_get_size(buffer) / sizeof(float));
    gst_buffer_extract(buffer, 0, samples.data(), samples.size() * sizeof(float));
    m_taken += static_cast<qint64>(samples.size()) / soundChannels;
    m_ramp->apply(samples, m_volume);
    m_history->append(samples);
    play(samples);
}

void SoundOutput::changeRate(int framesPerSecond)
{
    if (const auto present = device()) {
        present->settle();
        for (int step = 0; step < longestDryingSteps && !present->isDry() && rest(dryingStep); ++step) {
        }
        letGo(present);
    }
    m_hasPlayed = false;
    m_history.reset();
    m_ramp.emplace(static_cast<int>(framesIn(rampLength, framesPerSecond)));
    const std::scoped_lock lock(m_mutex);
    m_rate = framesPerSecond;
    m_heardBefore = 0;
    m_taken = 0;
}

void SoundOutput::play(std::span<const float> samples)
{
    std::vector<float> replayed;
    while (!samples.empty() && waitUntilWanted()) {
        const auto present = openedDevice();
        if (!present)
            continue;
        samples = samples.subspan(present->write(samples));
        if (!present->isLost())
            continue;
        letGo(present);
        replayed = m_history->from(m_heardBefore);
        samples = replayed;
    }
}

bool SoundOutput::waitUntilWanted()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] {
        const bool mayOpen = m_device || !m_hasPlayed || !m_paused;
        return m_closed || m_flushing || (!m_failed && mayOpen);
    });
    return !m_closed && !m_flushing;
}

std::shared_ptr<SoundDevice> SoundOutput::openedDevice()
{
    if (const auto present = device())
        return present;
    // A server that was just lost is given its time, and not robbed of its card by ALSA while it starts again.
    const auto deadline = std::chrono::steady_clock::now() + (m_hasPlayed ? reopenPatience : 0ms);
    do {
        if (const auto opened = open(preparedDevice()))
            return opened;
    } while (std::chrono::steady_clock::now() < deadline && rest(reopenStep));
    if (const auto opened = open(std::make_shared<AlsaDevice>(deviceEvents())))
        return opened;
    fail();
    return nullptr;
}

std::shared_ptr<SoundDevice> SoundOutput::preparedDevice()
{
    const std::scoped_lock lock(m_mutex);
    return m_prepared ? m_prepared : std::make_shared<PulseDevice>(deviceEvents());
}

std::shared_ptr<SoundDevice> SoundOutput::open(const std::shared_ptr<SoundDevice>& candidate)
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_closed)
            return nullptr;
        m_prepared = candidate;
    }
    const auto error = candidate->open(m_rate, m_selection->selected());
    const std::scoped_lock lock(m_mutex);
    m_prepared.reset();
    if (error) {
        m_failure = { *error };
        return nullptr;
    }
    m_hasPlayed = true;
    m_device = candidate;
    m_device->setPaused(m_paused);
    m_device->setInterrupted(m_closed || m_flushing);
    return m_device;
}

void SoundOutput::letGo(const std::shared_ptr<SoundDevice>& lost)
{
    const std::scoped_lock lock(m_mutex);
    m_heardBefore += lost->heardFrames();
    m_device.reset();
}

void SoundOutput::fail()
{
    {
        const std::scoped_lock lock(m_mutex);
        if (m_closed || m_flushing)
            return;
        m_failed = true;
        m_hasPlayed = false;
    }
    m_events.failed(m_failure);
}

bool SoundOutput::rest(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    return !m_changed.wait_for(lock, time, [this] { return m_closed || m_flushing; });
}

}
