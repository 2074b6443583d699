// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/EngineLoop.h"
#include "live/SoundPipeline.h"

#include <deque>
#include <map>
#include <memory>
#include <vector>

namespace velarin::live::test {

// What all pipelines of a test leave behind.
struct PipelineLog
{
    struct Branch
    {
        SoundFormat format{ SoundFormat::Other };
        QByteArray pushed;
        bool ended{ false };
    };
    std::vector<Branch> branches;
    int made{ 0 };
    int alive{ 0 };
    float volume{ 1.0F };
    bool isPlaying{ false };
};

// A pipeline that plays the frames of TestSound in virtual time: a branch takes 0.2 seconds of sound in advance, the
// device another 0.1, and both are heard while it plays. It decodes a frame when it has all of it.
class FakePipeline final : public SoundPipeline
{
public:
    FakePipeline(EngineLoop& loop, PipelineLog& log, SoundPipelineListener& listener);
    ~FakePipeline() override;

    [[nodiscard]] BranchId openBranch(SoundFormat format) override;
    void push(BranchId branch, const QByteArray& bytes) override;
    void endBranch(BranchId branch) override;
    void play() override;
    void pause() override;
    void setVolume(float volume) override { m_log.volume = volume; }
    [[nodiscard]] double heardSeconds() const override { return m_heard; }
    [[nodiscard]] double decodedSeconds() const override { return m_decoded; }

    // What a test makes happen.
    void failBranch(BranchId branch, const AudioErrorChain& cause);
    void failDevice();
    void tellTitle(BranchId branch, double seconds, const QString& title);
    // A broken device: the sound it gets is never heard.
    bool isDeaf{ false };
    [[nodiscard]] BranchId newestBranch() const { return m_newest; }

private:
    struct Branch
    {
        std::size_t number{ 0 };
        bool ended{ false };
        bool asked{ false };
    };

    void tell(std::function<void(SoundPipelineListener&)> what);
    void tick();
    void askForBytes();
    [[nodiscard]] double ahead() const { return m_decoded - m_heard; }

    EngineLoop& m_loop;
    PipelineLog& m_log;
    // Gone with the pipeline, so that nothing is told after it.
    std::shared_ptr<SoundPipelineListener*> m_listener;
    std::map<BranchId, Branch> m_branches;
    BranchId m_newest{ 0 };
    double m_decoded{ 0.0 };
    double m_heard{ 0.0 };
    bool m_isPlaying{ false };
    bool m_isSounding{ false };
    Task m_tick;
};

class FakePipelines final : public SoundPipelineFactory
{
public:
    explicit FakePipelines(EngineLoop& loop)
        : m_loop(loop)
    {
    }
    [[nodiscard]] std::unique_ptr<SoundPipeline> make(SoundPipelineListener& listener) override;

    PipelineLog log;
    FakePipeline* last{ nullptr };

private:
    EngineLoop& m_loop;
};

}
