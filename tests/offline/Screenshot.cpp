// SPDX-License-Identifier: GPL-3.0-or-later
#include "offline/Screenshot.h"

#include <QCoreApplication>
#include <QImage>
#include <QKeyEvent>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>

namespace velarin::test {

namespace {

using namespace std::chrono_literals;

void press(QQuickWindow& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent down(QEvent::KeyPress, key, modifiers);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(&window, &down);
    QCoreApplication::sendEvent(&window, &up);
}

bool startsAStation(const QString& state)
{
    return state != u"idle";
}

void markFavorites(OfflineProgram& program)
{
    const QList<Station>& stations = program.repository.sortedCache();
    for (const qsizetype row : { 1, 8, 10 })
        program.repository.toggleFavorite(stations.value(row).id);
}

void playOne(OfflineProgram& program)
{
    const QList<Station>& stations = program.repository.sortedCache();
    program.radio.play(stations.value(8), stations, false);
}

// What a state needs beside the sound.
void finish(OfflineProgram& program, const QString& state)
{
    QQuickWindow& window = *program.screens.window();
    if (state == u"muted")
        program.level.setUser(0.0F);
    if (state == u"focus" || state == u"context") {
        for (int row = 0; row < 3; ++row)
            press(window, Qt::Key_Right);
    }
    if (state == u"context")
        press(window, Qt::Key_F10, Qt::ShiftModifier);
    if (state == u"menu")
        QMetaObject::invokeMethod(window.findChild<QObject*>(QStringLiteral("menuButton")), "open");
    if (state == u"devices")
        QMetaObject::invokeMethod(window.findChild<QObject*>(QStringLiteral("outputMenu")), "clicked");
}

void save(OfflineProgram& program, const QString& file)
{
    const bool saved = program.screens.window()->grabWindow().save(file);
    QCoreApplication::exit(saved ? 0 : 1);
}

}

StationsBehaviour behaviourFor(const QString& state)
{
    if (state == u"untitled")
        return StationsBehaviour::SoundWithoutTitle;
    if (state == u"connecting")
        return StationsBehaviour::NeverAnswer;
    if (state == u"failed")
        return StationsBehaviour::Refuse;
    return StationsBehaviour::Sound;
}

void takeScreenshot(OfflineProgram& program, const ScreenshotWish& wish)
{
    program.level.setUser(0.72F);
    program.repository.ensureLoaded([&program, wish] {
        // In the corner, away from the pointer.
        program.screens.window()->setGeometry(QRect(QPoint(0, 0), wish.size));
        program.screens.window()->requestActivate();
        markFavorites(program);
        if (startsAStation(wish.state))
            playOne(program);
        QTimer::singleShot(1500ms, &program.screens, [&program, wish] { finish(program, wish.state); });
        QTimer::singleShot(
            wish.state == u"failed" ? 14s : 2500ms, &program.screens, [&program, wish] { save(program, wish.file); });
    });
}

}
