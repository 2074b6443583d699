// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "live/EndPlan.h"
#include "live/Seconds.h"
#include "live/SoundFormat.h"
#include "platform/AudioPlayer.h"

#include <QByteArrayView>
#include <QString>
#include <QUrl>

#include <optional>

namespace velarin::live {

// What a source gives and asks. All on the engine's thread. The listener does not destroy the source from inside a
// call.
class LiveSourceListener
{
public:
    virtual ~LiveSourceListener() = default;

    // The sound from here on does not join what came before: the first sound, another format, another encoder.
    virtual void stretchStarted(SoundFormat format, std::optional<qint64> claimedBitRate) = 0;
    // Valid during the call only. Follows a stretchStarted().
    virtual void soundReceived(QByteArrayView bytes) = 0;
    // The same of bytes in which nobody here can count: they sound for so long, as who packed them says.
    virtual void measuredSoundReceived(QByteArrayView bytes, Seconds lasting) = 0;
    // The title of the sound that follows.
    virtual void titleReceived(const QString& title) = 0;

    // No sound was ever given, and none will be. Final.
    virtual void sourceFailed(const AudioErrorChain& cause) = 0;
    // Sound came and comes no more. An empty cause: the connection is open and silent; the same outage is told again
    // when that connection has ended. Told again too when a source that mended gives up on it.
    virtual void outageBegan(const AudioErrorChain& cause, Mending mending) = 0;
    // Sound comes again.
    virtual void outageEnded() = 0;
    // The address is a list of segments, for which there is another source. Final.
    virtual void segmentListFound(const QUrl& url) = 0;

    // Seconds of sound received from this source so far, and those not heard yet.
    [[nodiscard]] virtual Seconds soundReceivedSoFar() const = 0;
    [[nodiscard]] virtual Seconds soundInHand() const = 0;
};

// Where the encoded sound of one item comes from: an address that streams, or a list of segments. It begins when made;
// nothing is told from inside a call. Engine thread only.
class LiveSource
{
public:
    virtual ~LiveSource() = default;

    // While it does not read, it does not mend either; what broke meanwhile is mended when it reads again.
    virtual void setReading(bool reading) = 0;
    // What it gives cannot be played: as if the connection had ended with this cause.
    virtual void refuseSound(const AudioErrorChain& cause) = 0;
};

}
