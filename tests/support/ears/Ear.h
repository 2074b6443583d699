// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/ears/EarReport.h"

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

namespace velarin::test {

// Listens to a device of a sound server from its construction on, through the device's monitor. While the server is
// away it hears silence, and listens again when it is back.
class Ear
{
public:
    static constexpr int framesPerSecond = 44100;

    // `server` as PULSE_SERVER takes it.
    Ear(const QString& server, const QString& device);
    ~Ear();
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;

    // Whether it hears already; the first call waits for it.
    [[nodiscard]] bool isListening(std::chrono::milliseconds patience = std::chrono::seconds(10)) const;

    // Seconds of the recording at this moment of the world: to relate what is heard to what was done.
    [[nodiscard]] double now() const;
    [[nodiscard]] std::vector<float> recording() const;
    // Of the recording so far, or of its part from `start` on, with the times counted from there.
    [[nodiscard]] EarReport report(double start = 0.0) const;

private:
    void listen(std::stop_token stop);
    void listenOnce(const std::stop_token& stop);
    void append(const std::vector<float>& samples);
    void bridgeAbsence();

    const QByteArray m_server;
    const QByteArray m_source;
    std::atomic<bool> m_listening{ false };

    mutable std::mutex m_mutex;
    // Protected by the mutex.
    std::vector<float> m_samples;
    std::chrono::steady_clock::time_point m_start;

    std::jthread m_thread;
};

}
