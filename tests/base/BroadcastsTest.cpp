// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/Broadcasts.h"

#include <gmock/gmock.h>

namespace velarin {

namespace {

TEST(BroadcastsTest, aPostReachesEveryListenerBeforeItReturns)
{
    Broadcasts broadcasts;
    QObject listener;
    QStringList heard;
    QObject::connect(&broadcasts, &Broadcasts::radioOpenSidebarItem, &listener,
        [&heard](const QString& item) { heard.append(QStringLiteral("first ") + item); });
    QObject::connect(&broadcasts, &Broadcasts::radioOpenSidebarItem, &listener,
        [&heard](const QString& item) { heard.append(QStringLiteral("second ") + item); });
    Q_EMIT broadcasts.radioOpenSidebarItem(QStringLiteral("mine"));
    EXPECT_EQ(heard, QStringList({ QStringLiteral("first mine"), QStringLiteral("second mine") }));
}

TEST(BroadcastsTest, aPostWithoutListenersIsHeardByNobody)
{
    Broadcasts broadcasts;
    int heard = 0;
    Q_EMIT broadcasts.radioStationsDidChange();
    QObject::connect(&broadcasts, &Broadcasts::radioStationsDidChange, [&heard] { ++heard; });
    EXPECT_EQ(heard, 0);
}

}

}
