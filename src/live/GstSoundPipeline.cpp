// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/GstSoundPipeline.h"

#include "live/LiveLog.h"

namespace velarin::live {

GstSoundPipelineFactory::GstSoundPipelineFactory(EngineLoop& loop, std::shared_ptr<DeviceSelection> selection)
    : m_loop(loop)
    , m_selection(std::move(selection))
{
}

std::unique_ptr<SoundPipeline> GstSoundPipelineFactory::make(SoundPipelineListener& listener)
{
    gst_init(nullptr, nullptr);
    return std::make_unique<GstSoundPipeline>(m_loop, m_selection, listener);
}

GstSoundPipeline::GstSoundPipeline(
    EngineLoop& loop, std::shared_ptr<DeviceSelection> selection, SoundPipelineListener& listener)
    : m_loop(loop)
    , m_listener(listener)
    , m_pipeline(gst_pipeline_new(nullptr))
    , m_concat(gst_element_factory_make("concat", nullptr))
    , m_output(std::make_unique<SoundOutput>(std::move(selection), outputEvents()))
{
    GstBus* bus = gst_element_get_bus(m_pipeline);
    gst_bus_set_sync_handler(bus, &heardFromBus, this, nullptr);
    gst_object_unref(bus);
    gst_bin_add_many(GST_BIN(m_pipeline), m_concat, m_output->element(), nullptr);
    gst_element_link(m_concat, m_output->element());
    m_spare = gst_element_request_pad_simple(m_concat, "sink_%u");
    gst_element_set_state(m_pipeline, GST_STATE_PLAYING);
}

GstSoundPipeline::~GstSoundPipeline()
{
    // The thread that waits for the device is let go first; then nothing holds the pipeline up.
    m_output->close();
    for (auto& [id, branch] : m_branches)
        branch.decoder->prepareToStop();
    gst_element_set_state(m_pipeline, GST_STATE_NULL);
    for (auto& [id, branch] : m_branches)
        gst_object_unref(branch.place);
    gst_object_unref(m_spare);
    m_branches.clear();
    gst_object_unref(m_pipeline);
}

BranchId GstSoundPipeline::openBranch(SoundFormat format)
{
    const BranchId id = ++m_lastBranch;
    Branch& branch = m_branches[id];
    branch.decoder = std::make_unique<DecodeBranch>(format, m_rate, branchEvents(id));
    insert(branch, id);
    return id;
}

void GstSoundPipeline::insert(Branch& branch, BranchId id)
{
    branch.place = m_spare;
    m_spare = gst_element_request_pad_simple(m_concat, "sink_%u");
    GstElement* bin = branch.decoder->bin();
    g_object_set_data(G_OBJECT(bin), branchKey, GINT_TO_POINTER(id));
    gst_bin_add(GST_BIN(m_pipeline), bin);
    gst_pad_link(branch.decoder->sourcePad(), branch.place);
    gst_element_sync_state_with_parent(bin);
}

void GstSoundPipeline::push(BranchId id, const QByteArray& bytes)
{
    Branch* branch = present(id);
    if (!branch || branch->isEnded || bytes.isEmpty())
        return;
    branch->isHungry = false;
    branch->decoder->push(bytes);
}

void GstSoundPipeline::endBranch(BranchId id)
{
    Branch* branch = present(id);
    if (!branch || branch->isEnded)
        return;
    branch->isEnded = true;
    if (branch->decoder->hasBytes())
        branch->decoder->end();
    else
        post([this, id] { finished(id); });
}

void GstSoundPipeline::play()
{
    m_isPlaying = true;
    m_output->setPaused(false);
}

void GstSoundPipeline::pause()
{
    m_isPlaying = false;
    m_isSounding = false;
    m_output->setPaused(true);
}

void GstSoundPipeline::setVolume(float volume)
{
    m_output->setVolume(volume);
}

double GstSoundPipeline::heardSeconds() const
{
    return m_output->heardSeconds();
}

double GstSoundPipeline::decodedSeconds() const
{
    return m_output->takenSeconds();
}

}
