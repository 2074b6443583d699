// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "screens/parts/PlaybackServices.h"

#include <QObject>
#include <QString>

#include <memory>

class QQuickWindow;

namespace velarin {

class Appearance;
class Clock;
class Defaults;
class OutputDevices;

// What the screens need of the rest; everything outlives them.
struct ScreensServices
{
    StationRepository& repository;
    RadioPlayer& radio;
    PlaybackCoordinator& coordinator;
    AudioLevel& level;
    Broadcasts& broadcasts;
    OutputDevices& devices;
    Appearance& appearance;
    Defaults& defaults;
    Clock& clock;
};

// Everything that the user sees: the QML engine, the view models and the main window. Main thread only. The graphical
// application exists, and chooseRenderer() was called, before this is made.
class Screens : public QObject
{
    Q_OBJECT

public:
    explicit Screens(ScreensServices services);
    ~Screens() override;

    // Opens the main window as soon as the desktop has said which colours it wishes, so that it never changes them
    // under the eye; the catalogue need not be there. Once.
    void show();
    // Brings the window to the front, out of the background too. The token is what the desktop gave to whoever asked.
    void raise(const QString& activationToken = {});
    // Stores what the window remembers; at the orderly end of the program.
    void storeState();

    // Null until the window was opened.
    [[nodiscard]] QQuickWindow* window() const;

Q_SIGNALS:
    // The user asks the program to end. Closing the window does not.
    void quitRequested();

private:
    void openWindow();

    struct Content;
    std::unique_ptr<Content> m_content;
};

}
