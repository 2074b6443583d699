// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ears/SoundServer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcessEnvironment>
#include <QThread>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>

namespace velarin::test {
namespace {

constexpr int startDeadline = 10'000; // milliseconds

QString nullSink(const QString& name)
{
    return QStringLiteral("sink_name=%1 sink_properties=device.description=\"Silent-%1\"").arg(name);
}

}

SoundServer& SoundServer::shared()
{
    static SoundServer server;
    static const bool started = server.start();
    Q_UNUSED(started);
    return server;
}

SoundServer::SoundServer()
{
    qputenv("PULSE_SERVER", address().toUtf8());
    // What is judged is the sound, not how busy the machine is with other tests. Where that is not allowed it goes
    // without.
    (void)setpriority(PRIO_PROCESS, 0, -10);
}

SoundServer::~SoundServer()
{
    kill();
}

QString SoundServer::deviceName(int index)
{
    return QStringLiteral("ear%1").arg(index);
}

QString SoundServer::address() const
{
    return QStringLiteral("unix:") + m_folder.filePath(QStringLiteral("native"));
}

bool SoundServer::start()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* folder : { "HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH", "PULSE_STATE_PATH" })
        environment.insert(QString::fromLatin1(folder), m_folder.path());
    environment.remove(QStringLiteral("PULSE_SERVER"));
    environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    m_process.setProcessEnvironment(environment);
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setStandardErrorFile(m_folder.filePath(QStringLiteral("log")), QIODevice::Append);
    QStringList arguments{ QStringLiteral("-n"), QStringLiteral("--daemonize=no"),
        QStringLiteral("--exit-idle-time=-1"), QStringLiteral("--use-pid-file=no"),
        QStringLiteral("--high-priority=no"), QStringLiteral("--realtime=no"), QStringLiteral("--disable-shm=yes") };
    for (int index = 0; index < deviceCount; ++index)
        arguments << QStringLiteral("--load=module-null-sink ") + nullSink(deviceName(index));
    arguments << QStringLiteral("--load=module-native-protocol-unix auth-anonymous=1 socket=%1")
                     .arg(m_folder.filePath(QStringLiteral("native")));
    QFile::remove(m_folder.filePath(QStringLiteral("native")));
    m_process.start(QStringLiteral("pulseaudio"), arguments);
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < startDeadline && m_process.state() != QProcess::NotRunning) {
        if (QFile::exists(m_folder.filePath(QStringLiteral("native"))) && control({ QStringLiteral("info") }))
            return true;
        QThread::msleep(20);
    }
    return false;
}

void SoundServer::kill()
{
    m_process.kill();
    m_process.waitForFinished(startDeadline);
}

bool SoundServer::addDevice(const QString& name)
{
    return control({ QStringLiteral("load-module"), QStringLiteral("module-null-sink"), nullSink(name) });
}

bool SoundServer::removeDevice(const QString& name)
{
    QByteArray modules;
    if (!control({ QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("modules") }, &modules))
        return false;
    for (const QByteArray& line : modules.split('\n'))
        if (line.contains("sink_name=" + name.toUtf8() + ' '))
            return control({ QStringLiteral("unload-module"), QString::fromLatin1(line.split('\t').front()) });
    return false;
}

bool SoundServer::makeDefault(const QString& name)
{
    return control({ QStringLiteral("set-default-sink"), name });
}

bool SoundServer::control(const QStringList& command, QByteArray* answer) const
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), QStringList{ QStringLiteral("--server"), address() } + command);
    const bool done = pactl.waitForFinished(startDeadline) && pactl.exitCode() == 0;
    if (answer)
        *answer = pactl.readAllStandardOutput();
    return done;
}

}
