// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/DecodeBranch.h"
#include "live/EngineLoop.h"
#include "live/SoundPipeline.h"
#include "platform/gstreamer/output/SoundOutput.h"

#include <map>

namespace velarin::live {

// The sound of one item: branches ! concat ! output.
//
// Everything is called, and every event handled, on the engine's thread. GStreamer's and the device's threads only post
// to it; they never wait for it. concat always has a spare pad behind the last branch: so the end of a branch never
// reaches the output, which would be ended by it for good.
class GstSoundPipeline final : public SoundPipeline
{
public:
    GstSoundPipeline(EngineLoop& loop, std::shared_ptr<DeviceSelection> selection, SoundPipelineListener& listener);
    ~GstSoundPipeline() override;
    GstSoundPipeline(const GstSoundPipeline&) = delete;
    GstSoundPipeline& operator=(const GstSoundPipeline&) = delete;

    BranchId openBranch(SoundFormat format) override;
    void push(BranchId branch, const QByteArray& bytes) override;
    void endBranch(BranchId branch) override;
    void play() override;
    void pause() override;
    void setVolume(float volume) override;
    double heardSeconds() const override;
    double decodedSeconds() const override;

private:
    // Under which a branch's bin carries its number.
    static constexpr auto branchKey = "velarin-branch";

    struct Branch
    {
        std::unique_ptr<DecodeBranch> decoder;
        GstPad* place{ nullptr };
        // It was told to need bytes, and got none since.
        bool isHungry{ false };
        bool isEnded{ false };
        // Told as finished or failed; it goes when its thread is out of the pipeline.
        bool isGone{ false };
    };

    static GstBusSyncReply heardFromBus(GstBus* bus, GstMessage* message, gpointer self);

    // From any thread: `work` runs on the engine's, unless the pipeline is gone by then.
    void post(std::function<void()> work);
    DecodeBranch::Events branchEvents(BranchId branch);
    SoundOutput::Events outputEvents();
    void insert(Branch& branch, BranchId id);
    // The branch's entry while it lives and was not told as gone.
    Branch* present(BranchId branch);

    void becameHungry(BranchId branch);
    void finished(BranchId branch);
    void failed(BranchId branch, const AudioErrorChain& cause);
    void retire(BranchId branch);
    void remove(BranchId branch);
    void heard();
    void deviceFailed(const AudioErrorChain& cause);
    void tellWhenDry();
    bool waitsForBytes() const;

    EngineLoop& m_loop;
    SoundPipelineListener& m_listener;
    // Expires with the pipeline; posted work looks at it.
    std::shared_ptr<int> m_alive{ std::make_shared<int>(0) };
    std::atomic<int> m_rate{ 0 };
    GstElement* m_pipeline{ nullptr };
    GstElement* m_concat{ nullptr };
    // The place of the next branch.
    GstPad* m_spare{ nullptr };
    std::unique_ptr<SoundOutput> m_output;
    std::map<BranchId, Branch> m_branches;
    BranchId m_lastBranch{ 0 };
    bool m_isPlaying{ false };
    // soundHeard() was told, and ranDry() not since.
    bool m_isSounding{ false };
};

class GstSoundPipelineFactory final : public SoundPipelineFactory
{
public:
    GstSoundPipelineFactory(EngineLoop& loop, std::shared_ptr<DeviceSelection> selection);

    // Starts GStreamer at the first call.
    std::unique_ptr<SoundPipeline> make(SoundPipelineListener& listener) override;

private:
    EngineLoop& m_loop;
    std::shared_ptr<DeviceSelection> m_selection;
};

}
