// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/QuitSignals.h"

#include "platform/freedesktop/FreedesktopLog.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace velarin {

namespace {

// What the handler touches is of the process, since a handler has no object. A handler may only call what is
// async-signal-safe (signal-safety(7)): write() and _exit() are.
std::array<int, 2> wakePipe{ -1, -1 };
std::atomic<bool> quitting{ false };
static_assert(std::atomic<bool>::is_always_lock_free);

void onSignal(int number)
{
    if (quitting.exchange(true))
        _exit(128 + number);
    const int savedErrno = errno;
    const char wake = 0;
    [[maybe_unused]] const ssize_t written = write(wakePipe[1], &wake, 1);
    errno = savedErrno;
}

}

QuitSignals::QuitSignals(std::function<void()> quit)
    : m_quit(std::move(quit))
{
    if (pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qCWarning(desktopLog) << "no pipe for the signals: they end the program without an orderly quit";
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] {
        m_notifier->setEnabled(false);
        m_quit();
    });
    install();
}

void QuitSignals::install()
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < signalNumbers.size(); ++i) {
        sigaction(signalNumbers[i], nullptr, &m_former[i]);
        if (signalNumbers[i] == SIGHUP && m_former[i].sa_handler == SIG_IGN)
            continue;
        sigaction(signalNumbers[i], &action, nullptr);
    }
}

QuitSignals::~QuitSignals()
{
    if (!m_notifier)
        return;
    for (std::size_t i = 0; i < signalNumbers.size(); ++i)
        sigaction(signalNumbers[i], &m_former[i], nullptr);
    m_notifier.reset();
    for (int& end : wakePipe)
        close(std::exchange(end, -1));
    quitting = false;
}

}
