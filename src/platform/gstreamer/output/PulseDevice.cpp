// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gstreamer/output/PulseDevice.h"

#include <QScopeGuard>

#include <algorithm>

namespace velarin {
namespace {

using namespace std::chrono_literals;

// Long enough for a busy desktop, short enough that a change of the volume is felt as immediate.
constexpr auto bufferLength = 200ms;
// How much room the server waits for before it asks for more.
constexpr auto requestLength = 40ms;
// Sound begins when so much is there, and at settle() with less.
constexpr auto startLength = 40ms;
constexpr auto openPatience = 1s;

constexpr auto frameBytes = qint64{ soundChannels } * qint64{ sizeof(float) };

class LoopLock
{
public:
    explicit LoopLock(pa_threaded_mainloop* loop)
        : m_loop(loop)
    {
        pa_threaded_mainloop_lock(m_loop);
    }
    ~LoopLock() { pa_threaded_mainloop_unlock(m_loop); }
    LoopLock(const LoopLock&) = delete;
    LoopLock& operator=(const LoopLock&) = delete;

private:
    pa_threaded_mainloop* m_loop;
};

uint32_t bytesOf(std::chrono::milliseconds length, int rate)
{
    return static_cast<uint32_t>(length.count() * rate / 1000 * frameBytes);
}

pa_context* makeContext(pa_threaded_mainloop* loop)
{
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, "Velarin");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, "com.brenholt.velarin");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ICON_NAME, "com.brenholt.velarin");
    pa_context* context = pa_context_new_with_proplist(pa_threaded_mainloop_get_api(loop), "Velarin", properties);
    pa_proplist_free(properties);
    return context;
}

pa_stream* makeStream(pa_context* context, int rate)
{
    const pa_sample_spec shape{ PA_SAMPLE_FLOAT32LE, static_cast<uint32_t>(rate), soundChannels };
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_MEDIA_ROLE, "music");
    pa_stream* stream = pa_stream_new_with_proplist(context, "Velarin", &shape, nullptr, properties);
    pa_proplist_free(properties);
    return stream;
}

void forget(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

}

PulseDevice::PulseDevice(Events events)
    : m_events(std::move(events))
    , m_loop(pa_threaded_mainloop_new())
    , m_lastMeasured(std::chrono::steady_clock::now())
{
    pa_threaded_mainloop_set_name(m_loop, "velarin-sound");
    m_context = makeContext(m_loop);
    pa_context_set_state_callback(m_context, &contextChanged, this);
    if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0)
        m_lost = true;
    pa_threaded_mainloop_start(m_loop);
}

PulseDevice::~PulseDevice()
{
    {
        const LoopLock lock(m_loop);
        stopTimer(m_openTimer);
        stopTimer(m_heardTimer);
        stopTimer(m_dryTimer);
        releaseStream();
        pa_context_set_state_callback(m_context, nullptr, nullptr);
        pa_context_disconnect(m_context);
        pa_context_unref(m_context);
    }
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

std::optional<AudioError> PulseDevice::open(int framesPerSecond, const QString& device)
{
    const LoopLock lock(m_loop);
    m_rate = framesPerSecond;
    restartTimer(m_openTimer, &openTookTooLong, openPatience);
    const auto stop = qScopeGuard([this] { stopTimer(m_openTimer); });
    const QByteArray name = device.toUtf8();
    const bool open = waitForContext() &&
                      ((!name.isEmpty() && connectStream(name.constData())) || (!m_lost && connectStream(nullptr)));
    if (open)
        return std::nullopt;
    m_lost = true;
    return error();
}

bool PulseDevice::waitForContext()
{
    while (!m_lost && !m_openTimedOut && !m_interrupted && pa_context_get_state(m_context) != PA_CONTEXT_READY)
        pa_threaded_mainloop_wait(m_loop);
    return !m_lost && !m_openTimedOut && !m_interrupted;
}

bool PulseDevice::connectStream(const char* device)
{
    releaseStream();
    m_stream = makeStream(m_context, m_rate);
    if (!m_stream)
        return false;
    pa_stream_set_state_callback(m_stream, &streamChanged, this);
    pa_stream_set_write_callback(m_stream, &writable, this);
    pa_stream_set_started_callback(m_stream, &started, this);
    pa_stream_set_underflow_callback(m_stream, &underflowed, this);
    pa_buffer_attr buffering{};
    buffering.maxlength = static_cast<uint32_t>(-1);
    buffering.tlength = bytesOf(bufferLength, m_rate);
    buffering.minreq = bytesOf(requestLength, m_rate);
    buffering.prebuf = bytesOf(startLength, m_rate);
    buffering.fragsize = static_cast<uint32_t>(-1);
    constexpr auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_INTERPOLATE_TIMING | PA_STREAM_AUTO_TIMING_UPDATE |
                                                          PA_STREAM_ADJUST_LATENCY | PA_STREAM_START_CORKED);
    // No volume: the program's own is applied before, and the one that the server keeps for the stream is the user's.
    if (pa_stream_connect_playback(m_stream, device, &buffering, flags, nullptr, nullptr) < 0)
        return false;
    while (!m_openTimedOut && !m_interrupted && pa_stream_get_state(m_stream) == PA_STREAM_CREATING)
        pa_threaded_mainloop_wait(m_loop);
    return pa_stream_get_state(m_stream) == PA_STREAM_READY;
}

void PulseDevice::releaseStream()
{
    if (!m_stream)
        return;
    pa_stream_set_state_callback(m_stream, nullptr, nullptr);
    pa_stream_set_write_callback(m_stream, nullptr, nullptr);
    pa_stream_set_started_callback(m_stream, nullptr, nullptr);
    pa_stream_set_underflow_callback(m_stream, nullptr, nullptr);
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
    m_stream = nullptr;
}

std::size_t PulseDevice::write(std::span<const float> samples)
{
    const LoopLock lock(m_loop);
    std::size_t taken = 0;
    while (taken < samples.size() && !m_lost && !m_interrupted) {
        const auto room = static_cast<qint64>(pa_stream_writable_size(m_stream)) / frameBytes;
        if (room <= 0) {
            pa_threaded_mainloop_wait(m_loop);
            continue;
        }
        const auto frames = std::min<qint64>(room, static_cast<qint64>(samples.size() - taken) / soundChannels);
        if (pa_stream_write(m_stream, samples.data() + taken, static_cast<size_t>(frames * frameBytes), nullptr, 0,
                PA_SEEK_RELATIVE) < 0) {
            lose();
            break;
        }
        taken += static_cast<std::size_t>(frames * soundChannels);
        m_written += frames;
        m_isDry = false;
        (void)measureHeardFrames();
    }
    return taken;
}

void PulseDevice::settle()
{
    const LoopLock lock(m_loop);
    if (m_stream && !m_lost && !m_paused && !m_isDry && m_awaitsHeard)
        forget(pa_stream_trigger(m_stream, nullptr, nullptr));
}

void PulseDevice::setPaused(bool paused)
{
    const LoopLock lock(m_loop);
    if (m_paused == paused || !m_stream || m_lost)
        return;
    m_paused = paused;
    forget(pa_stream_cork(m_stream, paused ? 1 : 0, nullptr, nullptr));
    m_awaitsHeard = true;
    stopTimer(m_heardTimer);
    stopTimer(m_dryTimer);
    if (!paused && !m_isDry)
        awaitHeard();
}

void PulseDevice::flush()
{
    const LoopLock lock(m_loop);
    if (!m_stream || m_lost)
        return;
    m_clockStart += measureHeardFrames();
    forget(pa_stream_flush(m_stream, nullptr, nullptr));
    m_written = 0;
    m_lastHeard = 0;
    m_isDry = true;
    m_awaitsHeard = true;
    stopTimer(m_heardTimer);
    stopTimer(m_dryTimer);
}

void PulseDevice::moveTo(const QString& device)
{
    const LoopLock lock(m_loop);
    if (!m_stream || m_lost)
        return;
    if (device.isEmpty())
        forget(pa_context_get_server_info(m_context, &gotDefaultDevice, this));
    else
        moveStream(device.toUtf8().constData());
}

void PulseDevice::moveStream(const char* device)
{
    if (m_stream && device)
        forget(pa_context_move_sink_input_by_name(m_context, pa_stream_get_index(m_stream), device, nullptr, nullptr));
}

void PulseDevice::gotDefaultDevice(pa_context* /*context*/, const pa_server_info* server, void* self)
{
    if (server)
        static_cast<PulseDevice*>(self)->moveStream(server->default_sink_name);
}

void PulseDevice::setInterrupted(bool interrupted)
{
    const LoopLock lock(m_loop);
    m_interrupted = interrupted;
    pa_threaded_mainloop_signal(m_loop, 0);
}

bool PulseDevice::isLost() const
{
    const LoopLock lock(m_loop);
    return m_lost;
}

bool PulseDevice::isDry() const
{
    const LoopLock lock(m_loop);
    return m_isDry;
}

qint64 PulseDevice::heardFrames() const
{
    const LoopLock lock(m_loop);
    return measureHeardFrames();
}

AudioError PulseDevice::error() const
{
    const QString text =
        m_openTimedOut
            ? QStringLiteral("sound server: no answer")
            : QStringLiteral("sound server: %1").arg(QString::fromUtf8(pa_strerror(pa_context_errno(m_context))));
    return { AudioErrorDomain::gstResource, GstError::resourceNoDevice, text };
}

}
