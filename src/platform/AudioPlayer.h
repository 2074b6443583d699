// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "base/Task.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>
#include <vector>

namespace velarin {

// One link of an error: a domain, a code in it, and a text for the developer log. The domains:
//
//   http        the status of the answer, 100 to 599, or one of HttpError
//   resolve     no address for the name            closed   the other side ended the stream
//   connect     refused, unreachable               reset    the connection broke
//   tls         no secure connection               timeout  no answer, or no bytes
//   gst-resource, gst-stream, gst-core             a GStreamer error of that domain, with its code
struct AudioError
{
    QString domain;
    qint64 code{ 0 };
    QString text;
    bool operator==(const AudioError&) const = default;
};

// From the outermost error to the innermost cause. Empty: no error.
using AudioErrorChain = std::vector<AudioError>;

namespace AudioErrorDomain {
inline const QString http = QStringLiteral("http");
inline const QString resolve = QStringLiteral("resolve");
inline const QString connect = QStringLiteral("connect");
inline const QString tls = QStringLiteral("tls");
inline const QString closed = QStringLiteral("closed");
inline const QString reset = QStringLiteral("reset");
inline const QString timeout = QStringLiteral("timeout");
inline const QString gstResource = QStringLiteral("gst-resource");
inline const QString gstStream = QStringLiteral("gst-stream");
inline const QString gstCore = QStringLiteral("gst-core");
}

// Codes of the domain "http" that are no status.
namespace HttpError {
constexpr qint64 malformedHead = 1;
constexpr qint64 redirectLoop = 2;
constexpr qint64 badAddress = 3;
}

// Codes of GStreamer's own enums that are told for what the engine finds out by itself.
namespace GstError {
constexpr qint64 streamTypeNotFound = 4;  // GST_STREAM_ERROR_TYPE_NOT_FOUND: no audio in what arrived
constexpr qint64 streamWrongType = 5;     // GST_STREAM_ERROR_WRONG_TYPE: a web page, a text, a picture
constexpr qint64 streamCodecNotFound = 6; // GST_STREAM_ERROR_CODEC_NOT_FOUND: no decoder
constexpr qint64 coreMissingPlugin = 12;  // GST_CORE_ERROR_MISSING_PLUGIN
constexpr qint64 resourceNoDevice = 6;    // GST_RESOURCE_ERROR_OPEN_WRITE: no sound device
}

enum class TimeControl
{
    Paused,
    // Wants to play, and has nothing to play yet or no more.
    Waiting,
    // Sound is heard: decoded audio reached the device and its clock moves.
    Playing,
};

enum class ItemStatus
{
    Unknown,
    Ready,
    Failed,
};

enum class AudioItemKind
{
    Live,
    File,
};

// Names an item for as long as the program runs; never 0, never used twice.
using AudioItemId = quint64;

// Something to play: an address and the wishes that go with it. A value; the player that plays it keeps its state.
struct AudioItem
{
    AudioItemId id{ 0 };
    QUrl url;
    QList<QPair<QByteArray, QByteArray>> headers;
    // Seconds of sound to hold in advance; 0 is the player's own choice.
    double forwardBufferDuration{ 0.0 };
    // Bits per second at the most, where there is a choice; 0 is no limit.
    qint64 peakBitRate{ 0 };
    AudioItemKind kind{ AudioItemKind::Live };
};

// An item with an id of its own.
[[nodiscard]] AudioItem makeAudioItem(const QUrl& url);

// A player of one item at a time, with its own sound output. Main thread only; all work runs on threads of its own, and
// what happens there arrives as events in later turns of the main loop: nothing calls back from inside a call.
//
// Life of an item: (1) observe() it, (2) replaceCurrentItem(), (3) play(). Its events carry its identity: an observer
// hears of its own item only, and only while its Observation lives, even if an event was already on its way. Getters
// answer with the state as of the last event delivered.
class AudioPlayer
{
public:
    // What happens to one item. Unset handlers are skipped.
    struct ItemHandlers
    {
        // Ready, or Failed; the chain says why and is empty for Ready. Told at most once each; no event but Failed
        // follows Failed.
        std::function<void(ItemStatus, const AudioErrorChain&)> status;
        // Enough is in reserve to play on. Told each time that it becomes so.
        std::function<void()> likelyToKeepUp;
        // Sound ended before its time; once per dry spell.
        std::function<void()> stalled;
        // The item broke after it had sounded, and the player has given up on it. Final.
        std::function<void(const AudioErrorChain&)> failedToPlayToEnd;
        // The item ended. Final.
        std::function<void()> playedToEnd;
        // The server's answer, where it is no success. Told before the failure that follows from it.
        std::function<void(int)> httpStatus;
        // The programme's title changed, told when its sound is heard; empty when the stream says that there is none.
        std::function<void(const QString&)> title;
    };

    // Detaches its handlers when it is destroyed.
    using Observation = Task;

    virtual ~AudioPlayer() = default;

    [[nodiscard]] virtual Observation observe(AudioItemId item, ItemHandlers handlers) = 0;
    // One handler for the life of the player. Each new value is told; Waiting once per dry spell.
    virtual void setTimeControlHandler(std::function<void(TimeControl)> handler) = 0;

    // Ends the former item at once. Without an item there is silence and no connection.
    virtual void replaceCurrentItem(std::optional<AudioItem> item) = 0;
    [[nodiscard]] virtual std::optional<AudioItemId> currentItem() const = 0;
    // Of the current item; Unknown without one.
    [[nodiscard]] virtual ItemStatus currentItemStatus() const = 0;

    virtual void play() = 0;
    // Keeps the pitch. A live item has the rate 1 whatever is asked.
    virtual void playAtRate(double rate) = 0;
    // Keeps the item. A live item stops reading from the network.
    virtual void pause() = 0;
    // Seconds from the start, exact. A live item ignores it.
    virtual void seek(double seconds) = 0;

    [[nodiscard]] virtual TimeControl timeControl() const = 0;
    // Seconds of sound heard of the current item, or not a number where nobody knows. It stands still in silence.
    [[nodiscard]] virtual double currentTime() const = 0;

    // Linear factor, 0 to 1; changes without a click.
    virtual void setVolume(float volume) = 0;
    [[nodiscard]] virtual float volume() const = 0;
};

}
