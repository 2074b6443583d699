// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/ScriptedServer.h"

#include "support/server/ServerConnection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace velarin::test {
namespace {

constexpr int acceptTick = 20; // milliseconds

// A server that cannot listen makes no test.
void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::perror(what);
    std::abort();
}

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    return address;
}

}

ScriptedServer::ScriptedServer(Script script, std::optional<Certificate> certificate)
    : m_script(std::move(script))
    , m_certificate(std::move(certificate))
{
    listen();
    m_acceptor = std::thread([this] { accept(); });
}

ScriptedServer::~ScriptedServer()
{
    m_stopping = true;
    m_acceptor.join();
    for (Worker& worker : m_workers)
        worker.thread.join();
    setListening(false);
}

QByteArray ScriptedServer::url(const QByteArray& target) const
{
    return (m_certificate ? "https" : "http") + QByteArray("://127.0.0.1:") + QByteArray::number(m_port) + target;
}

void ScriptedServer::listen()
{
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address = loopback(m_port);
    require(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0, "bind");
    require(::listen(listener, 128) == 0, "listen");
    socklen_t size = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    m_port = ntohs(address.sin_port);
    m_listener = listener;
}

void ScriptedServer::setListening(bool listening)
{
    if (listening && m_listener < 0)
        listen();
    const int listener = listening ? -1 : m_listener.exchange(-1);
    if (listener < 0)
        return;
    // The accepting thread's poll() would keep the port open until it returns.
    shutdown(listener, SHUT_RDWR);
    ::close(listener);
}

void ScriptedServer::closeConnections()
{
    ++m_generation;
}

std::vector<ServerRequest> ScriptedServer::requests() const
{
    const std::scoped_lock lock(m_mutex);
    return m_requests;
}

Seconds ScriptedServer::now() const
{
    return std::chrono::steady_clock::now() - m_start;
}

void ScriptedServer::accept()
{
    while (!m_stopping) {
        pollfd waiting{ m_listener, POLLIN, 0 };
        poll(&waiting, 1, acceptTick);
        const int descriptor = waiting.revents & POLLIN ? accept4(waiting.fd, nullptr, nullptr, SOCK_CLOEXEC) : -1;
        reap();
        if (descriptor < 0)
            continue;
        Worker& worker = m_workers.emplace_back();
        worker.thread = std::thread([this, descriptor, &worker] { serve(descriptor, worker); });
    }
}

void ScriptedServer::reap()
{
    for (auto worker = m_workers.begin(); worker != m_workers.end();) {
        if (!worker->done) {
            ++worker;
            continue;
        }
        worker->thread.join();
        worker = m_workers.erase(worker);
    }
}

void ScriptedServer::serve(int descriptor, Worker& worker)
{
    ++m_open;
    ServerConnection(*this, descriptor).serve();
    --m_open;
    worker.done = true;
}

Answer ScriptedServer::answer(ServerRequest& request)
{
    const std::scoped_lock lock(m_mutex);
    request.time = now();
    request.number = ++m_numbers[request.path];
    m_requests.push_back(request);
    return m_script(request);
}

}
