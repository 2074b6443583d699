// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/server/MetadataWriter.h"
#include "support/server/ScriptedServer.h"

#include <QSslSocket>

namespace velarin::test {

// One client of a ScriptedServer, from its request to the end of its body. Lives on a thread of its own, and blocks.
class ServerConnection
{
public:
    ServerConnection(ScriptedServer& server, int descriptor);

    void serve();

private:
    [[nodiscard]] bool open();
    [[nodiscard]] std::optional<ServerRequest> readRequest();
    void sendHead();
    void sendBody();
    void sendProgramme();
    // Sends what is due at `time`, and returns whether to go on.
    [[nodiscard]] bool sendDue(Seconds time);
    [[nodiscard]] qint64 due(Seconds time) const;
    void sendPiece(const QByteArray& bytes);
    void send(const QByteArray& bytes);
    void finish();
    void reset();

    // Whether the client is there and the server has not had enough of it.
    [[nodiscard]] bool isAlive() const;
    // Passes the time; false if the connection ended meanwhile.
    bool wait(Seconds time);
    [[nodiscard]] Seconds elapsed() const { return m_server.now() - m_begin; }

    ScriptedServer& m_server;
    const int m_descriptor;
    const int m_generation;
    QSslSocket m_socket;
    Answer m_answer;
    MetadataWriter m_metadata;
    // When the answer began.
    Seconds m_begin{ 0 };
    // Where in the programme the client came in, and what it was sent of it.
    qint64 m_edge{ 0 };
    qint64 m_position{ 0 };
};

}
