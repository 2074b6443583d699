// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ears/Ear.h"

#include <pulse/simple.h>

namespace velarin::test {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t chunkFrames = Ear::framesPerSecond / 100;
constexpr auto retry = 10ms;

pa_simple* openMonitor(const QByteArray& server, const QByteArray& source)
{
    const pa_sample_spec shape{ PA_SAMPLE_FLOAT32LE, Ear::framesPerSecond, 1 };
    pa_buffer_attr buffering{};
    buffering.maxlength = static_cast<uint32_t>(-1);
    buffering.fragsize = chunkFrames * sizeof(float);
    return pa_simple_new(server.constData(), "Ear", PA_STREAM_RECORD, source.constData(), "listening", &shape, nullptr,
        &buffering, nullptr);
}

}

Ear::Ear(const QString& server, const QString& device)
    : m_server(server.toUtf8())
    , m_source(device.toUtf8() + ".monitor")
    , m_thread([this](std::stop_token stop) { listen(std::move(stop)); })
{
}

Ear::~Ear() = default;

bool Ear::isListening(std::chrono::milliseconds patience) const
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!m_listening && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(1ms);
    return m_listening;
}

double Ear::now() const
{
    const std::scoped_lock lock(m_mutex);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
}

std::vector<float> Ear::recording() const
{
    const std::scoped_lock lock(m_mutex);
    return m_samples;
}

EarReport Ear::report(double start) const
{
    const std::vector<float> samples = recording();
    const auto first = std::min(samples.size(), static_cast<std::size_t>(std::max(0.0, start) * framesPerSecond));
    return judge(std::span(samples).subspan(first), framesPerSecond);
}

void Ear::listen(std::stop_token stop)
{
    while (!stop.stop_requested()) {
        listenOnce(stop);
        std::this_thread::sleep_for(retry);
    }
}

void Ear::listenOnce(const std::stop_token& stop)
{
    pa_simple* monitor = openMonitor(m_server, m_source);
    if (!monitor)
        return;
    bridgeAbsence();
    std::vector<float> chunk(chunkFrames);
    while (!stop.stop_requested() && pa_simple_read(monitor, chunk.data(), chunk.size() * sizeof(float), nullptr) == 0)
        append(chunk);
    pa_simple_free(monitor);
}

void Ear::append(const std::vector<float>& samples)
{
    const std::scoped_lock lock(m_mutex);
    m_samples.insert(m_samples.end(), samples.begin(), samples.end());
    // The first chunk that came without delay tells best when the recording began.
    const auto length = std::chrono::duration_cast<std::chrono::steady_clock::duration>(
        std::chrono::duration<double>(static_cast<double>(m_samples.size()) / framesPerSecond));
    const auto start = std::chrono::steady_clock::now() - length;
    if (!m_listening || start < m_start)
        m_start = start;
    m_listening = true;
}

void Ear::bridgeAbsence()
{
    if (!m_listening)
        return;
    const auto missing = now() * framesPerSecond;
    const std::scoped_lock lock(m_mutex);
    if (missing > static_cast<double>(m_samples.size()))
        m_samples.resize(static_cast<std::size_t>(missing));
}

}
