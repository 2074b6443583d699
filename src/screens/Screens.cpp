// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Screens.h"

#include "screens/italy/ItalyModel.h"
#include "screens/parts/AppearanceModel.h"
#include "screens/parts/MonogramProvider.h"
#include "screens/parts/PictureProvider.h"
#include "screens/parts/ShadowProvider.h"
#include "screens/parts/SymbolProvider.h"
#include "screens/player/OutputDevicesModel.h"
#include "screens/player/PlaybackCommands.h"
#include "screens/player/PlayerBarModel.h"
#include "screens/window/SidebarModel.h"
#include "screens/window/WindowState.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QScreen>

namespace velarin {

namespace {

QList<QRect> screenAreas()
{
    QList<QRect> areas;
    for (const QScreen* screen : QGuiApplication::screens())
        areas.append(screen->availableGeometry());
    return areas;
}

PlaybackServices playback(const ScreensServices& services)
{
    return { services.repository, services.radio, services.coordinator, services.level, services.broadcasts };
}

template<typename Provider>
Provider* addProvider(QQmlApplicationEngine& engine)
{
    auto provider = std::make_unique<Provider>();
    Provider* added = provider.get();
    // The engine owns it from here on.
    engine.addImageProvider(QLatin1String(Provider::scheme), provider.release());
    return added;
}

}

// In the order of construction: the engine goes first at the end, so that no binding sees a model that is gone.
struct Screens::Content
{
    explicit Content(ScreensServices services)
        : appearance(services.repository, services.appearance)
        , windowState(services.defaults, services.clock)
        , sidebar(services.broadcasts)
        , commands(playback(services))
        , devices(services.devices)
        , italy(services.repository, services.radio, services.coordinator)
        , bar(playback(services), [this](const QImage& picture) { showPicture(picture); })
    {
    }

    void showPicture(const QImage& picture)
    {
        playingPicture = picture;
        if (pictures)
            pictures->setPicture(picture);
    }

    void prepareEngine();
    QVariantMap windowProperties();
    void place(QQuickWindow& opened);
    void remember(const QQuickWindow& opened);

    AppearanceModel appearance;
    WindowState windowState;
    SidebarModel sidebar;
    PlaybackCommands commands;
    OutputDevicesModel devices;
    ItalyModel italy;
    QImage playingPicture;
    PictureProvider* pictures{ nullptr };
    PlayerBarModel bar;
    QQmlApplicationEngine engine;
    QQuickWindow* window{ nullptr };
};

void Screens::Content::prepareEngine()
{
    // Not an import path by itself before Qt 6.5.
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    addProvider<SymbolProvider>(engine);
    addProvider<ShadowProvider>(engine);
    addProvider<MonogramProvider>(engine);
    pictures = addProvider<PictureProvider>(engine);
    pictures->setPicture(playingPicture);
    engine.setInitialProperties(windowProperties());
}

QVariantMap Screens::Content::windowProperties()
{
    return {
        { QStringLiteral("appearance"), QVariant::fromValue(&appearance) },
        { QStringLiteral("windowState"), QVariant::fromValue(&windowState) },
        { QStringLiteral("sidebar"), QVariant::fromValue(&sidebar) },
        { QStringLiteral("commands"), QVariant::fromValue(&commands) },
        { QStringLiteral("devices"), QVariant::fromValue(&devices) },
        { QStringLiteral("italy"), QVariant::fromValue(&italy) },
        { QStringLiteral("bar"), QVariant::fromValue(&bar) },
    };
}

void Screens::Content::place(QQuickWindow& opened)
{
    opened.setMinimumSize(WindowSizes::least);
    opened.setGeometry(windowState.geometry(screenAreas()));
    const auto note = [this, &opened] { remember(opened); };
    QObject::connect(&opened, &QWindow::xChanged, &opened, note);
    QObject::connect(&opened, &QWindow::yChanged, &opened, note);
    QObject::connect(&opened, &QWindow::widthChanged, &opened, note);
    QObject::connect(&opened, &QWindow::heightChanged, &opened, note);
    QObject::connect(&opened, &QWindow::windowStateChanged, &opened, note);
}

// The size of a window that fills the screen is not one to come back to.
void Screens::Content::remember(const QQuickWindow& opened)
{
    const bool maximized = opened.windowStates().testFlag(Qt::WindowMaximized);
    windowState.noteMaximized(maximized);
    if (opened.windowStates() == Qt::WindowNoState && opened.isVisible())
        windowState.noteGeometry(opened.geometry());
}

Screens::Screens(ScreensServices services)
    : m_content(std::make_unique<Content>(services))
{
    // Closing the window leaves the program playing in the background.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    connect(m_content->italy.stations(), &StationListModel::homepageRequested, this,
        [](const QUrl& address) { QDesktopServices::openUrl(address); });
}

Screens::~Screens() = default;

void Screens::show()
{
    m_content->appearance.start([this] { openWindow(); });
}

void Screens::raise(const QString& activationToken)
{
    QQuickWindow* window = m_content->window;
    if (!window)
        return;
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    if (window->windowStates().testFlag(Qt::WindowMinimized))
        window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->requestActivate();
}

void Screens::storeState()
{
    m_content->windowState.storeNow();
}

QQuickWindow* Screens::window() const
{
    return m_content->window;
}

void Screens::openWindow()
{
    m_content->prepareEngine();
    m_content->engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Velarin/Window/MainWindow.qml")));
    m_content->window = qobject_cast<QQuickWindow*>(m_content->engine.rootObjects().value(0));
    if (!m_content->window)
        qFatal("the main window cannot be made");
    connect(m_content->window, SIGNAL(quitRequested()), this, SIGNAL(quitRequested()));
    m_content->place(*m_content->window);
    if (m_content->windowState.isMaximized())
        m_content->window->showMaximized();
    else
        m_content->window->show();
}

}
