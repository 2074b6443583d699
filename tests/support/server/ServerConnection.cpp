// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/ServerConnection.h"

#include <QFile>
#include <QSslKey>

#include <algorithm>
#include <sys/socket.h>

namespace velarin::test {
namespace {

constexpr int tick = 10;                 // milliseconds
constexpr qsizetype longestHead = 65536; // bytes
constexpr qint64 pieceSize = 16384;      // bytes

QByteArray contentOf(const QByteArray& path)
{
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ServerRequest parse(const QByteArray& head)
{
    ServerRequest request;
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> words = lines.value(0).split(' ');
    request.target = words.value(1);
    request.path = request.target.split('?').value(0);
    for (const QByteArray& line : lines.mid(1))
        if (const qsizetype colon = line.indexOf(':'); colon > 0)
            request.headers.append({ line.first(colon).toLower(), line.mid(colon + 1).trimmed() });
    return request;
}

}

ServerConnection::ServerConnection(ScriptedServer& server, int descriptor)
    : m_server(server)
    , m_descriptor(descriptor)
    , m_generation(server.m_generation)
{
}

void ServerConnection::serve()
{
    std::optional<ServerRequest> request = open() ? readRequest() : std::nullopt;
    if (!request)
        return m_socket.abort();
    m_answer = m_server.answer(*request);
    m_begin = m_server.now();
    if (!wait(m_answer.headDelay.value_or(Seconds(1e9))))
        return m_socket.abort();
    sendHead();
    sendBody();
}

bool ServerConnection::open()
{
    m_socket.setSocketDescriptor(m_descriptor);
    if (!m_server.m_certificate)
        return true;
    m_socket.setLocalCertificateChain(QSslCertificate::fromData(contentOf(m_server.m_certificate->certificate)));
    m_socket.setPrivateKey(QSslKey(contentOf(m_server.m_certificate->key), QSsl::Ec));
    m_socket.setPeerVerifyMode(QSslSocket::VerifyNone);
    m_socket.startServerEncryption();
    return m_socket.waitForEncrypted(10000);
}

std::optional<ServerRequest> ServerConnection::readRequest()
{
    QByteArray head;
    while (isAlive() && head.size() < longestHead) {
        m_socket.waitForReadyRead(tick);
        head += m_socket.readAll();
        if (head.contains("\r\n\r\n"))
            return parse(head);
    }
    return std::nullopt;
}

void ServerConnection::sendHead()
{
    if (m_answer.protocol.isEmpty())
        return;
    QByteArray head = m_answer.protocol + ' ' + QByteArray::number(m_answer.status) + " Answer\r\n";
    if (!m_answer.contentType.isEmpty())
        head += "Content-Type: " + m_answer.contentType + "\r\n";
    if (m_answer.metadataInterval > 0)
        head += "icy-metaint: " + QByteArray::number(m_answer.metadataInterval) + "\r\n";
    if (m_answer.chunked)
        head += "Transfer-Encoding: chunked\r\n";
    const qint64 length = m_answer.announcedLength.value_or(m_answer.programme ? -1 : m_answer.body.size());
    if (length >= 0 && !m_answer.chunked)
        head += "Content-Length: " + QByteArray::number(length) + "\r\n";
    for (const auto& [name, value] : m_answer.headers)
        head += name + ": " + value + "\r\n";
    send(head + "\r\n");
}

void ServerConnection::sendBody()
{
    if (m_answer.metadataInterval > 0 && !m_answer.intervalIsLie)
        m_metadata = MetadataWriter(m_answer.metadataInterval);
    if (m_answer.programme)
        return sendProgramme();
    if (!m_answer.body.isEmpty())
        sendPiece(m_answer.body);
    if (m_answer.fault)
        wait(m_answer.faultAfter);
    if (m_answer.fault == Fault::Stall)
        wait(m_answer.stallLength);
    m_answer.fault == Fault::Reset ? reset() : finish();
}

void ServerConnection::sendProgramme()
{
    m_edge = m_answer.programme->liveEdge(m_begin.count());
    m_position = m_answer.programme->startNear(std::max<qint64>(0, m_edge - m_answer.burst));
    if (const QByteArray header = m_answer.programme->headerBefore(m_position); !header.isEmpty())
        sendPiece(header);
    while (sendDue(elapsed()) && wait(std::chrono::milliseconds(tick))) {
    }
}

bool ServerConnection::sendDue(Seconds time)
{
    const bool faulty = m_answer.fault && time >= m_answer.faultAfter;
    if (faulty && m_answer.fault == Fault::Close)
        return finish(), false;
    if (faulty && m_answer.fault == Fault::Reset)
        return reset(), false;
    if (faulty && time < m_answer.faultAfter + m_answer.stallLength)
        return true;
    const qint64 end = due(time);
    while (m_position < end && isAlive()) {
        const QByteArray bytes = m_answer.programme->bytesAt(m_position, std::min(pieceSize, end - m_position));
        m_position += bytes.size();
        sendPiece(bytes);
    }
    return true;
}

qint64 ServerConnection::due(Seconds time) const
{
    const double pace = m_answer.trickle.value_or(m_answer.programme->bytesPerSecond() * m_answer.speed);
    return m_edge + static_cast<qint64>(time.count() * pace);
}

void ServerConnection::sendPiece(const QByteArray& bytes)
{
    const QByteArray piece = m_metadata.write(bytes, elapsed().count());
    send(m_answer.chunked ? QByteArray::number(piece.size(), 16) + "\r\n" + piece + "\r\n" : piece);
}

void ServerConnection::send(const QByteArray& bytes)
{
    m_socket.write(bytes);
    while (isAlive() && (m_socket.bytesToWrite() > 0 || m_socket.encryptedBytesToWrite() > 0))
        m_socket.waitForBytesWritten(tick);
}

void ServerConnection::finish()
{
    if (m_answer.chunked)
        send("0\r\n\r\n");
    m_socket.disconnectFromHost();
    if (m_socket.state() != QAbstractSocket::UnconnectedState)
        m_socket.waitForDisconnected(1000);
}

void ServerConnection::reset()
{
    const linger none{ 1, 0 };
    setsockopt(m_descriptor, SOL_SOCKET, SO_LINGER, &none, sizeof none);
    m_socket.abort();
}

bool ServerConnection::isAlive() const
{
    return m_socket.state() == QAbstractSocket::ConnectedState && !m_server.m_stopping &&
           m_generation == m_server.m_generation;
}

bool ServerConnection::wait(Seconds time)
{
    const Seconds end = m_server.now() + time;
    while (isAlive() && m_server.now() < end) {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(end - m_server.now());
        m_socket.waitForReadyRead(static_cast<int>(std::min<qint64>(tick, rest.count())));
    }
    return isAlive();
}

}
