// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/server/Answer.h"

#include <atomic>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace velarin::test {

// What answers a request. Called on the connections' threads, one call at a time.
using Script = std::function<Answer(const ServerRequest&)>;

// The files of a certificate and its key (PEM), for https.
struct Certificate
{
    QByteArray certificate;
    QByteArray key;
};

// A streaming server on a free port of 127.0.0.1 that misbehaves as it is told: a thread that accepts, and one a
// connection. Everything ends with it.
class ScriptedServer
{
public:
    explicit ScriptedServer(Script script, std::optional<Certificate> certificate = std::nullopt);
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    [[nodiscard]] int port() const { return m_port; }
    // "http://127.0.0.1:PORT/path", or https.
    [[nodiscard]] QByteArray url(const QByteArray& target) const;

    // While it does not listen, connections are refused; the port stays.
    void setListening(bool listening);
    // Ends all connections that are open.
    void closeConnections();

    // What was asked so far.
    [[nodiscard]] std::vector<ServerRequest> requests() const;
    [[nodiscard]] int openConnections() const { return m_open; }
    // Since the server was made.
    [[nodiscard]] Seconds now() const;

private:
    friend class ServerConnection;

    struct Worker
    {
        std::thread thread;
        std::atomic<bool> done{ false };
    };

    void listen();
    void accept();
    void serve(int descriptor, Worker& worker);
    void reap();
    [[nodiscard]] Answer answer(ServerRequest& request);

    const Script m_script;
    const std::optional<Certificate> m_certificate;
    const std::chrono::steady_clock::time_point m_start{ std::chrono::steady_clock::now() };
    int m_port{ 0 };
    std::atomic<int> m_listener{ -1 };
    std::atomic<bool> m_stopping{ false };
    // Raised by closeConnections(); a connection ends when it is not what it was.
    std::atomic<int> m_generation{ 0 };
    std::atomic<int> m_open{ 0 };

    // Protected by m_mutex.
    mutable std::mutex m_mutex;
    std::vector<ServerRequest> m_requests;
    std::map<QByteArray, int> m_numbers;

    // The accepting thread's own.
    std::list<Worker> m_workers;
    std::thread m_acceptor;
};

}
