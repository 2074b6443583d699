// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QProperty>
#include <QString>

#include <array>
#include <functional>

namespace velarin {

class Defaults;
class Diagnostics;
class MediaControls;
class PlaybackEngine;
class RemotePlaybackTarget;

// Gives the sound output to one of the three engines at a time, hands the media keys to it, and tells the log what is
// playing. Main thread only.
class PlaybackCoordinator : public QObject
{
    Q_OBJECT

public:
    enum class Source
    {
        none,
        radio,
        podcast,
        music,
    };
    Q_ENUM(Source)
    Q_PROPERTY(velarin::PlaybackCoordinator::Source active READ active NOTIFY activeChanged BINDABLE bindableActive)

    PlaybackCoordinator(MediaControls& controls, Diagnostics& diagnostics, Defaults& defaults);

    // The root attaches each engine once; it outlives the coordinator's use.
    void attach(Source source, PlaybackEngine& engine);
    // What a key does while nothing is active: bring the last station back.
    void setResumeLast(std::function<void()> resumeLast);

    [[nodiscard]] Source active() const { return m_active; }
    [[nodiscard]] QBindable<Source> bindableActive() { return &m_active; }
    // The engine attached for a source; null for `none` and for one that is not there.
    [[nodiscard]] PlaybackEngine* engine(Source source) const;
    [[nodiscard]] PlaybackEngine* activeEngine() const { return engine(m_active); }
    void resumeLast() const;

    // An engine takes the output, before its sound starts; the former one is paused.
    void activate(Source source);
    // An engine gives it back for good.
    void resign(Source source);

    // Wires the media keys, once.
    void configureRemoteCommands();
    // Tells the desktop which commands can be offered now.
    void refreshCommands();
    [[nodiscard]] QString heartbeatLine() const;

Q_SIGNALS:
    void activeChanged();

private:
    void command(void (RemotePlaybackTarget::*operation)());
    void skip(double seconds);
    void changePosition(double seconds);

    MediaControls& m_controls;
    Diagnostics& m_diagnostics;
    Defaults& m_defaults;
    // By source, `none` first and never filled.
    std::array<PlaybackEngine*, 4> m_engines{};
    std::function<void()> m_resumeLast;
    bool m_wired{ false };
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(
        PlaybackCoordinator, Source, m_active, Source::none, &PlaybackCoordinator::activeChanged)
};

// The raw text of a source: "none", "radio", "podcast", "music".
[[nodiscard]] QString toText(PlaybackCoordinator::Source source);

}
