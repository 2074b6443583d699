// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/CurlLoop.h"

#include "live/CurlConnection.h"

#include <curl/curl.h>

#include <vector>

namespace velarin::live {

void CurlLoop::Cleanup::operator()(CURLM* handle) const
{
    curl_multi_cleanup(handle);
}

CurlLoop::CurlLoop()
    : m_handle((curl_global_init(CURL_GLOBAL_DEFAULT), curl_multi_init()))
{
    // Kept open for the next request that shares them.
    constexpr long mostIdleConnections = 4;
    curl_multi_setopt(m_handle.get(), CURLMOPT_MAXCONNECTS, mostIdleConnections);
}

CurlLoop::~CurlLoop() = default;

void CurlLoop::add(CurlConnection& connection)
{
    m_connections.insert(&connection);
    curl_multi_add_handle(m_handle.get(), connection.handle());
}

void CurlLoop::remove(CurlConnection& connection)
{
    m_connections.erase(&connection);
    curl_multi_remove_handle(m_handle.get(), connection.handle());
}

void CurlLoop::turn()
{
    int running = 0;
    curl_multi_perform(m_handle.get(), &running);
    noteEnds();
    tellListeners();
}

void CurlLoop::noteEnds()
{
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(m_handle.get(), &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        // The message dies with the handle's membership.
        const CURLcode result = message->data.result;
        CURL* handle = message->easy_handle;
        CurlConnection& connection = CurlConnection::of(handle);
        connection.noteEnd(result);
        curl_multi_remove_handle(m_handle.get(), handle);
    }
}

void CurlLoop::tellListeners()
{
    const std::vector<CurlConnection*> connections(m_connections.begin(), m_connections.end());
    for (CurlConnection* connection : connections)
        while (m_connections.contains(connection) && connection->hasNews())
            connection->tellNext();
}

void CurlLoop::sleep(std::chrono::milliseconds longest)
{
    curl_multi_poll(m_handle.get(), nullptr, 0, static_cast<int>(longest.count()), nullptr);
}

void CurlLoop::wakeUp()
{
    curl_multi_wakeup(m_handle.get());
}

}
