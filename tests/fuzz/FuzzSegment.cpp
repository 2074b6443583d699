// SPDX-License-Identifier: GPL-3.0-or-later
// Segments: tags, transport streams, containers, cut anywhere.
#include "Claim.h"
#include "Pieces.h"
#include "live/hls/HlsSegmentReader.h"
#include "live/hls/Id3Tag.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    using namespace velarin::live;
    const QByteArrayView bytes = fuzz::view(data, size);
    if (const std::optional<QString> title = id3Title(bytes))
        fuzz::claim(title->size() <= bytes.size());
    const qsizetype piece = bytes.isEmpty() ? 1 : 1 + 3 * static_cast<unsigned char>(bytes.back());
    HlsSegmentReader reader;
    qsizetype given = 0;
    for (int segment = 0; segment < 2; ++segment) {
        reader.begin(Seconds(4.0), {});
        const auto count = [&](const std::vector<HlsItem>& more) {
            for (const HlsItem& item : more)
                if (const auto* sound = std::get_if<HlsSound>(&item))
                    given += sound->bytes.size();
        };
        for (qsizetype at = 0; at < bytes.size(); at += piece)
            count(reader.read(bytes.sliced(at, std::min(piece, bytes.size() - at))));
        count(reader.finish());
    }
    fuzz::claim(given <= 2 * bytes.size());
    return 0;
}
