// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoundBench.h"

#include <thread>

namespace velarin::test {
namespace {

constexpr qsizetype pieceBytes = 2048;

}

void TurnedLoop::post(std::function<void()> work)
{
    const std::scoped_lock lock(m_mutex);
    m_work.push_back(std::move(work));
    m_posted.notify_all();
}

std::chrono::nanoseconds TurnedLoop::now() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}

Task TurnedLoop::after(std::chrono::nanoseconds /*delay*/, std::function<void()> /*fire*/)
{
    ADD_FAILURE() << "the pipeline needs no timers";
    return {};
}

bool TurnedLoop::runUntil(const std::function<bool()>& predicate, std::chrono::milliseconds deadline)
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    std::unique_lock lock(m_mutex);
    while (true) {
        lock.unlock();
        if (predicate())
            return true;
        lock.lock();
        // Now and then without any work too: a predicate may look at a clock.
        m_posted.wait_for(lock, std::chrono::milliseconds(10), [this] { return !m_work.empty(); });
        while (!m_work.empty()) {
            const auto work = std::move(m_work.front());
            m_work.pop_front();
            lock.unlock();
            work();
            lock.lock();
        }
        if (std::chrono::steady_clock::now() > end)
            return false;
    }
}

void TurnedLoop::runFor(std::chrono::milliseconds time)
{
    (void)runUntil([] { return false; }, time);
}

void Feeder::give(live::BranchId branch, const QByteArray& bytes, bool end)
{
    Supply& supply = m_supplies[branch];
    supply.bytes += bytes;
    supply.ends = end;
    serve(branch);
}

void Feeder::needsBytes(live::BranchId branch)
{
    m_supplies[branch].isWanted = true;
    serve(branch);
}

void Feeder::serve(live::BranchId branch)
{
    Supply& supply = m_supplies[branch];
    if (!supply.isWanted)
        return;
    if (!supply.bytes.isEmpty()) {
        supply.isWanted = false;
        m_pipeline->push(branch, supply.bytes.left(pieceBytes));
        supply.bytes.remove(0, pieceBytes);
    } else if (supply.ends) {
        supply.isWanted = false;
        m_pipeline->endBranch(branch);
    }
}

void Feeder::titleFound(live::BranchId branch, double seconds, const QString& title)
{
    titles.push_back({ branch, seconds, title });
}

SoundTest::SoundTest()
{
    static int next = 0;
    device = SoundServer::deviceName(next++ % SoundServer::deviceCount);
    qputenv("PULSE_SINK", device.toUtf8());
    ear = std::make_unique<Ear>(server.address(), device);
    EXPECT_TRUE(ear->isListening());
    live::GstSoundPipelineFactory factory(loop, selection);
    pipeline = factory.make(feeder);
    feeder.attach(*pipeline);
}

SoundTest::~SoundTest() = default;

EarReport SoundTest::heardSoFar()
{
    loop.runFor(std::chrono::milliseconds(300));
    return ear->report();
}

live::SoundFormat formatOf(Codec codec)
{
    switch (codec) {
    case Codec::Mp3:
        return live::SoundFormat::Mpeg;
    case Codec::AacAdts:
        return live::SoundFormat::AacAdts;
    case Codec::OggVorbis:
    case Codec::OggOpus:
    case Codec::OggFlac:
        return live::SoundFormat::Ogg;
    case Codec::Flac:
        return live::SoundFormat::Flac;
    }
    return live::SoundFormat::Other;
}

}
