// SPDX-License-Identifier: GPL-3.0-or-later
#include "screens/Renderer.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

#include <algorithm>
#include <array>

namespace velarin {

namespace {

bool userChose()
{
    return qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
}

// Empty where there is no graphics driver at all.
QByteArray graphicsDriver()
{
    QOpenGLContext context;
    if (!context.create())
        return {};
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface))
        return {};
    QByteArray name(reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER)));
    context.doneCurrent();
    return name;
}

}

bool drawsOnTheProcessor(const QByteArray& driver)
{
    constexpr std::array names{ "llvmpipe", "softpipe", "swrast", "swiftshader", "software" };
    const QByteArray lower = driver.toLower();
    return driver.isEmpty() ||
           std::any_of(names.begin(), names.end(), [&lower](const char* name) { return lower.contains(name); });
}

Renderer chooseRenderer()
{
    if (userChose())
        return QQuickWindow::sceneGraphBackend() == QStringLiteral("software") ? Renderer::Software
                                                                               : Renderer::Graphics;
    if (!drawsOnTheProcessor(graphicsDriver()))
        return Renderer::Graphics;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return Renderer::Software;
}

}
