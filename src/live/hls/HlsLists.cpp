// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsLists.h"

#include "live/LiveLog.h"

#include <algorithm>
#include <utility>

namespace velarin::live {

namespace {

AudioErrorChain noList(const QString& text)
{
    return { { AudioErrorDomain::gstStream, GstError::streamTypeNotFound, text } };
}

bool isRefusal(const AudioErrorChain& cause)
{
    const AudioError& first = cause.front();
    return first.domain == AudioErrorDomain::http && first.code >= 400 && first.code <= 499;
}

bool bringsNews(const HlsMediaPlaylist& list, const HlsMediaPlaylist& former)
{
    if (list.ended != former.ended || list.segments.size() != former.segments.size())
        return true;
    if (list.segments.isEmpty())
        return false;
    return positionOf(list.segments.back()) != positionOf(former.segments.back());
}

}

HlsLists::HlsLists(EngineLoop& loop, const HlsRequests& requests, Station station, HlsListsListener& listener)
    : m_loop(loop)
    , m_requests(requests)
    , m_station(std::move(station))
    , m_listener(listener)
{
    ask(m_station.found);
}

HlsLists::~HlsLists() = default;

void HlsLists::setReading(bool reading)
{
    if (reading == std::exchange(m_isReading, reading))
        return;
    if (!reading) {
        m_nextAskTimer.cancel();
        m_patience.cancel();
        return;
    }
    // A request that was under way is answered by now, or too old to wait for.
    if (m_fetch)
        askLater(m_asked, std::chrono::nanoseconds(0));
    else if (m_nextAsk)
        askLater(m_asked, std::max(*m_nextAsk - m_loop.now(), std::chrono::nanoseconds(0)));
}

bool HlsLists::leaveVariant()
{
    if (!otherVariant())
        return false;
    m_failed.insert(*m_variant);
    return askVariant();
}

void HlsLists::ask(const QUrl& url)
{
    m_asked = url;
    m_nextAsk.reset();
    m_nextAskTimer.cancel();
    m_body.clear();
    HlsFetchListener& listener = *this;
    m_fetch = std::make_unique<HlsFetch>(m_requests, HlsFetch::Order{ url, {}, 0 }, listener);
    // The first one has all the time that the engine above gives it.
    if (!m_list)
        return;
    m_patience = m_loop.after(hlsSegmentDeadline(m_list->targetDuration, m_listener.reserve().count()), [this] {
        fail({ { AudioErrorDomain::timeout, 0, QStringLiteral("the list of segments does not come") } }, false);
    });
}

void HlsLists::askLater(const QUrl& url, std::chrono::nanoseconds wait)
{
    m_asked = url;
    m_fetch.reset();
    m_patience.cancel();
    m_nextAsk = m_loop.now() + wait;
    if (m_isReading)
        m_nextAskTimer = m_loop.after(wait, [this] { ask(m_asked); });
}

void HlsLists::fetched(QByteArrayView bytes)
{
    m_body.append(bytes);
    // One byte beyond the limit tells that it is too long.
    if (m_body.size() > hlsByteLimit)
        read();
}

void HlsLists::fetchEnded(const AudioErrorChain& cause)
{
    if (cause.empty())
        read();
    else
        fail(cause, isRefusal(cause));
}

void HlsLists::read()
{
    const QUrl url = m_fetch->url();
    const HlsPlaylist playlist = readHlsPlaylist(m_body, url);
    m_fetch.reset();
    m_body.clear();
    m_patience.cancel();
    if (const auto* master = std::get_if<HlsMasterPlaylist>(&playlist); master && asksHome()) {
        take(*master);
    } else if (const auto* list = std::get_if<HlsMediaPlaylist>(&playlist)) {
        if (asksHome()) {
            m_master.reset();
            m_variant.reset();
        }
        if (url != m_listUrl)
            m_origin = HlsListOrigin::Other;
        m_listUrl = url;
        take(*list);
    } else {
        // The station's address may name a list of another kind, in which this one was found.
        if (m_asked == m_station.home)
            m_station.home = m_station.found;
        fail(noList(QStringLiteral("no list of segments")), true);
    }
}

void HlsLists::take(const HlsMasterPlaylist& master)
{
    if (m_master && m_master->variants.size() != master.variants.size())
        m_failed.clear();
    m_master = master;
    if (askVariant())
        return;
    // All have failed: all get another chance.
    m_failed.clear();
    if (!askVariant())
        fail(noList(QStringLiteral("no variant")), true);
}

bool HlsLists::askVariant()
{
    m_variant = chooseHlsVariant(m_master->variants, m_station.peakBitRate, m_failed);
    if (!m_variant)
        return false;
    const HlsVariant& variant = m_master->variants[*m_variant];
    m_listUrl = variant.audioUrl.value_or(variant.url);
    m_origin = HlsListOrigin::Other;
    m_standstills = 0;
    qCDebug(liveLog) << "variant of" << variant.bandwidth << "bits per second";
    askLater(m_listUrl, std::chrono::nanoseconds(0));
    return true;
}

std::optional<qsizetype> HlsLists::otherVariant() const
{
    if (!m_master || !m_variant)
        return std::nullopt;
    QSet<qsizetype> failed = m_failed;
    failed.insert(*m_variant);
    return chooseHlsVariant(m_master->variants, m_station.peakBitRate, failed);
}

void HlsLists::take(const HlsMediaPlaylist& list)
{
    const bool isNews = !m_list || m_origin == HlsListOrigin::Other || bringsNews(list, *m_list);
    m_standstills = isNews ? 0 : m_standstills + 1;
    m_list = list;
    m_failures = 0;
    const HlsListOrigin origin = std::exchange(m_origin, HlsListOrigin::Same);
    if (!list.ended)
        askLater(m_listUrl, hlsReloadDelay(list.targetDuration, m_standstills, m_listener.reserve().count()));
    m_listener.listReceived(list, origin, m_standstills);
}

void HlsLists::fail(const AudioErrorChain& told, bool isRefused)
{
    // It may belong to the fetch.
    const AudioErrorChain cause = told;
    m_fetch.reset();
    m_patience.cancel();
    ++m_failures;
    ++m_standstills;
    qCDebug(liveLog) << "no list from" << m_asked.toDisplayString() << ":" << cause.front().text;
    if (m_firstCause.empty())
        m_firstCause = cause;
    if (m_list) {
        obey(planHlsListFailure({ .isRefused = isRefused,
            .wasHome = asksHome(),
            .hasOtherVariant = otherVariant().has_value(),
            .failures = m_failures }));
        m_listener.listFailed(cause);
    } else if (!leaveVariant()) {
        m_listener.listsFailed(AudioErrorChain(m_firstCause));
    }
}

void HlsLists::obey(const HlsListPlan& plan)
{
    switch (plan.step) {
    case HlsListStep::AskAgain:
        askLater(m_listUrl, plan.wait);
        return;
    case HlsListStep::AskHome:
        askLater(m_station.home, plan.wait);
        return;
    case HlsListStep::LeaveVariant:
        if (!leaveVariant())
            askLater(m_station.home, plan.wait);
        return;
    }
}

}
