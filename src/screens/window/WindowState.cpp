// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/window/WindowState.h"

#include "platform/Clock.h"
#include "platform/Defaults.h"

#include <algorithm>

namespace velarin {

namespace {

constexpr std::chrono::milliseconds rest{ 500 };
// So much of the upper edge must be on a screen for a hand to find it.
constexpr QSize handle{ 120, 24 };

const auto xKey = QStringLiteral("window_x");
const auto yKey = QStringLiteral("window_y");
const auto widthKey = QStringLiteral("window_width");
const auto heightKey = QStringLiteral("window_height");
const auto maximizedKey = QStringLiteral("window_maximized");
const auto sidebarKey = QStringLiteral("window_sidebar_width");

// Larger than any screen, small enough that no sum of them overflows.
constexpr qint64 farthest = 100'000;

int stored(const Defaults& defaults, const QString& key, int otherwise)
{
    return static_cast<int>(std::clamp(defaults.integer(key).value_or(otherwise), -farthest, farthest));
}

QRect storedGeometry(const Defaults& defaults)
{
    if (!defaults.integer(xKey) || !defaults.integer(yKey))
        return {};
    return { stored(defaults, xKey, 0), stored(defaults, yKey, 0),
        stored(defaults, widthKey, WindowSizes::usual.width()),
        stored(defaults, heightKey, WindowSizes::usual.height()) };
}

bool canBeGrasped(const QRect& window, const QRect& screen)
{
    const QRect seen = QRect(window.topLeft(), QSize(window.width(), handle.height())).intersected(screen);
    return seen.width() >= handle.width() && seen.height() >= handle.height();
}

QRect centred(QSize size, const QRect& screen)
{
    QRect place({ 0, 0 }, size.boundedTo(screen.size()).expandedTo(WindowSizes::least));
    place.moveCenter(screen.center());
    return place;
}

}

QRect placedWindow(const QRect& remembered, const QList<QRect>& screens)
{
    const bool known = remembered.isValid();
    const QSize size = known ? remembered.size().expandedTo(WindowSizes::least) : WindowSizes::usual;
    const QRect window(remembered.topLeft(), size);
    const auto holds = [&window](const QRect& screen) { return canBeGrasped(window, screen); };
    if (known && std::any_of(screens.begin(), screens.end(), holds))
        return window;
    return screens.isEmpty() ? QRect({ 0, 0 }, size) : centred(size, screens.constFirst());
}

WindowState::WindowState(Defaults& defaults, Clock& clock)
    : m_defaults(defaults)
    , m_clock(clock)
    , m_geometry(storedGeometry(defaults))
    , m_maximized(defaults.boolean(maximizedKey).value_or(false))
{
    setSidebarWidth(stored(defaults, sidebarKey, WindowSizes::usualSidebar));
    m_storing.cancel();
}

QRect WindowState::geometry(const QList<QRect>& screens) const
{
    return placedWindow(m_geometry, screens);
}

void WindowState::noteGeometry(const QRect& geometry)
{
    if (geometry == m_geometry)
        return;
    m_geometry = geometry;
    storeSoon();
}

void WindowState::noteMaximized(bool maximized)
{
    if (maximized == m_maximized)
        return;
    m_maximized = maximized;
    storeSoon();
}

void WindowState::setSidebarWidth(int width)
{
    const int bounded = std::clamp(width, WindowSizes::narrowestSidebar, WindowSizes::widestSidebar);
    if (bounded == m_sidebarWidth)
        return;
    m_sidebarWidth = bounded;
    storeSoon();
    Q_EMIT sidebarWidthChanged();
}

// A window that is dragged tells its place with every pixel; the disk gets the last one.
void WindowState::storeSoon()
{
    m_storing = m_clock.after(rest, [this] { storeNow(); });
}

void WindowState::storeNow()
{
    if (!m_storing)
        return;
    m_storing.cancel();
    m_defaults.setInteger(xKey, m_geometry.x());
    m_defaults.setInteger(yKey, m_geometry.y());
    m_defaults.setInteger(widthKey, m_geometry.width());
    m_defaults.setInteger(heightKey, m_geometry.height());
    m_defaults.setBoolean(maximizedKey, m_maximized);
    m_defaults.setInteger(sidebarKey, m_sidebarWidth);
}

}
