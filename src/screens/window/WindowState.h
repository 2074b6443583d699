// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"

#include <QList>
#include <QObject>
#include <QRect>
#include <QtQml/qqmlregistration.h>

namespace velarin {

class Clock;
class Defaults;

// Sizes of the main window, in logical pixels.
namespace WindowSizes {

inline constexpr QSize least{ 900, 560 };
inline constexpr QSize usual{ 1180, 780 };
inline constexpr int narrowestSidebar{ 196 };
inline constexpr int usualSidebar{ 214 };
inline constexpr int widestSidebar{ 280 };

}

// Where a remembered window may stand on the screens there are now: as it was, if enough of its upper edge can be seen
// to take hold of it; else in the middle of the first screen, no larger than that.
[[nodiscard]] QRect placedWindow(const QRect& remembered, const QList<QRect>& screens);

// What the main window remembers from one start to the next.
class WindowState : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int sidebarWidth READ sidebarWidth WRITE setSidebarWidth NOTIFY sidebarWidthChanged)

public:
    WindowState(Defaults& defaults, Clock& clock);

    // Absent fields read as the usual size in the middle of the screen.
    [[nodiscard]] QRect geometry(const QList<QRect>& screens) const;
    [[nodiscard]] bool isMaximized() const { return m_maximized; }
    // The window was moved or resized, or fills the screen; stored when that has come to rest.
    void noteGeometry(const QRect& geometry);
    void noteMaximized(bool maximized);

    [[nodiscard]] int sidebarWidth() const { return m_sidebarWidth; }
    // Kept within its bounds.
    void setSidebarWidth(int width);

    // Stores what is not stored yet.
    void storeNow();

Q_SIGNALS:
    void sidebarWidthChanged();

private:
    void storeSoon();

    Defaults& m_defaults;
    Clock& m_clock;
    QRect m_geometry;
    bool m_maximized{ false };
    int m_sidebarWidth{ WindowSizes::usualSidebar };
    Task m_storing;
};

}
