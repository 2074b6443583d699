// SPDX-License-Identifier: GPL-3.0-or-later
// What GStreamer and the device tell, brought to the engine's thread.
#include "live/GstSoundPipeline.h"

#include "live/LiveLog.h"

namespace velarin::live {
namespace {

// The branch that the element stands in; 0 for the rest of the pipeline.
BranchId branchOf(GstObject* element, const char* key)
{
    BranchId id = 0;
    GstObject* at = element ? GST_OBJECT(gst_object_ref(element)) : nullptr;
    while (at) {
        if (id == 0)
            id = GPOINTER_TO_INT(g_object_get_data(G_OBJECT(at), key));
        GstObject* parent = gst_object_get_parent(at);
        gst_object_unref(at);
        at = parent;
    }
    return id;
}

QString domainOf(GQuark domain)
{
    if (domain == GST_RESOURCE_ERROR)
        return AudioErrorDomain::gstResource;
    return domain == GST_STREAM_ERROR ? AudioErrorDomain::gstStream : AudioErrorDomain::gstCore;
}

AudioErrorChain chainOf(GstMessage* message)
{
    GError* error = nullptr;
    char* detail = nullptr;
    gst_message_parse_error(message, &error, &detail);
    AudioErrorChain chain{ { domainOf(error->domain), error->code,
        QStringLiteral("%1 (%2)").arg(QString::fromUtf8(error->message), QString::fromUtf8(detail)) } };
    g_error_free(error);
    g_free(detail);
    return chain;
}

}

void GstSoundPipeline::post(std::function<void()> work)
{
    m_loop.post([alive = std::weak_ptr(m_alive), work = std::move(work)] {
        if (!alive.expired())
            work();
    });
}

DecodeBranch::Events GstSoundPipeline::branchEvents(BranchId id)
{
    return {
        .hungry =
            [this, id] {
                m_output->settle();
                post([this, id] { becameHungry(id); });
            },
        .title =
            [this, id](double seconds, const QString& title) {
                post([this, id, seconds, title] {
                    if (present(id))
                        m_listener.titleFound(id, seconds, title);
                });
            },
        .finished = [this, id] { post([this, id] { finished(id); }); },
        .failed = [this, id](const AudioError& cause) { post([this, id, cause] { failed(id, { cause }); }); },
    };
}

SoundOutput::Events GstSoundPipeline::outputEvents()
{
    return {
        .heard = [this] { post([this] { heard(); }); },
        .dry = [this] { post([this] { tellWhenDry(); }); },
        .failed = [this](const AudioErrorChain& cause) { post([this, cause] { deviceFailed(cause); }); },
    };
}

GstBusSyncReply GstSoundPipeline::heardFromBus(GstBus* /*bus*/, GstMessage* message, gpointer self)
{
    auto& pipeline = *static_cast<GstSoundPipeline*>(self);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        const BranchId id = branchOf(GST_MESSAGE_SRC(message), branchKey);
        pipeline.post([&pipeline, id, cause = chainOf(message)] { pipeline.failed(id, cause); });
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}

GstSoundPipeline::Branch* GstSoundPipeline::present(BranchId id)
{
    const auto found = m_branches.find(id);
    return found == m_branches.end() || found->second.isGone ? nullptr : &found->second;
}

void GstSoundPipeline::becameHungry(BranchId id)
{
    Branch* branch = present(id);
    if (!branch || branch->isEnded)
        return;
    branch->isHungry = true;
    m_listener.needsBytes(id);
    tellWhenDry();
}

void GstSoundPipeline::finished(BranchId id)
{
    if (!present(id))
        return;
    retire(id);
    m_listener.branchFinished(id);
    tellWhenDry();
}

void GstSoundPipeline::failed(BranchId id, const AudioErrorChain& cause)
{
    if (!present(id))
        return;
    qCInfo(liveLog) << "branch" << id << "failed:" << cause.front().text;
    retire(id);
    m_listener.branchFailed(id, cause);
    tellWhenDry();
}

// The branch is removed when its thread has left the pipeline; where that one waits for the device, that takes until
// the device goes on.
void GstSoundPipeline::retire(BranchId id)
{
    Branch& branch = m_branches.at(id);
    branch.isGone = true;
    branch.decoder->silence();
    branch.decoder->whenIdle([this, id] { post([this, id] { remove(id); }); });
}

void GstSoundPipeline::remove(BranchId id)
{
    const auto node = m_branches.extract(id);
    if (node.empty())
        return;
    Branch branch = std::move(node.mapped());
    branch.decoder->stop();
    gst_bin_remove(GST_BIN(m_pipeline), branch.decoder->bin());
    gst_element_release_request_pad(m_concat, branch.place);
    gst_object_unref(branch.place);
}

void GstSoundPipeline::heard()
{
    if (!m_isPlaying || m_isSounding)
        return;
    m_isSounding = true;
    m_listener.soundHeard();
}

void GstSoundPipeline::deviceFailed(const AudioErrorChain& cause)
{
    m_isSounding = false;
    m_listener.deviceFailed(cause);
}

void GstSoundPipeline::tellWhenDry()
{
    if (!m_isSounding || !waitsForBytes() || !m_output->isDry())
        return;
    m_isSounding = false;
    m_listener.ranDry();
}

bool GstSoundPipeline::waitsForBytes() const
{
    for (const auto& [id, branch] : m_branches)
        if (!branch.isGone)
            return branch.isHungry;
    return true;
}

}
