// SPDX-License-Identifier: GPL-3.0-or-later
// Encoded sound of every format: the first bytes choose it and the pieces.
#include "Claim.h"
#include "Pieces.h"
#include "live/FrameMeter.h"

#include <cmath>

namespace {

using namespace velarin;

double secondsOf(live::SoundFormat format, QByteArrayView bytes, qsizetype length)
{
    live::FrameMeter meter(format);
    fuzz::inPieces(bytes, length, [&](QByteArrayView piece) {
        const double seconds = meter.feed(piece);
        fuzz::claim(std::isfinite(seconds) && seconds >= 0.0);
    });
    fuzz::claim(meter.position() == bytes.size());
    fuzz::claim(!meter.firstBoundary() || *meter.firstBoundary() <= *meter.lastBoundary());
    fuzz::claim(!meter.lastBoundary() || *meter.lastBoundary() <= meter.position());
    return meter.seconds();
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3)
        return 0;
    const QByteArrayView bytes = fuzz::view(data, size).sliced(2);
    const auto format = static_cast<live::SoundFormat>(data[0] % 8);
    const double whole = secondsOf(format, bytes, bytes.size());
    fuzz::claim(std::abs(whole - secondsOf(format, bytes, 1 + data[1])) < 1e-6 * (1.0 + whole));
    return 0;
}
