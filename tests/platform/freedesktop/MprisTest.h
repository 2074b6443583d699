// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/freedesktop/MprisControls.h"
#include "platform/freedesktop/PrivateBus.h"
#include "support/FakeClock.h"
#include "support/WaitUntil.h"

#include <QDBusObjectPath>
#include <QObject>

#include <gtest/gtest.h>

#include <vector>

namespace velarin::test {

// What a display hears: every PropertiesChanged of the player, and every Seeked.
class PlayerListener final : public QObject
{
    Q_OBJECT

public:
    explicit PlayerListener(QDBusConnection bus);

    std::vector<QVariantMap> changes;
    std::vector<qlonglong> jumps;

public Q_SLOTS:
    void propertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);
    void seeked(qlonglong position) { jumps.push_back(position); }
};

// The controls on a bus of their own, and a second connection that stands for the desktop.
class MprisTest : public testing::Test
{
protected:
    // The commands that arrived, as words in their order ("play", "skip -15").
    [[nodiscard]] QStringList& heard() { return m_heard; }

    QDBusMessage callPlayer(const QString& method, const QVariantList& arguments = {});
    QDBusMessage callRoot(const QString& method);
    QVariant player(const QString& property);
    QVariant root(const QString& property);
    QVariantMap metadata();
    // Sets a property of the player through the bus.
    QDBusMessage set(const QString& property, const QVariant& value);
    // Lets everything arrive that was sent before this call.
    void settle();

    void handleEverything();
    [[nodiscard]] static NowPlaying radio();
    [[nodiscard]] static NowPlaying episode(double elapsed);
    [[nodiscard]] static QImage picture(Qt::GlobalColor color);

    PrivateBus bus;
    QDBusConnection desktop{ bus.connect() };
    FakeClock clock;
    PoolExecutor executor{ 2 };
    QString artworkFolder{ bus.folder() + QStringLiteral("/velarin") };
    std::unique_ptr<MprisControls> controls{ std::make_unique<MprisControls>(
        bus.connect(), clock, executor, artworkFolder) };
    PlayerListener listener{ desktop };

private:
    QStringList m_heard;
};

}
