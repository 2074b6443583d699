// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/FakePipeline.h"

#include "live/session/TestSound.h"

#include <algorithm>
#include <utility>

namespace velarin::live::test {

namespace {

constexpr double heldAhead = 0.3;
constexpr std::chrono::milliseconds step{ 10 };

}

FakePipeline::FakePipeline(EngineLoop& loop, PipelineLog& log, SoundPipelineListener& listener)
    : m_loop(loop)
    , m_log(log)
    , m_listener(std::make_shared<SoundPipelineListener*>(&listener))
{
    ++m_log.made;
    ++m_log.alive;
}

FakePipeline::~FakePipeline()
{
    --m_log.alive;
    m_log.isPlaying = false;
}

void FakePipeline::tell(std::function<void(SoundPipelineListener&)> what)
{
    m_loop.post([listener = std::weak_ptr(m_listener), what = std::move(what)] {
        if (const auto alive = listener.lock())
            what(**alive);
    });
}

BranchId FakePipeline::openBranch(SoundFormat format)
{
    m_branches[++m_newest] = Branch{ .number = m_log.branches.size() };
    m_log.branches.push_back({ .format = format, .pushed = {}, .ended = false });
    askForBytes();
    return m_newest;
}

void FakePipeline::push(BranchId branch, const QByteArray& bytes)
{
    const auto found = m_branches.find(branch);
    if (found == m_branches.end())
        return;
    QByteArray& pushed = m_log.branches[found->second.number].pushed;
    const auto before = pushed.size() / frameSize;
    pushed += bytes;
    if (m_log.branches[found->second.number].format == SoundFormat::Mpeg)
        m_decoded += static_cast<double>(pushed.size() / frameSize - before) * frameSeconds;
    found->second.asked = false;
    askForBytes();
}

void FakePipeline::endBranch(BranchId branch)
{
    const auto found = m_branches.find(branch);
    if (found == m_branches.end())
        return;
    m_log.branches[found->second.number].ended = true;
    m_branches.erase(found);
    tell([branch](SoundPipelineListener& listener) { listener.branchFinished(branch); });
}

void FakePipeline::play()
{
    m_isPlaying = true;
    m_log.isPlaying = true;
    m_tick = m_loop.after(step, [this] { tick(); });
}

void FakePipeline::pause()
{
    m_isPlaying = false;
    m_isSounding = false;
    m_log.isPlaying = false;
    m_tick.cancel();
}

void FakePipeline::tick()
{
    m_tick = m_loop.after(step, [this] { tick(); });
    if (isDeaf)
        return;
    const double moved = std::min(std::chrono::duration<double>(step).count(), ahead());
    m_heard += moved;
    const bool sounds = ahead() > 1e-9;
    if (sounds && !std::exchange(m_isSounding, true))
        tell([](SoundPipelineListener& listener) { listener.soundHeard(); });
    if (!sounds && std::exchange(m_isSounding, false))
        tell([](SoundPipelineListener& listener) { listener.ranDry(); });
    askForBytes();
}

void FakePipeline::askForBytes()
{
    if (ahead() >= heldAhead)
        return;
    for (auto& [id, branch] : m_branches) {
        if (!std::exchange(branch.asked, true))
            tell([id = id](SoundPipelineListener& listener) { listener.needsBytes(id); });
    }
}

void FakePipeline::failBranch(BranchId branch, const AudioErrorChain& cause)
{
    m_branches.erase(branch);
    tell([branch, cause](SoundPipelineListener& listener) { listener.branchFailed(branch, cause); });
}

void FakePipeline::failDevice()
{
    pause();
    tell([](SoundPipelineListener& listener) {
        listener.deviceFailed(
            { { AudioErrorDomain::gstResource, GstError::resourceNoDevice, QStringLiteral("gone") } });
    });
}

void FakePipeline::tellTitle(BranchId branch, double seconds, const QString& title)
{
    tell([=](SoundPipelineListener& listener) { listener.titleFound(branch, seconds, title); });
}

std::unique_ptr<SoundPipeline> FakePipelines::make(SoundPipelineListener& listener)
{
    auto pipeline = std::make_unique<FakePipeline>(m_loop, log, listener);
    last = pipeline.get();
    return pipeline;
}

}
