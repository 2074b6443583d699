// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <functional>
#include <memory>

namespace velarin {

// SIGTERM, SIGINT and SIGHUP as a wish to quit in order. One object a process, on the main thread.
//
// The first signal calls `quit` on the main thread, in a turn of its loop. Any further one ends the process at once,
// with 128 plus the signal's number, so that a quit that hangs can be cut short. A SIGHUP that was ignored at start
// (nohup) stays ignored.
class QuitSignals
{
public:
    explicit QuitSignals(std::function<void()> quit);
    // Puts the former dispositions back.
    ~QuitSignals();
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;

private:
    static constexpr std::array signalNumbers{ SIGTERM, SIGINT, SIGHUP };

    void install();

    std::function<void()> m_quit;
    std::array<struct sigaction, signalNumbers.size()> m_former{};
    std::unique_ptr<QSocketNotifier> m_notifier;
};

}
