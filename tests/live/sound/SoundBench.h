// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/EngineLoop.h"
#include "live/GstSoundPipeline.h"
#include "support/ears/Ear.h"
#include "support/ears/Programme.h"
#include "support/ears/SoundServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>

namespace velarin::test {

// The engine's loop on the test's own thread: it turns only inside runUntil() and runFor().
class TurnedLoop final : public live::EngineLoop
{
public:
    void post(std::function<void()> work) override;
    std::chrono::nanoseconds now() const override;
    Task after(std::chrono::nanoseconds delay, std::function<void()> fire) override;

    // False if the deadline passed first.
    bool runUntil(const std::function<bool()>& predicate, std::chrono::milliseconds deadline);
    void runFor(std::chrono::milliseconds time);

private:
    std::mutex m_mutex;
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_work;
};

// Feeds a pipeline as the session does, and keeps what it tells.
class Feeder final : public live::SoundPipelineListener
{
public:
    struct Title
    {
        live::BranchId branch;
        double seconds;
        QString text;
        bool operator==(const Title&) const = default;
    };

    void attach(live::SoundPipeline& pipeline) { m_pipeline = &pipeline; }
    // Gives these bytes to the branch, in small pieces, as it asks for them; and announces the end if told so.
    void give(live::BranchId branch, const QByteArray& bytes, bool end = false);

    void needsBytes(live::BranchId branch) override;
    void branchFailed(live::BranchId branch, const AudioErrorChain& cause) override { failures[branch] = cause; }
    void branchFinished(live::BranchId branch) override { finished.push_back(branch); }
    void titleFound(live::BranchId branch, double seconds, const QString& title) override;
    void soundHeard() override { ++heard; }
    void ranDry() override { ++dry; }
    void deviceFailed(const AudioErrorChain& cause) override { deviceFailures.push_back(cause); }

    int heard{ 0 };
    int dry{ 0 };
    std::vector<live::BranchId> finished;
    std::map<live::BranchId, AudioErrorChain> failures;
    std::vector<Title> titles;
    std::vector<AudioErrorChain> deviceFailures;

private:
    struct Supply
    {
        QByteArray bytes;
        bool ends{ false };
        bool isWanted{ false };
    };

    void serve(live::BranchId branch);

    live::SoundPipeline* m_pipeline{ nullptr };
    std::map<live::BranchId, Supply> m_supplies;
};

// A pipeline on a silent device of its own, with an ear on it.
class SoundTest : public testing::Test
{
protected:
    SoundTest();
    ~SoundTest() override;

    live::BranchId open(live::SoundFormat format) { return pipeline->openBranch(format); }
    // The seconds from `start` of the recording until `condition` holds; fails the test after ten.
    bool until(const std::function<bool()>& condition) { return loop.runUntil(condition, std::chrono::seconds(10)); }
    bool untilDry(int times = 1)
    {
        return until([this, times] { return feeder.dry >= times; });
    }
    // Lets what was heard reach the recording.
    EarReport heardSoFar();

    SoundServer& server{ SoundServer::shared() };
    TurnedLoop loop;
    std::shared_ptr<DeviceSelection> selection{ std::make_shared<DeviceSelection>() };
    Feeder feeder;
    QString device;
    std::unique_ptr<Ear> ear;
    std::unique_ptr<live::SoundPipeline> pipeline;
};

[[nodiscard]] live::SoundFormat formatOf(Codec codec);

}
