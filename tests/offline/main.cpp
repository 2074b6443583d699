// SPDX-License-Identifier: GPL-3.0-or-later
// velarin-offline: the program on fakes, for design work, interface tests and pictures.
#include "offline/OfflineProgram.h"
#include "offline/Screenshot.h"
#include "screens/Renderer.h"

#include <QCommandLineParser>
#include <QGuiApplication>

using namespace velarin;
using namespace velarin::test;

namespace {

QSize sizeFromText(const QString& text)
{
    return { text.section(u'x', 0, 0).toInt(), text.section(u'x', 1, 1).toInt() };
}

}

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({
        { QStringLiteral("screenshot"), QStringLiteral("Save a picture and end."), QStringLiteral("file") },
        { QStringLiteral("size"), QStringLiteral("Of the window."), QStringLiteral("WxH"), QStringLiteral("1180x780") },
        { QStringLiteral("scheme"), QStringLiteral("dark or light."), QStringLiteral("scheme"),
            QStringLiteral("dark") },
        { QStringLiteral("state"), QStringLiteral("What the picture shows."), QStringLiteral("name"),
            QStringLiteral("playing") },
    });
    parser.process(application);
    chooseRenderer();

    const ScreenshotWish wish{ parser.value(QStringLiteral("screenshot")),
        sizeFromText(parser.value(QStringLiteral("size"))), parser.value(QStringLiteral("state")) };
    const bool light = parser.value(QStringLiteral("scheme")) == u"light";
    OfflineProgram program(behaviourFor(wish.state), light ? ColorScheme::Light : ColorScheme::Dark);
    QObject::connect(&program.screens, &Screens::quitRequested, &application, &QGuiApplication::quit);
    program.start();
    if (!wish.file.isEmpty())
        takeScreenshot(program, wish);
    return QGuiApplication::exec();
}
