// SPDX-License-Identifier: GPL-3.0-or-later
// What the server tells, on the loop's thread with its lock held.
#include "platform/gstreamer/output/PulseDevice.h"

#include <algorithm>

namespace velarin {
namespace {

using namespace std::chrono_literals;

constexpr auto heardStep = 10ms;
// A sink that reports a longer way than this to the ear is not believed.
constexpr pa_usec_t longestLatency = 500000;

}

void PulseDevice::contextChanged(pa_context* context, void* self)
{
    auto& device = *static_cast<PulseDevice*>(self);
    if (!PA_CONTEXT_IS_GOOD(pa_context_get_state(context)))
        device.lose();
    pa_threaded_mainloop_signal(device.m_loop, 0);
}

void PulseDevice::streamChanged(pa_stream* stream, void* self)
{
    auto& device = *static_cast<PulseDevice*>(self);
    // A stream that never became ready asked for a device that does not exist: another may.
    const bool isOpening = device.m_openTimer != nullptr;
    if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream)) && !isOpening)
        device.lose();
    pa_threaded_mainloop_signal(device.m_loop, 0);
}

void PulseDevice::writable(pa_stream* /*stream*/, size_t /*bytes*/, void* self)
{
    pa_threaded_mainloop_signal(static_cast<PulseDevice*>(self)->m_loop, 0);
}

void PulseDevice::started(pa_stream* /*stream*/, void* self)
{
    static_cast<PulseDevice*>(self)->awaitHeard();
}

void PulseDevice::underflowed(pa_stream* stream, void* self)
{
    auto& device = *static_cast<PulseDevice*>(self);
    if (device.m_isDry || device.m_paused)
        return;
    // The server has nothing left; the card still plays what it has.
    device.m_writtenAtUnderflow = device.m_written;
    pa_usec_t latency = 0;
    int isNegative = 0;
    if (pa_stream_get_latency(stream, &latency, &isNegative) < 0 || isNegative != 0)
        latency = 0;
    device.restartTimer(
        device.m_dryTimer, &lookedWhetherDry, std::chrono::microseconds(std::min(latency, longestLatency)));
}

void PulseDevice::openTookTooLong(
    pa_mainloop_api* /*api*/, pa_time_event* /*event*/, const timeval* /*time*/, void* self)
{
    auto& device = *static_cast<PulseDevice*>(self);
    device.m_openTimedOut = true;
    pa_threaded_mainloop_signal(device.m_loop, 0);
}

void PulseDevice::lose()
{
    if (m_lost)
        return;
    (void)measureHeardFrames();
    m_lost = true;
    stopTimer(m_heardTimer);
    stopTimer(m_dryTimer);
    tellDry();
    pa_threaded_mainloop_signal(m_loop, 0);
}

void PulseDevice::awaitHeard()
{
    m_heardAtAwait = measureHeardFrames();
    m_awaitsHeard = true;
    restartTimer(m_heardTimer, &lookedWhetherHeard, heardStep);
}

void PulseDevice::lookedWhetherHeard(
    pa_mainloop_api* /*api*/, pa_time_event* /*event*/, const timeval* /*time*/, void* self)
{
    auto& device = *static_cast<PulseDevice*>(self);
    if (device.m_paused)
        return;
    // Looked again also when all that was written seems to be heard: the clock is an estimate and may run ahead of a
    // stream that has just begun. A stream that is really dry is told by its underflow.
    if (device.measureHeardFrames() > device.m_heardAtAwait)
        device.tellHeard();
    else
        device.restartTimer(device.m_heardTimer, &lookedWhetherHeard, heardStep);
}

void PulseDevice::lookedWhetherDry(
    pa_mainloop_api* /*api*/, pa_time_event* /*event*/, const timeval* /*time*/, void* self)
{
    auto& device = *static_cast<PulseDevice*>(self);
    // Sound that came in the meantime plays on.
    if (!device.m_paused && device.m_written == device.m_writtenAtUnderflow)
        device.tellDry();
}

void PulseDevice::tellHeard()
{
    m_awaitsHeard = false;
    stopTimer(m_heardTimer);
    m_events.heard();
}

void PulseDevice::tellDry()
{
    if (m_awaitsHeard && !m_isDry && !m_lost)
        tellHeard();
    m_isDry = true;
    if (!m_lost)
        m_lastHeard = m_written;
    m_awaitsHeard = true;
    m_events.dry();
}

void PulseDevice::restartTimer(pa_time_event*& timer, pa_time_event_cb_t callback, std::chrono::microseconds delay)
{
    stopTimer(timer);
    timer = pa_context_rttime_new(m_context, pa_rtclock_now() + static_cast<pa_usec_t>(delay.count()), callback, this);
}

void PulseDevice::stopTimer(pa_time_event*& timer)
{
    if (timer)
        pa_threaded_mainloop_get_api(m_loop)->time_free(timer);
    timer = nullptr;
}

qint64 PulseDevice::measureHeardFrames() const
{
    const auto now = std::chrono::steady_clock::now();
    pa_usec_t time = 0;
    if (m_isDry)
        return m_lastHeard;
    if (m_stream && !m_lost && pa_stream_get_time(m_stream, &time) == 0) {
        m_lastHeard = static_cast<qint64>(time) * m_rate / 1'000'000 - m_clockStart;
    } else if (m_stream && !m_lost && !m_paused) {
        // The server does not answer any more: it played on from where it was.
        const std::chrono::duration<double> since = now - m_lastMeasured;
        m_lastHeard += static_cast<qint64>(since.count() * m_rate);
    }
    m_lastMeasured = now;
    m_lastHeard = std::clamp<qint64>(m_lastHeard, 0, m_written);
    return m_lastHeard;
}

}
