// SPDX-License-Identifier: GPL-3.0-or-later
// Every test program runs with an application object, so that queued calls and timers of the real platform work.
#include <QCoreApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
