// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/FakeAudioPlayer.h"

namespace velarin::test {

AudioPlayer::Observation FakeAudioPlayer::observe(AudioItemId of, ItemHandlers handlers)
{
    const quint64 number = ++m_lastObserver;
    m_observers->emplace(number, std::make_shared<Observer>(Observer{ of, std::move(handlers) }));
    return Observation([observers = std::weak_ptr(m_observers), number] {
        if (auto alive = observers.lock())
            alive->erase(number);
    });
}

void FakeAudioPlayer::replaceCurrentItem(std::optional<AudioItem> newItem)
{
    calls.append(newItem ? QStringLiteral("item") : QStringLiteral("no item"));
    item = std::move(newItem);
    if (item)
        items.push_back(*item);
    status = ItemStatus::Unknown;
    time = 0.0;
}

std::optional<AudioItemId> FakeAudioPlayer::currentItem() const
{
    return item ? std::optional(item->id) : std::nullopt;
}

void FakeAudioPlayer::playAtRate(double rate)
{
    calls.append(QStringLiteral("play at %1").arg(rate));
}

void FakeAudioPlayer::seek(double seconds)
{
    calls.append(QStringLiteral("seek %1").arg(seconds));
}

template<typename Tell>
void FakeAudioPlayer::forEachObserver(AudioItemId of, Tell tell)
{
    const AudioItemId wanted = of ? of : currentItem().value_or(0);
    // By number, since a handler may attach and detach observers.
    std::vector<quint64> numbers;
    for (const auto& [number, observer] : *m_observers) {
        if (observer->item == wanted)
            numbers.push_back(number);
    }
    for (const quint64 number : numbers) {
        const auto found = m_observers->find(number);
        if (found == m_observers->end())
            continue;
        const std::shared_ptr<Observer> keptAlive = found->second;
        tell(keptAlive->handlers);
    }
}

void FakeAudioPlayer::tellStatus(ItemStatus newStatus, const AudioErrorChain& chain, AudioItemId of)
{
    if (of == 0 || of == currentItem())
        status = newStatus;
    forEachObserver(of, [&](const ItemHandlers& handlers) {
        if (handlers.status)
            handlers.status(newStatus, chain);
    });
}

void FakeAudioPlayer::tellLikelyToKeepUp(AudioItemId of)
{
    forEachObserver(of, [](const ItemHandlers& handlers) {
        if (handlers.likelyToKeepUp)
            handlers.likelyToKeepUp();
    });
}

void FakeAudioPlayer::tellStalled(AudioItemId of)
{
    forEachObserver(of, [](const ItemHandlers& handlers) {
        if (handlers.stalled)
            handlers.stalled();
    });
}

void FakeAudioPlayer::tellFailedToPlayToEnd(const AudioErrorChain& chain, AudioItemId of)
{
    forEachObserver(of, [&](const ItemHandlers& handlers) {
        if (handlers.failedToPlayToEnd)
            handlers.failedToPlayToEnd(chain);
    });
}

void FakeAudioPlayer::tellPlayedToEnd(AudioItemId of)
{
    forEachObserver(of, [](const ItemHandlers& handlers) {
        if (handlers.playedToEnd)
            handlers.playedToEnd();
    });
}

void FakeAudioPlayer::tellHttpStatus(int code, AudioItemId of)
{
    forEachObserver(of, [&](const ItemHandlers& handlers) {
        if (handlers.httpStatus)
            handlers.httpStatus(code);
    });
}

void FakeAudioPlayer::tellTitle(const QString& title, AudioItemId of)
{
    forEachObserver(of, [&](const ItemHandlers& handlers) {
        if (handlers.title)
            handlers.title(title);
    });
}

void FakeAudioPlayer::tellTimeControl(TimeControl newControl)
{
    control = newControl;
    if (m_timeControl)
        m_timeControl(newControl);
}

std::size_t FakeAudioPlayer::observers(AudioItemId of) const
{
    std::size_t count = 0;
    for (const auto& [number, observer] : *m_observers)
        count += observer->item == of ? 1 : 0;
    return count;
}

}
