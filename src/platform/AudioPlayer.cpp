// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AudioPlayer.h"

#include <atomic>

namespace velarin {

AudioItem makeAudioItem(const QUrl& url)
{
    static std::atomic<AudioItemId> lastId{ 0 };
    AudioItem item;
    item.id = ++lastId;
    item.url = url;
    return item;
}

}
