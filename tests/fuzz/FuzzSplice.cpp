// SPDX-License-Identifier: GPL-3.0-or-later
// A tail and a burst: the first bytes say where the one ends, and how the other is cut.
#include "Claim.h"
#include "Pieces.h"
#include "live/Splice.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace velarin;
    if (size < 3)
        return 0;
    const QByteArrayView bytes = fuzz::view(data, size).sliced(3);
    const qsizetype cut = std::min<qsizetype>(bytes.size(), data[0] << 8 | data[1]);
    live::SpliceTail tail;
    tail.append(bytes.first(cut));
    live::Splice splice(tail.bytes());
    const QByteArrayView burst = bytes.sliced(cut);
    fuzz::inPieces(burst, 1 + data[2], [&](QByteArrayView piece) { static_cast<void>(splice.look(piece)); });
    splice.giveUp();
    const QByteArray onward = splice.onward();
    fuzz::claim(burst.toByteArray().endsWith(onward));
    if (splice.verdict() == live::Splice::Verdict::NoOverlap)
        fuzz::claim(onward.size() == burst.size());
    else
        fuzz::claim(tail.bytes().endsWith(burst.chopped(onward.size()).last(256).toByteArray()));
    return 0;
}
