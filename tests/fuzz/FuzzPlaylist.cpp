// SPDX-License-Identifier: GPL-3.0-or-later
// m3u and pls lists.
#include "Claim.h"
#include "Pieces.h"
#include "base/Urls.h"
#include "live/PlaylistReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    const QUrl base(QStringLiteral("http://radio.example/a/list"));
    const QList<QUrl> addresses = live::readPlaylist(fuzz::view(data, size), base);
    fuzz::claim(addresses.size() <= live::playlistEntryLimit);
    for (const QUrl& address : addresses)
        fuzz::claim(isWebAddress(address) && addresses.count(address) == 1);
    return 0;
}
