// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ears/Programme.h"

#include "support/ears/ToneCode.h"

#include <QString>

#include <gst/app/gstappsink.h>
#include <gst/app/gstappsrc.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <span>

namespace velarin::test {
namespace {

// Three tones together stay well below full scale.
constexpr double loudness = 0.2;
// To and from silence, so that an end of the programme is no click.
constexpr double fadeSeconds = 0.002;

const char* encoder(Codec codec)
{
    switch (codec) {
    case Codec::Mp3:
        return "lamemp3enc target=bitrate bitrate=128 cbr=true";
    case Codec::AacAdts:
        return "voaacenc bitrate=128000 ! aacparse ! audio/mpeg,stream-format=adts";
    case Codec::OggVorbis:
        return "vorbisenc bitrate=128000 ! oggmux max-delay=0 max-page-delay=100000000";
    case Codec::OggOpus:
        return "opusenc bitrate=96000 ! oggmux max-delay=0 max-page-delay=100000000";
    case Codec::OggFlac:
        return "flacenc ! flacparse ! oggmux max-delay=0 max-page-delay=100000000";
    case Codec::Flac:
        return "flacenc";
    }
    return "";
}

QByteArray description(Codec codec, int rate, const QString& title, const QString& artist)
{
    QString tags;
    if (!title.isEmpty())
        tags = QStringLiteral("title=\"%1\"%2")
                   .arg(title, artist.isEmpty() ? QString() : QStringLiteral(",artist=\"%1\"").arg(artist));
    QString text =
        QStringLiteral("appsrc name=in format=time "
                       "caps=audio/x-raw,format=F32LE,layout=interleaved,channels=1,rate=%1 "
                       "! audioconvert ! audioresample ! audio/x-raw,channels=2 ! %2 %3 "
                       "! appsink name=out sync=false")
            .arg(QString::number(rate),
                tags.isEmpty()
                    ? QString()
                    : QStringLiteral("taginject tags=\"%1\" ! ").arg(tags.replace(u'"', QStringLiteral("\\\""))),
                QString::fromLatin1(encoder(codec)));
    return text.toUtf8();
}

QByteArray pullAll(GstElement* sink)
{
    QByteArray bytes;
    while (GstSample* sample = gst_app_sink_pull_sample(GST_APP_SINK(sink))) {
        GstMapInfo map;
        GstBuffer* buffer = gst_sample_get_buffer(sample);
        if (gst_buffer_map(buffer, &map, GST_MAP_READ)) {
            bytes.append(reinterpret_cast<const char*>(map.data), static_cast<qsizetype>(map.size));
            gst_buffer_unmap(buffer, &map);
        }
        gst_sample_unref(sample);
    }
    return bytes;
}

void pushPiece(GstElement* source, std::span<const float> samples, std::size_t at, int rate)
{
    GstBuffer* buffer = gst_buffer_new_memdup(samples.data(), samples.size_bytes());
    GST_BUFFER_PTS(buffer) = gst_util_uint64_scale(at, GST_SECOND, static_cast<guint64>(rate));
    GST_BUFFER_DURATION(buffer) = gst_util_uint64_scale(samples.size(), GST_SECOND, static_cast<guint64>(rate));
    gst_app_src_push_buffer(GST_APP_SRC(source), buffer);
}

QByteArray encode(const QByteArray& pipelineText, const std::vector<float>& samples, int rate)
{
    gst_init(nullptr, nullptr);
    GstElement* pipeline = gst_parse_launch(pipelineText.constData(), nullptr);
    if (!pipeline)
        return {};
    GstElement* source = gst_bin_get_by_name(GST_BIN(pipeline), "in");
    GstElement* sink = gst_bin_get_by_name(GST_BIN(pipeline), "out");
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    // In pieces: libvorbis takes a whole buffer on its stack.
    const auto piece = static_cast<std::size_t>(rate);
    for (std::size_t at = 0; at < samples.size(); at += piece)
        pushPiece(source, std::span(samples).subspan(at, std::min(piece, samples.size() - at)), at, rate);
    gst_app_src_end_of_stream(GST_APP_SRC(source));
    const QByteArray bytes = pullAll(sink);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(source);
    gst_object_unref(sink);
    gst_object_unref(pipeline);
    return bytes;
}

void fade(std::vector<float>& samples, double rate)
{
    const auto count = std::min(samples.size() / 2, static_cast<std::size_t>(fadeSeconds * rate));
    for (std::size_t index = 0; index < count; ++index) {
        const auto factor = static_cast<float>(index) / static_cast<float>(count);
        samples[index] *= factor;
        samples[samples.size() - 1 - index] *= factor;
    }
}

}

std::vector<float> Programme::samples() const
{
    std::vector<float> sound(static_cast<std::size_t>(length * framesPerSecond));
    double phase[ToneCode::digits] = {};
    for (std::size_t index = 0; index < sound.size(); ++index) {
        const double time = from + static_cast<double>(index) / framesPerSecond;
        const int step = static_cast<int>(time / ToneCode::stepSeconds + 1e-9) % ToneCode::stepCount;
        double sum = 0.0;
        for (int digit = 0; digit < ToneCode::digits; ++digit) {
            phase[digit] += ToneCode::frequency(digit, ToneCode::digitOf(step, digit)) / framesPerSecond;
            sum += std::sin(2.0 * std::numbers::pi * phase[digit]);
        }
        sound[index] = static_cast<float>(loudness * sum);
    }
    fade(sound, framesPerSecond);
    return sound;
}

QByteArray Programme::encoded() const
{
    static std::map<Programme, QByteArray> known;
    QByteArray& bytes = known[*this];
    if (bytes.isEmpty())
        bytes =
            encode(description(codec, framesPerSecond, QString::fromStdString(title), QString::fromStdString(artist)),
                samples(), framesPerSecond);
    return bytes;
}

QByteArray encodedTone(double frequency, double seconds)
{
    constexpr int rate = 44100;
    std::vector<float> sound(static_cast<std::size_t>(seconds * rate));
    for (std::size_t index = 0; index < sound.size(); ++index)
        sound[index] =
            static_cast<float>(0.8 * std::sin(2.0 * std::numbers::pi * frequency * static_cast<double>(index) / rate));
    return encode(description(Codec::Mp3, rate, {}, {}), sound, rate);
}

}
