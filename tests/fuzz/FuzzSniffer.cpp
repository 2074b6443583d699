// SPDX-License-Identifier: GPL-3.0-or-later
// The first bytes of a body under some media type, which the first byte chooses.
#include "Claim.h"
#include "Pieces.h"
#include "live/BodySniffer.h"

#include <array>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    using live::BodyEnd;
    using live::BodyKind;
    constexpr std::array<const char*, 6> types{ "audio/mpeg", "audio/aacp", "application/ogg", "text/html",
        "audio/x-mpegurl", "" };
    if (size < 1)
        return 0;
    const QByteArrayView type(types[data[0] % types.size()]);
    const QByteArrayView bytes = fuzz::view(data, size).sliced(1);
    const live::SniffedBody soFar = live::sniffBody(bytes, type, BodyEnd::NotYet);
    const live::SniffedBody whole = live::sniffBody(bytes, type, BodyEnd::Reached);
    fuzz::claim(whole.kind != BodyKind::NeedsMore);
    fuzz::claim(soFar.kind == BodyKind::NeedsMore || soFar == whole);
    fuzz::claim(bytes.size() < live::sniffLimit || soFar.kind != BodyKind::NeedsMore);
    fuzz::claim(whole.start >= 0 && whole.start <= bytes.size());
    return 0;
}
