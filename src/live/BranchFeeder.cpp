// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/BranchFeeder.h"

#include <utility>

namespace velarin::live {

namespace {

// More than can still be sounding.
constexpr std::size_t placesKept = 8;

}

BranchFeeder::BranchFeeder(SoundPipeline& pipeline)
    : m_pipeline(pipeline)
{
}

void BranchFeeder::startStretch(SoundFormat format, std::optional<qint64> claimedBitRate)
{
    m_reserve.startStretch(format, claimedBitRate);
    if (m_isRefused) {
        m_reserve.leaveStretch();
        m_isRefused = false;
    }
}

Seconds BranchFeeder::add(QByteArrayView bytes, std::optional<Seconds> lasting)
{
    if (m_isRefused)
        return Seconds(0.0);
    const Seconds completed = m_reserve.add(bytes, lasting);
    feed();
    return completed;
}

void BranchFeeder::needsBytes(BranchId branch)
{
    if (branch != m_branch)
        return;
    m_hasRoom = true;
    feed();
}

bool BranchFeeder::branchFailed(BranchId branch)
{
    if (branch != m_branch)
        return false;
    m_branch.reset();
    const bool isNewest = m_reserve.stretches() == 1;
    if (isNewest)
        m_isRefused = true;
    m_reserve.emptyStretch();
    feed();
    return isNewest;
}

void BranchFeeder::feed()
{
    if (m_reserve.hasNextStretch()) {
        const std::optional<BranchId> former = m_branch;
        m_reserve.leaveStretch();
        openBranch();
        if (former)
            m_pipeline.endBranch(*former);
    }
    if (!m_branch && !m_isRefused && m_reserve.bytes() > 0)
        openBranch();
    if (!m_hasRoom)
        return;
    const QByteArray bytes = m_reserve.take();
    if (bytes.isEmpty())
        return;
    m_hasRoom = false;
    m_pipeline.push(*m_branch, bytes);
}

void BranchFeeder::openBranch()
{
    m_branch = m_pipeline.openBranch(m_reserve.format());
    m_hasRoom = false;
    m_places[*m_branch] = m_reserve.place();
    if (m_places.size() > placesKept)
        m_places.erase(m_places.begin());
}

Seconds BranchFeeder::placeOf(BranchId branch) const
{
    const auto found = m_places.find(branch);
    return found == m_places.end() ? Seconds(0.0) : found->second;
}

}
