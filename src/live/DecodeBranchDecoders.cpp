// SPDX-License-Identifier: GPL-3.0-or-later
// Which parsers and decoders stand in a branch.
#include "live/DecodeBranch.h"

#include <algorithm>
#include <array>

namespace velarin::live {
namespace {

// So much without any sound is no sound.
constexpr qint64 knownLimit = 256 * 1024;
constexpr qint64 unknownLimit = 1024 * 1024;

constexpr auto songKey = "velarin-song";

struct CodecChain
{
    // A structure of caps that the stream's own must fit.
    const char* mediaType;
    const char* parser;
    const char* decoder;
};

// What an Ogg carries. Its FLAC comes without the marks of frames that the decoder needs.
constexpr std::array<CodecChain, 4> oggCodecs{ {
    { "audio/x-vorbis", nullptr, "vorbisdec" },
    { "audio/x-opus", nullptr, "opusdec" },
    { "audio/x-flac", "flacparse", "flacdec" },
    { "audio/x-speex", nullptr, "speexdec" },
} };

// What a transport stream or an MP4 carries.
constexpr std::array<CodecChain, 8> containerCodecs{ {
    { "audio/mpeg, mpegversion=(int)1", "mpegaudioparse", "mpg123audiodec" },
    { "audio/mpeg, mpegversion=(int){2,4}, stream-format=(string)loas", "aacparse", "avdec_aac_latm" },
    { "audio/mpeg, mpegversion=(int){2,4}", "aacparse", "faad" },
    { "audio/x-opus", nullptr, "opusdec" },
    { "audio/x-flac", "flacparse", "flacdec" },
    { "audio/x-ac3", "ac3parse", "a52dec" },
    { "audio/x-eac3", "ac3parse", "avdec_eac3" },
    { "audio/x-alac", nullptr, "avdec_alac" },
} };

bool fits(const GstCaps* caps, const char* description)
{
    GstCaps* wanted = gst_caps_from_string(description);
    const bool fit = gst_caps_is_subset(caps, wanted) != FALSE;
    gst_caps_unref(wanted);
    return fit;
}

void addGhost(GstElement* bin, GstElement* element, const char* name)
{
    GstPad* pad = gst_element_get_static_pad(element, name);
    gst_element_add_pad(bin, gst_ghost_pad_new(name, pad));
    gst_object_unref(pad);
}

const char* inputCaps(SoundFormat format)
{
    switch (format) {
    case SoundFormat::Mpeg:
        return "audio/mpeg, mpegversion=1";
    case SoundFormat::AacAdts:
        return "audio/mpeg, mpegversion=4, stream-format=adts";
    case SoundFormat::AacLoas:
        return "audio/mpeg, mpegversion=4, stream-format=loas";
    case SoundFormat::Ogg:
        return "application/ogg";
    case SoundFormat::Flac:
        return "audio/x-flac";
    case SoundFormat::Mp4:
        return "video/quicktime, variant=iso";
    case SoundFormat::MpegTs:
    case SoundFormat::Other:
        return nullptr;
    }
    return nullptr;
}

}

void DecodeBranch::build(SoundFormat format)
{
    if (const char* text = inputCaps(format)) {
        GstCaps* caps = gst_caps_from_string(text);
        g_object_set(m_source, "caps", caps, nullptr);
        gst_caps_unref(caps);
    }
    m_searchLimit = knownLimit;
    switch (format) {
    case SoundFormat::Mpeg:
        return buildChain("mpegaudioparse", { "mpg123audiodec", "avdec_mp3" });
    case SoundFormat::AacAdts:
        return buildChain("aacparse", { "faad", "avdec_aac" });
    case SoundFormat::AacLoas:
        return buildChain("aacparse", { "avdec_aac_latm" });
    case SoundFormat::Flac:
        return buildChain("flacparse", { "flacdec" });
    case SoundFormat::Ogg:
        return buildOgg();
    case SoundFormat::Mp4:
        m_searchLimit = unknownLimit;
        return buildContainer("qtdemux");
    // The demultiplexer for transport streams ends without a word where it finds no sound; the search tells it.
    case SoundFormat::MpegTs:
    case SoundFormat::Other:
        m_searchLimit = unknownLimit;
        return buildSearch();
    }
}

void DecodeBranch::buildChain(const char* parserName, std::initializer_list<const char*> decoders)
{
    GstElement* parser = addFirstPresent({ parserName });
    GstElement* decoder = addFirstPresent(decoders);
    if (!parser || !decoder)
        return;
    // A damaged frame is heard as a short fault; it ends nothing.
    g_object_set(decoder, "max-errors", -1, nullptr);
    gst_element_link_many(m_source, parser, decoder, m_convert, nullptr);
}

void DecodeBranch::buildOgg()
{
    GstElement* demultiplexer = addFirstPresent({ "oggdemux" });
    m_funnel = addFirstPresent({ "funnel" });
    if (!demultiplexer || !m_funnel)
        return;
    g_signal_connect(demultiplexer, "pad-added", G_CALLBACK(&songBegan), this);
    g_signal_connect(demultiplexer, "pad-removed", G_CALLBACK(&songEnded), this);
    gst_element_link(m_source, demultiplexer);
    gst_element_link(m_funnel, m_convert);
}

// One stream of sound after the other comes where a container is put together anew.
void DecodeBranch::buildContainer(const char* demultiplexerName)
{
    GstElement* demultiplexer = addFirstPresent({ demultiplexerName });
    m_funnel = addFirstPresent({ "funnel" });
    if (!demultiplexer || !m_funnel)
        return;
    g_signal_connect(demultiplexer, "pad-added", G_CALLBACK(&trackBegan), this);
    g_signal_connect(demultiplexer, "pad-removed", G_CALLBACK(&songEnded), this);
    gst_element_link(m_source, demultiplexer);
    gst_element_link(m_funnel, m_convert);
}

void DecodeBranch::trackBegan(GstElement* /*demultiplexer*/, GstPad* pad, gpointer self)
{
    auto& branch = *static_cast<DecodeBranch*>(self);
    GstCaps* caps = gst_pad_get_current_caps(pad);
    // A second language: the first sound is the one.
    const bool isSecond = branch.m_funnel->numsinkpads > 0;
    const auto codec = std::find_if(containerCodecs.begin(), containerCodecs.end(),
        [caps](const CodecChain& known) { return caps && fits(caps, known.mediaType); });
    if (codec != containerCodecs.end() && !isSecond)
        branch.addSong(pad, codec->parser, codec->decoder);
    if (caps)
        gst_caps_unref(caps);
}

void DecodeBranch::buildSearch()
{
    GstElement* search = addFirstPresent({ "decodebin" });
    if (!search)
        return;
    g_signal_connect(search, "pad-added", G_CALLBACK(&soundFound), this);
    gst_element_link(m_source, search);
    GstPad* input = gst_element_get_static_pad(m_source, "src");
    gst_pad_add_probe(input, GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, &searchEnds, this, nullptr);
    gst_object_unref(input);
}

// A search that found nothing keeps the end to itself. When the end has gone through it, it is asked.
GstPadProbeReturn DecodeBranch::searchEnds(GstPad* pad, GstPadProbeInfo* info, gpointer self)
{
    if (GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info)) == GST_EVENT_EOS)
        gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_IDLE, &searchEnded, self, nullptr);
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn DecodeBranch::searchEnded(GstPad* /*pad*/, GstPadProbeInfo* /*info*/, gpointer self)
{
    auto& branch = *static_cast<DecodeBranch*>(self);
    GstPad* decoded = gst_element_get_static_pad(branch.m_convert, "sink");
    if (!gst_pad_is_linked(decoded))
        branch.failWithoutSound(branch.m_pushed);
    gst_object_unref(decoded);
    return GST_PAD_PROBE_REMOVE;
}

void DecodeBranch::soundFound(GstElement* /*search*/, GstPad* pad, gpointer self)
{
    GstPad* sink = gst_element_get_static_pad(static_cast<DecodeBranch*>(self)->m_convert, "sink");
    // A picture beside the sound, or a second language: the first sound is the one.
    if (!gst_pad_is_linked(sink))
        gst_pad_link(pad, sink);
    gst_object_unref(sink);
}

// Each song of a chained Ogg has a decoder of its own. The former one gives its last sound while the next is there
// already, so both flow into one funnel.
void DecodeBranch::songBegan(GstElement* /*demultiplexer*/, GstPad* pad, gpointer self)
{
    auto& branch = *static_cast<DecodeBranch*>(self);
    GstCaps* caps = gst_pad_get_current_caps(pad);
    if (!caps)
        return;
    const QByteArrayView type(gst_structure_get_name(gst_caps_get_structure(caps, 0)));
    for (const CodecChain& codec : oggCodecs)
        if (type == codec.mediaType)
            branch.addSong(pad, codec.parser, codec.decoder);
    gst_caps_unref(caps);
}

void DecodeBranch::addSong(GstPad* pad, const char* parserName, const char* decoderName)
{
    GstElement* song = gst_bin_new(nullptr);
    GstElement* decoder = gst_element_factory_make(decoderName, nullptr);
    GstElement* parser = parserName ? gst_element_factory_make(parserName, nullptr) : nullptr;
    if (!decoder || (parserName && !parser)) {
        gst_object_unref(song);
        return fail({ AudioErrorDomain::gstCore, GstError::coreMissingPlugin, QString::fromLatin1(decoderName) });
    }
    g_object_set(decoder, "max-errors", -1, nullptr);
    gst_bin_add(GST_BIN(song), decoder);
    if (parser) {
        gst_bin_add(GST_BIN(song), parser);
        gst_element_link(parser, decoder);
    }
    addGhost(song, parser ? parser : decoder, "sink");
    addGhost(song, decoder, "src");
    gst_bin_add(GST_BIN(m_bin), song);
    gst_element_link(song, m_funnel);
    gst_element_sync_state_with_parent(song);
    GstPad* sink = gst_element_get_static_pad(song, "sink");
    gst_pad_link(pad, sink);
    gst_object_unref(sink);
    g_object_set_data(G_OBJECT(pad), songKey, song);
}

void DecodeBranch::songEnded(GstElement* /*demultiplexer*/, GstPad* pad, gpointer self)
{
    auto& branch = *static_cast<DecodeBranch*>(self);
    auto* song = static_cast<GstElement*>(g_object_steal_data(G_OBJECT(pad), songKey));
    // When the whole branch stops, the bin takes its songs with it.
    if (!song || branch.m_stopping)
        return;
    GstPad* source = gst_element_get_static_pad(song, "src");
    GstPad* funnelPad = gst_pad_get_peer(source);
    gst_object_unref(source);
    gst_element_set_state(song, GST_STATE_NULL);
    gst_bin_remove(GST_BIN(branch.m_bin), song);
    if (funnelPad) {
        gst_element_release_request_pad(branch.m_funnel, funnelPad);
        gst_object_unref(funnelPad);
    }
}

GstElement* DecodeBranch::add(const char* factory)
{
    GstElement* element = gst_element_factory_make(factory, nullptr);
    if (element)
        gst_bin_add(GST_BIN(m_bin), element);
    return element;
}

GstElement* DecodeBranch::addFirstPresent(std::initializer_list<const char*> factories)
{
    for (const char* factory : factories)
        if (GstElement* element = add(factory))
            return element;
    fail({ AudioErrorDomain::gstCore, GstError::coreMissingPlugin, QString::fromLatin1(*factories.begin()) });
    return nullptr;
}

}
