// SPDX-License-Identifier: GPL-3.0-or-later
// What each received byte costs on its way to the decoder, beside a memcpy of the same bytes, which no way avoids.
#include "live/FrameMeter.h"
#include "live/IcyReader.h"
#include "live/Splice.h"
#include "support/ears/Programme.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using namespace velarin;
using namespace velarin::live;

// As curl hands bytes over at the most.
constexpr qsizetype pieceSize = 16 * 1024;
constexpr qsizetype metadataInterval = 16'000;
constexpr qsizetype burst = 64 * 1024;

const QByteArray& sound()
{
    static const QByteArray bytes = test::Programme{ .codec = test::Codec::Mp3, .length = 60.0 }.encoded();
    return bytes;
}

QByteArray withMetadata(const QByteArray& bytes)
{
    QByteArray body;
    for (qsizetype at = 0; at < bytes.size(); at += metadataInterval)
        body +=
            bytes.mid(at, metadataInterval) + '\x02' + QByteArray("StreamTitle='Uno - Due';").leftJustified(32, '\0');
    return body;
}

template<typename Take>
void inPieces(const QByteArray& bytes, Take take)
{
    for (qsizetype at = 0; at < bytes.size(); at += pieceSize)
        take(QByteArrayView(bytes).sliced(at, std::min(pieceSize, bytes.size() - at)));
}

void countBytes(benchmark::State& state, qsizetype perRound)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * perRound);
}

void copyBytes(benchmark::State& state)
{
    const QByteArray& bytes = sound();
    std::vector<char> target(pieceSize);
    for ([[maybe_unused]] auto round : state)
        inPieces(bytes, [&](QByteArrayView piece) {
            std::memcpy(target.data(), piece.data(), static_cast<size_t>(piece.size()));
            benchmark::DoNotOptimize(target.data());
            benchmark::ClobberMemory();
        });
    countBytes(state, bytes.size());
}
BENCHMARK(copyBytes);

void takeMetadataOut(benchmark::State& state)
{
    const QByteArray body = withMetadata(sound());
    for ([[maybe_unused]] auto round : state) {
        IcyReader reader(metadataInterval);
        inPieces(body, [&](QByteArrayView piece) { benchmark::DoNotOptimize(reader.read(piece)); });
    }
    countBytes(state, body.size());
}
BENCHMARK(takeMetadataOut);

void countFrames(benchmark::State& state)
{
    const QByteArray& bytes = sound();
    for ([[maybe_unused]] auto round : state) {
        FrameMeter meter(SoundFormat::Mpeg);
        inPieces(bytes, [&](QByteArrayView piece) { benchmark::DoNotOptimize(meter.feed(piece)); });
    }
    countBytes(state, bytes.size());
}
BENCHMARK(countFrames);

void rememberTail(benchmark::State& state)
{
    const QByteArray& bytes = sound();
    for ([[maybe_unused]] auto round : state) {
        SpliceTail tail;
        inPieces(bytes, [&](QByteArrayView piece) { tail.append(piece); });
        benchmark::DoNotOptimize(tail.bytes().data());
    }
    countBytes(state, bytes.size());
}
BENCHMARK(rememberTail);

// The last byte received stands in the middle of the new burst.
void findOverlap(benchmark::State& state)
{
    const qsizetype edge = 4 * burst;
    const QByteArray tail = sound().mid(edge - SpliceTail::capacity, SpliceTail::capacity);
    const QByteArray answer = sound().mid(edge - burst / 2, burst);
    for ([[maybe_unused]] auto round : state) {
        Splice splice(tail);
        benchmark::DoNotOptimize(splice.look(answer));
    }
    countBytes(state, burst);
}
BENCHMARK(findOverlap);

// A burst of another encoder's: searched to its end.
void findNoOverlap(benchmark::State& state)
{
    const QByteArray tail = sound().mid(4 * burst, SpliceTail::capacity);
    const QByteArray answer = test::Programme{ .codec = test::Codec::Mp3, .from = 100.0, .length = 5.0 }.encoded();
    for ([[maybe_unused]] auto round : state) {
        Splice splice(tail);
        benchmark::DoNotOptimize(splice.look(answer));
        splice.giveUp();
    }
    countBytes(state, answer.size());
}
BENCHMARK(findNoOverlap);

}

BENCHMARK_MAIN();
