// SPDX-License-Identifier: GPL-3.0-or-later
// velarin-ear SERVER DEVICE SECONDS [PROGRAM ARGUMENTS...]: listens to a device of a sound server for so many seconds,
// while the program given (if any) runs with PULSE_SERVER and PULSE_SINK set, and prints what was heard as JSON.
// "firstSound" counts from the start of the program.
#include "support/ears/Ear.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QProcess>
#include <QThread>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    bool isNumber = false;
    const double seconds = arguments.value(3).toDouble(&isNumber);
    if (!isNumber || seconds <= 0.0) {
        std::fputs("usage: velarin-ear SERVER DEVICE SECONDS [PROGRAM ARGUMENTS...]\n", stderr);
        return 2;
    }
    const velarin::test::Ear ear(arguments[1], arguments[2]);
    if (!ear.isListening()) {
        std::fputs("velarin-ear: the device cannot be heard\n", stderr);
        return 1;
    }
    qputenv("PULSE_SERVER", arguments[1].toUtf8());
    qputenv("PULSE_SINK", arguments[2].toUtf8());
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.setStandardOutputFile(QProcess::nullDevice());
    const double start = ear.now();
    if (arguments.size() > 4)
        program.start(arguments[4], arguments.mid(5));
    QThread::msleep(static_cast<unsigned long>(seconds * 1000));
    const QJsonObject report = ear.report(start).toJson();
    program.kill();
    program.waitForFinished();
    std::fputs(QJsonDocument(report).toJson(QJsonDocument::Compact).constData(), stdout);
    std::fputc('\n', stdout);
    return 0;
}
