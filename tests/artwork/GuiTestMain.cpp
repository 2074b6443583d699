// SPDX-License-Identifier: GPL-3.0-or-later
// Drawing text needs the font database, which comes with the graphical application; no display is needed.
#include <QGuiApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
