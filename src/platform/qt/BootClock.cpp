// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/BootClock.h"

#include <QSocketNotifier>

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <map>
#include <utility>
#include <vector>

namespace velarin {

namespace {

using std::chrono::nanoseconds;

constexpr long nanosecondsPerSecond = 1'000'000'000;

nanoseconds bootTime()
{
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
}

int openTimer()
{
    const int descriptor = timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (descriptor < 0)
        qFatal("no timer: %s", std::strerror(errno));
    return descriptor;
}

}

// The timers by moment, and by number among those of one moment. Shared with the tasks, which may outlive the clock.
class BootClock::Timers : public std::enable_shared_from_this<Timers>
{
public:
    using Key = std::pair<nanoseconds, quint64>;

    Timers();
    ~Timers();
    Timers(const Timers&) = delete;
    Timers& operator=(const Timers&) = delete;

    Key add(nanoseconds moment, std::function<void()> fire);
    void remove(const Key& key);
    // Forgets every timer: the clock is gone.
    void clear();

private:
    void expired();
    void fireDue();
    void arm();

    std::map<Key, std::function<void()>> m_pending;
    quint64 m_lastNumber{ 0 };
    // The moment that the descriptor is armed for; zero while it is not.
    nanoseconds m_armedFor{ 0 };
    int m_descriptor{ openTimer() };
    QSocketNotifier m_notifier{ m_descriptor, QSocketNotifier::Read };
};

BootClock::Timers::Timers()
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { expired(); });
}

BootClock::Timers::~Timers()
{
    // Before the descriptor is closed: its number may at once be another file's.
    m_notifier.setEnabled(false);
    close(m_descriptor);
}

BootClock::Timers::Key BootClock::Timers::add(nanoseconds moment, std::function<void()> fire)
{
    const Key key{ moment, ++m_lastNumber };
    m_pending.emplace(key, std::move(fire));
    arm();
    return key;
}

void BootClock::Timers::remove(const Key& key)
{
    // The node dies after the map is whole again: what it captured may cancel timers of its own.
    const auto node = m_pending.extract(key);
    arm();
}

void BootClock::Timers::clear()
{
    const auto forgotten = std::exchange(m_pending, {});
    arm();
}

void BootClock::Timers::expired()
{
    // A timer may destroy the clock.
    const auto alive = shared_from_this();
    quint64 expirations = 0;
    if (read(m_descriptor, &expirations, sizeof expirations) < 0 && errno == EAGAIN)
        return;
    m_armedFor = nanoseconds(0);
    fireDue();
    arm();
}

void BootClock::Timers::fireDue()
{
    // Listed before the first one fires: timers armed on the way wait for the next turn, so that one that arms itself
    // anew with no delay cannot hold up the event loop.
    const nanoseconds present = bootTime();
    std::vector<Key> due;
    for (auto timer = m_pending.begin(); timer != m_pending.end() && timer->first.first <= present; ++timer)
        due.push_back(timer->first);
    for (const Key& key : due) {
        // One that fired before may have cancelled this one.
        if (const auto node = m_pending.extract(key))
            node.mapped()();
    }
}

void BootClock::Timers::arm()
{
    // All zero disarms, and no moment on this clock is zero.
    const nanoseconds moment = m_pending.empty() ? nanoseconds(0) : m_pending.begin()->first.first;
    if (moment == m_armedFor)
        return;
    m_armedFor = moment;
    itimerspec timer{};
    timer.it_value.tv_sec = moment.count() / nanosecondsPerSecond;
    timer.it_value.tv_nsec = moment.count() % nanosecondsPerSecond;
    timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME, &timer, nullptr);
}

BootClock::BootClock()
    : m_timers(std::make_shared<Timers>())
{
}

BootClock::~BootClock()
{
    m_timers->clear();
}

QDateTime BootClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

nanoseconds BootClock::continuous() const
{
    return bootTime();
}

Task BootClock::after(nanoseconds delay, std::function<void()> fire)
{
    const nanoseconds present = bootTime();
    // For ever is a delay too.
    const nanoseconds wait = std::clamp(delay, nanoseconds(0), nanoseconds::max() - present);
    const auto key = m_timers->add(present + wait, std::move(fire));
    return Task([timers = std::weak_ptr(m_timers), key] {
        if (const auto alive = timers.lock())
            alive->remove(key);
    });
}

}
