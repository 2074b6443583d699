// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of segments and of variants.
#include "Claim.h"
#include "Pieces.h"
#include "base/Urls.h"
#include "live/hls/HlsPlan.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    using namespace velarin::live;
    const HlsPlaylist playlist =
        readHlsPlaylist(fuzz::view(data, size), QUrl(QStringLiteral("http://radio.example/a")));
    if (const auto* master = std::get_if<HlsMasterPlaylist>(&playlist)) {
        fuzz::claim(master->variants.size() <= hlsVariantLimit);
        fuzz::claim(chooseHlsVariant(master->variants, 128'000, {}).has_value());
        for (const HlsVariant& variant : master->variants)
            fuzz::claim(isWebAddress(variant.url));
    } else if (const auto* list = std::get_if<HlsMediaPlaylist>(&playlist)) {
        fuzz::claim(list->segments.size() <= hlsSegmentLimit && list->targetDuration >= 1.0);
        for (const HlsSegment& segment : list->segments)
            fuzz::claim(isWebAddress(segment.url) && segment.duration >= 0.0);
        // Whatever the list says, it comes to an end.
        std::optional<qsizetype> first = firstHlsSegment(*list);
        for (int steps = 0; first && steps < 64; ++steps) {
            const std::optional<HlsNext> next = nextHlsSegment(*list, positionOf(list->segments[*first]));
            fuzz::claim(!next || (next->index >= 0 && next->index < list->segments.size()));
            first = next ? std::optional(next->index) : std::nullopt;
        }
    }
    return 0;
}
