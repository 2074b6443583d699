// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Paths.h"
#include "app/Velarin.h"
#include "platform/freedesktop/QuitSignals.h"
#include "platform/freedesktop/SessionBus.h"
#include "platform/freedesktop/SingleInstance.h"
#include "screens/Renderer.h"

#include <QGuiApplication>
#include <QIcon>

#include <cstdlib>

#include <unistd.h>

namespace {

using velarin::SingleInstance;
using velarin::Velarin;

// The display may go away under the program, at the end of the session as well: Qt then ends it from within by exit(),
// without a word. That is no crash, and the next start must not tell one.
Velarin* runningProgram = nullptr;

void endWithTheDisplay()
{
    if (runningProgram)
        runningProgram->terminate();
}

// The part of the start that comes before anything of the user's is read: the name, the signals, the one run a user.
int run()
{
    std::unique_ptr<Velarin> program;
    const auto folders = velarin::userFolders();
    const QDBusConnection sessionBus = velarin::connectToSessionBus(QProcessEnvironment::systemEnvironment());
    // Wishes of a second start may come before the window is there; what is there then is raised by the start itself.
    const SingleInstance::Handlers handlers{
        .activated =
            [&program](const QString& token) {
                if (program)
                    program->raise(token);
            },
        .opened =
            [&program](const QStringList& addresses, const QString& token) {
                if (!program)
                    return;
                program->raise(token);
                for (const QString& address : addresses)
                    program->open(address);
            },
    };
    SingleInstance instance(sessionBus, folders.data + QStringLiteral("/com.brenholt.velarin.lock"), handlers);
    if (instance.claim({}, SingleInstance::tokenFromEnvironment()) == SingleInstance::Outcome::Second)
        return 0;

    velarin::chooseRenderer();
    program = std::make_unique<Velarin>(velarin::Surroundings{
        sessionBus, QDBusConnection::systemBus(), folders, { QCoreApplication::applicationFilePath() } });
    const velarin::QuitSignals signalHandlers([&program] { program->quit(); });
    runningProgram = program.get();
    (void)std::atexit(endWithTheDisplay);
    program->start();
    const int result = QGuiApplication::exec();
    runningProgram = nullptr;
    return result;
}

}

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Velarin"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Velarin"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.brenholt.velarin"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/com.brenholt.velarin.svg")));
    // Windows come and go; only a quit ends the program.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    if (::geteuid() == 0)
        qWarning("running as root: the desktop's services may refuse to talk to it");
    return run();
}
