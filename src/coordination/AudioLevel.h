// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QProperty>

namespace velarin {

class Defaults;
class MediaControls;
class PlaybackCoordinator;

// One volume for all players: what the user chose, times what an alarm's fade adds. Main thread only.
class AudioLevel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(float user READ user WRITE setUser NOTIFY userChanged BINDABLE bindableUser)
    Q_PROPERTY(float fade READ fade WRITE setFade NOTIFY fadeChanged BINDABLE bindableFade)

public:
    AudioLevel(Defaults& defaults, PlaybackCoordinator& coordinator, MediaControls& controls);

    // 0 to 1, stored.
    [[nodiscard]] float user() const { return m_user; }
    [[nodiscard]] QBindable<float> bindableUser() { return &m_user; }
    void setUser(float level);
    // 0 to 1, not stored.
    [[nodiscard]] float fade() const { return m_fade; }
    [[nodiscard]] QBindable<float> bindableFade() { return &m_fade; }
    void setFade(float share);

    // Hands the product to every attached engine, sounding or not.
    void apply();

Q_SIGNALS:
    void userChanged();
    void fadeChanged();

private:
    Defaults& m_defaults;
    PlaybackCoordinator& m_coordinator;
    MediaControls& m_controls;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AudioLevel, float, m_user, 1.0F, &AudioLevel::userChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AudioLevel, float, m_fade, 1.0F, &AudioLevel::fadeChanged)
};

}
