// SPDX-License-Identifier: GPL-3.0-or-later
#include "offline/OfflinePlayer.h"

#include "platform/Clock.h"

#include <array>

namespace velarin::test {

namespace {

using namespace std::chrono_literals;

constexpr auto connectingTime = 700ms;
constexpr auto titleEvery = 20s;
constexpr std::array titles{
    u"Quartetto Ombra - La strada del mare",
    u"Lidia Serra - Centro di gravità",
    u"I Fari - Onda lunga",
};

}

OfflinePlayer::OfflinePlayer(Clock& clock, StationsBehaviour behaviour)
    : m_clock(clock)
    , m_behaviour(behaviour)
{
}

AudioPlayer::Observation OfflinePlayer::observe(AudioItemId item, ItemHandlers handlers)
{
    return m_fake.observe(item, std::move(handlers));
}

void OfflinePlayer::setTimeControlHandler(std::function<void(TimeControl)> handler)
{
    m_fake.setTimeControlHandler(std::move(handler));
}

void OfflinePlayer::replaceCurrentItem(std::optional<AudioItem> item)
{
    m_step.cancel();
    m_fake.status = ItemStatus::Unknown;
    m_fake.replaceCurrentItem(std::move(item));
}

void OfflinePlayer::play()
{
    m_fake.play();
    m_step = m_clock.after(connectingTime, [this] { connected(); });
}

void OfflinePlayer::playAtRate(double rate)
{
    m_fake.playAtRate(rate);
    play();
}

void OfflinePlayer::pause()
{
    m_step.cancel();
    m_fake.pause();
    m_fake.control = TimeControl::Paused;
}

double OfflinePlayer::currentTime() const
{
    if (m_fake.control != TimeControl::Playing)
        return 0.0;
    return std::chrono::duration<double>(m_clock.continuous() - m_soundsSince).count();
}

void OfflinePlayer::connected()
{
    switch (m_behaviour) {
    case StationsBehaviour::Sound:
    case StationsBehaviour::SoundWithoutTitle:
        return sound();
    case StationsBehaviour::NeverAnswer:
        return;
    case StationsBehaviour::Refuse:
        return m_fake.tellStatus(ItemStatus::Failed, { { AudioErrorDomain::http, 404, QStringLiteral("Not Found") } });
    }
}

void OfflinePlayer::sound()
{
    m_soundsSince = m_clock.continuous();
    m_fake.tellStatus(ItemStatus::Ready);
    m_fake.tellLikelyToKeepUp();
    m_fake.tellTimeControl(TimeControl::Playing);
    if (m_behaviour == StationsBehaviour::Sound)
        tellTitle();
}

void OfflinePlayer::tellTitle()
{
    m_fake.tellTitle(QString::fromUtf16(titles[static_cast<std::size_t>(m_titles++) % titles.size()]));
    m_step = m_clock.after(titleEvery, [this] { tellTitle(); });
}

}
