// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/PrivateBus.h"

#include "support/WaitUntil.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFile>

#include <csignal>
#include <sys/prctl.h>

namespace velarin::test {

namespace {

const char* const configuration = R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <servicedir>%1/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

}

Child::Child(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment)
{
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.start(program, arguments);
    m_process.waitForStarted();
}

Child::~Child()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

int Child::exitCode(std::chrono::milliseconds deadline)
{
    if (!waitUntil([this] { return m_process.state() == QProcess::NotRunning; }, deadline))
        return -2;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QString Child::output()
{
    return m_output += QString::fromUtf8(m_process.readAll());
}

QString Child::line(const QString& beginning, std::chrono::milliseconds deadline)
{
    QString found;
    auto search = [&] {
        const QStringList lines = output().split(u'\n');
        for (const QString& line : lines.first(lines.size() - 1)) {
            if (line.startsWith(beginning))
                found = line;
        }
        return !found.isEmpty() || m_process.state() == QProcess::NotRunning;
    };
    [[maybe_unused]] const bool isInTime = waitUntil(search, deadline);
    return found;
}

void Child::signal(int number)
{
    ::kill(pid_t(m_process.processId()), number);
}

PrivateBus::PrivateBus()
{
    QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8());
    file.close();
    m_daemon = std::make_unique<Child>(QStringLiteral("dbus-daemon"),
        QStringList{ QStringLiteral("--config-file=") + file.fileName(), QStringLiteral("--nofork"),
            QStringLiteral("--print-address=1") },
        QProcessEnvironment::systemEnvironment());
    m_address = m_daemon->line(QStringLiteral("unix:"));
}

PrivateBus::~PrivateBus()
{
    for (const QString& name : m_connections)
        QDBusConnection::disconnectFromBus(name);
}

QDBusConnection PrivateBus::connect()
{
    static int count = 0;
    m_connections << QStringLiteral("test-%1").arg(++count);
    return QDBusConnection::connectToBus(m_address, m_connections.last());
}

QProcessEnvironment PrivateBus::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    return environment;
}

QDBusMessage answerTo(QDBusConnection bus, const QDBusMessage& call)
{
    const QDBusPendingCallWatcher watcher(bus.asyncCall(call, 5000));
    // Its signal, not isFinished(), which turns true before earlier signals of the bus have been delivered.
    bool isAnswered = false;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &watcher, [&] { isAnswered = true; });
    [[maybe_unused]] const bool isInTime = waitUntil([&] { return isAnswered; });
    return watcher.reply();
}

QVariant propertyOf(
    QDBusConnection bus, const QString& service, const QString& path, const QString& interface, const QString& name)
{
    auto call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << interface << name;
    const QDBusMessage answer = answerTo(bus, call);
    if (answer.type() != QDBusMessage::ReplyMessage)
        return {};
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

bool waitForName(QDBusConnection bus, const QString& name)
{
    return waitUntil([&] { return bus.interface()->isServiceRegistered(name).value(); });
}

}
