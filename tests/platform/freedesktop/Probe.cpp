// SPDX-License-Identifier: GPL-3.0-or-later
// A program in small, for what only whole processes show. It quits in order on a signal.
//   probe instance LOCK [ADDRESS ...]   claims to be the one run, and says what happens to it
//   probe hang                          gets the wish to quit and does not
#include "platform/freedesktop/QuitSignals.h"
#include "platform/freedesktop/SessionBus.h"
#include "platform/freedesktop/SingleInstance.h"

#include <QCoreApplication>

#include <iostream>

namespace {

void say(const QString& text)
{
    std::cout << text.toStdString() << std::endl;
}

int runInstance(QStringList arguments)
{
    using velarin::SingleInstance;
    const QString lockPath = arguments.takeFirst();
    SingleInstance instance(velarin::connectToSessionBus(QProcessEnvironment::systemEnvironment()), lockPath,
        { .activated = [](const QString& token) { say(QStringLiteral("activated [%1]").arg(token)); },
            .opened =
                [](const QStringList& addresses, const QString& token) {
                    say(QStringLiteral("opened %1 [%2]").arg(addresses.join(u' '), token));
                } });
    if (instance.claim(arguments, SingleInstance::tokenFromEnvironment()) == SingleInstance::Outcome::Second) {
        say(QStringLiteral("second"));
        return 0;
    }
    say(QStringLiteral("first"));
    return QCoreApplication::exec();
}

}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments().sliced(1);
    const bool hangs = arguments.value(0) == QStringLiteral("hang");
    const velarin::QuitSignals signals_([hangs] {
        say(QStringLiteral("quitting"));
        if (!hangs)
            QCoreApplication::quit();
    });
    if (arguments.value(0) == QStringLiteral("instance"))
        return runInstance(arguments.sliced(1));
    say(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
