// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/ears/Icecast.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <chrono>
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace velarin::test {

namespace {

constexpr int patience = 10'000; // milliseconds

const char* const configuration = R"(<icecast>
  <limits><clients>20</clients><sources>8</sources><burst-on-connect>1</burst-on-connect><burst-size>65535</burst-size>
    <header-timeout>5</header-timeout><source-timeout>5</source-timeout></limits>
  <authentication><source-password>source</source-password><relay-password>relay</relay-password>
    <admin-user>admin</admin-user><admin-password>admin</admin-password></authentication>
  <hostname>127.0.0.1</hostname>
  <listen-socket><port>%1</port><bind-address>127.0.0.1</bind-address></listen-socket>
  <fileserve>0</fileserve>
  <paths><basedir>%2</basedir><logdir>%2</logdir><webroot>%2</webroot><adminroot>%2</adminroot></paths>
  <logging><accesslog>access</accesslog><errorlog>error</errorlog><loglevel>2</loglevel></logging>
  <security><chroot>0</chroot>%3</security>
</icecast>
)";

// Icecast does not run as root, so it has to be told whom to be.
QString ownerIfRoot()
{
    if (geteuid() != 0)
        return {};
    return QStringLiteral("<changeowner><user>nobody</user><group>nogroup</group></changeowner>");
}

int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}

bool canConnect(int port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    return socket.waitForConnected(500);
}

}

Icecast::Icecast()
    : m_port(freePort())
{
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777));
    writeConfiguration();
}

Icecast::~Icecast()
{
    kill();
}

void Icecast::writeConfiguration() const
{
    QFile file(m_folder.filePath(QStringLiteral("icecast.xml")));
    if (file.open(QIODevice::WriteOnly))
        file.write(QString::fromLatin1(configuration).arg(m_port).arg(m_folder.path(), ownerIfRoot()).toUtf8());
}

bool Icecast::start()
{
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(
        QStringLiteral("icecast2"), { QStringLiteral("-c"), m_folder.filePath(QStringLiteral("icecast.xml")) });
    QDeadlineTimer deadline(patience);
    while (!deadline.hasExpired() && m_process.state() != QProcess::NotRunning) {
        if (canConnect(m_port))
            return true;
        QThread::msleep(20);
    }
    return false;
}

void Icecast::kill()
{
    m_process.kill();
    m_process.waitForFinished(patience);
}

QByteArray Icecast::url(const QByteArray& mount) const
{
    return "http://127.0.0.1:" + QByteArray::number(m_port) + mount;
}

IcecastSource::IcecastSource(int port, const QByteArray& mount, const QByteArray& contentType,
    std::shared_ptr<const StationProgramme> programme, double lead)
{
    const QByteArray identity = QByteArray("source:") + Icecast::password;
    const QByteArray head = "SOURCE " + mount + " HTTP/1.0\r\nAuthorization: Basic " + identity.toBase64() +
                            "\r\nContent-Type: " + contentType + "\r\nice-name: Prova\r\nice-public: 0\r\n\r\n";
    m_thread = std::jthread([=](const std::stop_token& stop) { feed(stop, port, head, programme, lead); });
}

void IcecastSource::feed(std::stop_token stop, int port, const QByteArray& head,
    const std::shared_ptr<const StationProgramme>& programme, double lead)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    if (!socket.waitForConnected(patience))
        return;
    socket.write(head);
    if (!socket.waitForReadyRead(patience))
        return;
    const auto begin = std::chrono::steady_clock::now();
    qint64 sent = 0;
    while (!stop.stop_requested() && socket.state() == QTcpSocket::ConnectedState) {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
        const auto due = static_cast<qint64>((passed.count() + lead) * programme->bytesPerSecond());
        socket.write(programme->bytesAt(sent, due - sent));
        socket.waitForBytesWritten(100);
        sent = due;
        QThread::msleep(50);
    }
}

}
