// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>
#include <set>

using CURLM = void;

namespace velarin::live {

class CurlConnection;

// libcurl's multi handle and the connections in it. Engine's thread, but for wakeUp().
//
// libcurl calls back while it works, and must not be called then. So the connections keep what they are told, and the
// loop hands it to their listeners once libcurl has returned: a listener may close any connection, its own included.
class CurlLoop
{
public:
    CurlLoop();
    ~CurlLoop();
    CurlLoop(const CurlLoop&) = delete;
    CurlLoop& operator=(const CurlLoop&) = delete;

    void add(CurlConnection& connection);
    void remove(CurlConnection& connection);

    // Lets libcurl work on what its sockets have, and calls the listeners.
    void turn();
    // Until a socket or one of libcurl's own timers has something, wakeUp() is called, or `longest` has passed.
    void sleep(std::chrono::milliseconds longest);
    // From any thread; also ends the next sleep() if there is none now.
    void wakeUp();

private:
    void noteEnds();
    void tellListeners();

    struct Cleanup
    {
        void operator()(CURLM* handle) const;
    };

    const std::unique_ptr<CURLM, Cleanup> m_handle;
    std::set<CurlConnection*> m_connections;
};

}
