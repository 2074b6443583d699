// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/SoundFormat.h"
#include "platform/AudioPlayer.h"

#include <gst/gst.h>

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>

namespace velarin::live {

// One stretch of encoded sound on its way to samples: bytes in, sound of the output's shape out. A bin with one source
// pad, which goes into a pipeline like any other element.
//
// What is known is decoded by a parser and a decoder named here; only what is not known is given to GStreamer's own
// search, which loads libav (33 MB) for its type finders.
class DecodeBranch
{
public:
    // Called on the branch's streaming thread (failed: on any), possibly from inside calls.
    struct Events
    {
        // It has consumed what it was given, and waits.
        std::function<void()> hungry;
        // A title, and the seconds of the branch's own sound that came before it.
        std::function<void(double, const QString&)> title;
        // The end was announced, and all of its sound has left it.
        std::function<void()> finished;
        // Its bytes are no sound. GStreamer's own errors come on the bus.
        std::function<void(const AudioError&)> failed;
    };

    // `rate` is the output's; where it is still 0, the first branch with sound decides and writes it.
    DecodeBranch(SoundFormat format, std::atomic<int>& rate, Events events);
    // It was stopped, and is out of its pipeline.
    ~DecodeBranch();
    DecodeBranch(const DecodeBranch&) = delete;
    DecodeBranch& operator=(const DecodeBranch&) = delete;

    [[nodiscard]] GstElement* bin() const { return m_bin; }
    [[nodiscard]] GstPad* sourcePad() const { return m_sourcePad; }

    void push(const QByteArray& bytes);
    // No more bytes. A branch that was given none must not be told so (hasBytes()): its parser would fail.
    void end();
    [[nodiscard]] bool hasBytes() const { return m_pushed > 0; }

    // From now on nothing more leaves it.
    void silence() { m_silenced = true; }
    // Calls `idle` when its thread is out of what follows the branch: at once, or later on that thread.
    void whenIdle(std::function<void()> idle);
    // What its thread does from now on is only to end. To be called before whoever holds the bin stops it.
    void prepareToStop() { m_stopping = true; }
    void stop();

private:
    static void soundFound(GstElement* search, GstPad* pad, gpointer self);
    static void songBegan(GstElement* demultiplexer, GstPad* pad, gpointer self);
    static void trackBegan(GstElement* demultiplexer, GstPad* pad, gpointer self);
    static void songEnded(GstElement* demultiplexer, GstPad* pad, gpointer self);
    static GstPadProbeReturn searchEnds(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn searchEnded(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn capsDecoded(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn soundPassed(GstPad* pad, GstPadProbeInfo* info, gpointer self);

    void build(SoundFormat format);
    void buildTail();
    void buildChain(const char* parserName, std::initializer_list<const char*> decoders);
    void buildOgg();
    void buildContainer(const char* demultiplexerName);
    void buildSearch();
    void addSong(GstPad* pad, const char* parserName, const char* decoderName);
    GstElement* add(const char* factory);
    GstElement* addFirstPresent(std::initializer_list<const char*> factories);
    void decideRate(const GstCaps* decoded);
    void countSound(GstPadProbeInfo* info);
    void readTags(GstEvent* event);
    void passEnd();
    void failWithoutSound(qint64 bytes);
    void fail(const AudioError& cause);

    Events m_events;
    std::atomic<int>& m_rate;
    GstElement* m_bin{ nullptr };
    GstElement* m_source{ nullptr };
    // The head of the conversion, to which decoded sound is linked.
    GstElement* m_convert{ nullptr };
    GstElement* m_shape{ nullptr };
    // Of containers alone: joins their songs.
    GstElement* m_funnel{ nullptr };
    GstPad* m_sourcePad{ nullptr };
    qint64 m_searchLimit{ 0 };
    // Bytes, in all and when sound last came out.
    std::atomic<qint64> m_pushed{ 0 };
    std::atomic<qint64> m_pushedAtSound{ 0 };
    std::atomic<bool> m_silenced{ false };
    std::atomic<bool> m_hasFailed{ false };
    std::atomic<bool> m_stopping{ false };

    // The streaming thread alone.
    qint64 m_frames{ 0 };
    QString m_title;
};

}
