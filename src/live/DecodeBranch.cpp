// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/DecodeBranch.h"

#include "platform/gstreamer/output/SoundOutput.h"

#include <gst/app/gstappsrc.h>

namespace velarin::live {
namespace {

// Little enough that the reserve stays countable before it.
constexpr guint64 inputBytes = 8192;
constexpr qint64 frameBytes = soundChannels * sizeof(float);

QString tagText(const GstTagList* tags, const char* name)
{
    char* text = nullptr;
    if (!gst_tag_list_get_string(tags, name, &text))
        return {};
    const QString copy = QString::fromUtf8(text);
    g_free(text);
    return copy;
}

}

DecodeBranch::DecodeBranch(SoundFormat format, std::atomic<int>& rate, Events events)
    : m_events(std::move(events))
    , m_rate(rate)
    , m_bin(gst_bin_new(nullptr))
{
    gst_object_ref_sink(m_bin);
    m_source = add("appsrc");
    g_object_set(m_source, "format", GST_FORMAT_BYTES, "max-bytes", inputBytes, "emit-signals", FALSE, nullptr);
    GstAppSrcCallbacks callbacks{};
    callbacks.need_data = [](GstAppSrc* /*source*/, guint /*length*/, gpointer self) {
        static_cast<DecodeBranch*>(self)->m_events.hungry();
    };
    gst_app_src_set_callbacks(GST_APP_SRC(m_source), &callbacks, this, nullptr);
    buildTail();
    build(format);
}

DecodeBranch::~DecodeBranch()
{
    gst_object_unref(m_sourcePad);
    gst_object_unref(m_bin);
}

void DecodeBranch::buildTail()
{
    m_convert = add("audioconvert");
    GstElement* resample = add("audioresample");
    m_shape = add("capsfilter");
    gst_element_link_many(m_convert, resample, m_shape, nullptr);

    GstPad* decoded = gst_element_get_static_pad(m_convert, "sink");
    gst_pad_add_probe(decoded, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, &capsDecoded, this, nullptr);
    gst_object_unref(decoded);

    GstPad* shaped = gst_element_get_static_pad(m_shape, "src");
    m_sourcePad = gst_ghost_pad_new("src", shaped);
    gst_object_ref(m_sourcePad);
    gst_element_add_pad(m_bin, m_sourcePad);
    constexpr auto passing =
        static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM);
    gst_pad_add_probe(shaped, passing, &soundPassed, this, nullptr);
    gst_object_unref(shaped);
}

void DecodeBranch::push(const QByteArray& bytes)
{
    m_pushed += bytes.size();
    GstBuffer* buffer = gst_buffer_new_memdup(bytes.constData(), static_cast<gsize>(bytes.size()));
    gst_app_src_push_buffer(GST_APP_SRC(m_source), buffer);
    // A parser would look for the next frame in noise for ever.
    if (m_pushed - m_pushedAtSound > m_searchLimit)
        failWithoutSound(m_searchLimit);
}

void DecodeBranch::end()
{
    gst_app_src_end_of_stream(GST_APP_SRC(m_source));
}

GstPadProbeReturn DecodeBranch::capsDecoded(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer self)
{
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) == GST_EVENT_CAPS) {
        GstCaps* caps = nullptr;
        gst_event_parse_caps(event, &caps);
        static_cast<DecodeBranch*>(self)->decideRate(caps);
    }
    return GST_PAD_PROBE_OK;
}

// Before the caps reach the converters, so that they settle once.
void DecodeBranch::decideRate(const GstCaps* decoded)
{
    int rate = 0;
    gst_structure_get_int(gst_caps_get_structure(decoded, 0), "rate", &rate);
    int undecided = 0;
    m_rate.compare_exchange_strong(undecided, SoundOutput::outputRateFor(rate));
    GstCaps* shape = SoundOutput::makeCaps(m_rate);
    g_object_set(m_shape, "caps", shape, nullptr);
    gst_caps_unref(shape);
}

GstPadProbeReturn DecodeBranch::soundPassed(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer self)
{
    auto& branch = *static_cast<DecodeBranch*>(self);
    // Not even its end: concat would keep the thread until the turn of a branch that is gone.
    if (branch.m_silenced)
        return GST_PAD_PROBE_DROP;
    if ((GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) != 0) {
        branch.countSound(info);
        return GST_PAD_PROBE_OK;
    }
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) == GST_EVENT_TAG)
        branch.readTags(event);
    else if (GST_EVENT_TYPE(event) == GST_EVENT_EOS)
        branch.passEnd();
    return GST_PAD_PROBE_OK;
}

void DecodeBranch::countSound(GstPadProbeInfo* info)
{
    // Sound follows sound. What a damaged stream claims about its time must not cut it.
    GstBuffer* buffer = gst_buffer_make_writable(GST_PAD_PROBE_INFO_BUFFER(info));
    GST_BUFFER_PTS(buffer) = GST_CLOCK_TIME_NONE;
    GST_BUFFER_DURATION(buffer) = GST_CLOCK_TIME_NONE;
    GST_PAD_PROBE_INFO_DATA(info) = buffer;
    m_frames += static_cast<qint64>(gst_buffer_get_size(buffer)) / frameBytes;
    m_pushedAtSound = m_pushed.load();
}

void DecodeBranch::readTags(GstEvent* event)
{
    GstTagList* tags = nullptr;
    gst_event_parse_tag(event, &tags);
    const QString title = tagText(tags, GST_TAG_TITLE);
    const QString artist = tagText(tags, GST_TAG_ARTIST);
    const QString text = artist.isEmpty() || title.isEmpty() ? title : artist + QStringLiteral(" - ") + title;
    // The demultiplexer and the decoder both tell.
    if (text.isEmpty() || text == m_title)
        return;
    m_title = text;
    const int rate = m_rate;
    m_events.title(rate == 0 ? 0.0 : static_cast<double>(m_frames) / rate, text);
}

void DecodeBranch::passEnd()
{
    if (m_frames > 0)
        m_events.finished();
    else
        failWithoutSound(m_pushed);
}

void DecodeBranch::failWithoutSound(qint64 bytes)
{
    fail({ AudioErrorDomain::gstStream, GstError::streamTypeNotFound,
        QStringLiteral("no sound in %1 bytes").arg(bytes) });
}

void DecodeBranch::fail(const AudioError& cause)
{
    if (!m_hasFailed.exchange(true))
        m_events.failed(cause);
}

void DecodeBranch::whenIdle(std::function<void()> idle)
{
    gst_pad_add_probe(
        m_sourcePad, GST_PAD_PROBE_TYPE_IDLE,
        [](GstPad* /*pad*/, GstPadProbeInfo* /*info*/, gpointer work) {
            (*static_cast<std::function<void()>*>(work))();
            return GST_PAD_PROBE_REMOVE;
        },
        new std::function<void()>(std::move(idle)),
        [](gpointer work) { delete static_cast<std::function<void()>*>(work); });
}

void DecodeBranch::stop()
{
    m_stopping = true;
    gst_element_set_state(m_bin, GST_STATE_NULL);
}

}
