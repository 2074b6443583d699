// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/AudioPlayer.h"

#include <QStringList>

#include <map>
#include <memory>

namespace velarin::test {

// A player that a test plays by hand. Every call is noted in `calls`; every event is told at once to the observers that
// are attached, which is what the real player does one turn later.
class FakeAudioPlayer final : public AudioPlayer
{
public:
    Observation observe(AudioItemId item, ItemHandlers handlers) override;
    void setTimeControlHandler(std::function<void(TimeControl)> handler) override
    {
        m_timeControl = std::move(handler);
    }
    void replaceCurrentItem(std::optional<AudioItem> item) override;
    std::optional<AudioItemId> currentItem() const override;
    ItemStatus currentItemStatus() const override { return status; }
    void play() override { calls.append(QStringLiteral("play")); }
    void playAtRate(double rate) override;
    void pause() override { calls.append(QStringLiteral("pause")); }
    void seek(double seconds) override;
    TimeControl timeControl() const override { return control; }
    double currentTime() const override { return time; }
    void setVolume(float volume) override { level = volume; }
    float volume() const override { return level; }

    // Events of the item given, or of the current one.
    void tellStatus(ItemStatus newStatus, const AudioErrorChain& chain = {}, AudioItemId item = 0);
    void tellLikelyToKeepUp(AudioItemId item = 0);
    void tellStalled(AudioItemId item = 0);
    void tellFailedToPlayToEnd(const AudioErrorChain& chain, AudioItemId item = 0);
    void tellPlayedToEnd(AudioItemId item = 0);
    void tellHttpStatus(int code, AudioItemId item = 0);
    void tellTitle(const QString& title, AudioItemId item = 0);
    // Sets `control` and tells it.
    void tellTimeControl(TimeControl newControl);

    // How many observations are attached to the item.
    [[nodiscard]] std::size_t observers(AudioItemId item) const;

    std::optional<AudioItem> item;
    // Every item that was ever loaded, in order.
    std::vector<AudioItem> items;
    ItemStatus status{ ItemStatus::Unknown };
    TimeControl control{ TimeControl::Paused };
    double time{ 0.0 };
    float level{ 1.0F };
    QStringList calls;

private:
    struct Observer
    {
        AudioItemId item{ 0 };
        ItemHandlers handlers;
    };
    template<typename Tell>
    void forEachObserver(AudioItemId of, Tell tell);

    std::function<void(TimeControl)> m_timeControl;
    std::shared_ptr<std::map<quint64, std::shared_ptr<Observer>>> m_observers{
        std::make_shared<std::map<quint64, std::shared_ptr<Observer>>>()
    };
    quint64 m_lastObserver{ 0 };
};

}
