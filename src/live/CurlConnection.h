// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/Connection.h"
#include "live/LiveThread.h"
#include "live/StreamHeadParser.h"

#include <curl/curl.h>

#include <array>

namespace velarin::live {

// Holds the cookies that libcurl keeps.
class CurlVisit final : public HttpVisit
{
public:
    CurlVisit();
    ~CurlVisit() override;
    CurlVisit(const CurlVisit&) = delete;
    CurlVisit& operator=(const CurlVisit&) = delete;

    [[nodiscard]] CURLSH* handle() const { return m_handle; }

private:
    CURLSH* const m_handle;
};

// One transfer of libcurl. It keeps what libcurl tells until the loop asks for it.
class CurlConnection final : public Connection
{
public:
    CurlConnection(
        CurlLoop& loop, const TransportSettings& settings, const StreamRequest& request, ConnectionListener& listener);
    ~CurlConnection() override;

    void setReading(bool reading) override;

    [[nodiscard]] static CurlConnection& of(CURL* handle);
    [[nodiscard]] CURL* handle() const { return m_handle.get(); }

    // libcurl is done with it.
    void noteEnd(CURLcode result);
    [[nodiscard]] bool hasNews() const { return m_head || !m_bytes.isEmpty() || m_cause; }
    // Tells the listener the oldest of the news, which may destroy this.
    void tellNext();

private:
    void setUp(const TransportSettings& settings, const StreamRequest& request);
    void setUpCallbacks();
    void setUpProtocol();
    void setUpHeaders(const StreamRequest& request);
    void setUpSharing(const StreamRequest& request);

    static size_t headerCallback(char* data, size_t size, size_t count, void* self);
    static size_t bodyCallback(char* data, size_t size, size_t count, void* self);
    // Whether to go on.
    [[nodiscard]] bool takeHeadLine(QByteArrayView line);
    [[nodiscard]] QUrl effectiveUrl() const;

    struct HandleCleanup
    {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    };
    struct ListCleanup
    {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    CurlLoop& m_loop;
    ConnectionListener& m_listener;
    // Outlives the handle that uses it.
    const std::shared_ptr<HttpVisit> m_visit;
    // libcurl writes into it until the handle is gone.
    std::array<char, CURL_ERROR_SIZE> m_errorText{};
    std::unique_ptr<curl_slist, ListCleanup> m_headers;
    std::unique_ptr<curl_slist, ListCleanup> m_aliases;
    const std::unique_ptr<CURL, HandleCleanup> m_handle;
    StreamHeadParser m_parser;
    bool m_reading{ true };

    // News for the listener, in the order in which they are told.
    std::optional<StreamHead> m_head;
    QByteArray m_bytes;
    std::optional<AudioErrorChain> m_cause;
};

}
