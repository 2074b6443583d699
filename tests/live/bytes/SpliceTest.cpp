// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/Splice.h"

#include "Pieces.h"

#include <gtest/gtest.h>

namespace velarin::live {
namespace {

using test::cutAtRandom;
using test::randomBytes;
using Verdict = Splice::Verdict;

QByteArray tailOf(const QByteArray& received)
{
    SpliceTail tail;
    tail.append(received);
    return tail.bytes();
}

// Feeds all pieces, stopping when the search ends; the rest is appended as its owner would.
QByteArray spliced(Splice& splice, const std::vector<QByteArray>& pieces)
{
    QByteArray rest;
    for (const QByteArray& piece : pieces)
        if (splice.verdict() == Verdict::NeedsMore)
            static_cast<void>(splice.look(piece));
        else
            rest += piece;
    return splice.onward() + rest;
}

// A constant-bit-rate frame of silence: a header, some side information, filling.
QByteArray silentFrame()
{
    QByteArray frame("\xff\xfb\x90\x64\x00\x0f\xf0\x00\x00\x69\x00\x00\x00\x08\x00\x00\x0d\x20\x00\x00\x01", 21);
    return frame + QByteArray(417 - frame.size(), '\0');
}

QByteArray silence(int frames)
{
    return silentFrame().repeated(frames);
}

TEST(SpliceTailTest, keepsTheLastBytesWhateverTheirPieces)
{
    std::mt19937 random(1);
    const QByteArray bytes = randomBytes(200'000, 1);
    SpliceTail tail;
    for (const QByteArray& piece : cutAtRandom(bytes, random, 50'000))
        tail.append(piece);
    EXPECT_EQ(tail.bytes(), bytes.last(SpliceTail::capacity));
}

TEST(SpliceTest, goesOnAfterTheLastByteForBurstsOfEverySize)
{
    std::mt19937 random(3);
    const QByteArray stream = randomBytes(2'000'000, 5);
    const qsizetype end = 1'000'000;
    for (const qsizetype burst : { 1, 2, 4, 16, 64, 256, 900 }) {
        for (const int longest : { 700, 20'000 }) {
            Splice splice(tailOf(stream.first(end)));
            const QByteArray fresh = stream.sliced(end - 1024 * burst, 1024 * burst + 50'000);
            EXPECT_EQ(spliced(splice, cutAtRandom(fresh, random, longest)), stream.sliced(end, 50'000)) << burst;
            EXPECT_EQ(splice.verdict(), Verdict::Overlaps) << burst;
        }
    }
}

TEST(SpliceTest, worksByteByByte)
{
    std::mt19937 random(3);
    const QByteArray stream = randomBytes(100'000, 6);
    Splice splice(tailOf(stream.first(50'000)));
    EXPECT_EQ(spliced(splice, cutAtRandom(stream.sliced(40'000), random, 1)), stream.sliced(50'000));
}

TEST(SpliceTest, decidesAsSoonAsTheOverlapIsThere)
{
    const QByteArray stream = randomBytes(100'000, 6);
    Splice splice(tailOf(stream.first(50'000)));
    EXPECT_EQ(splice.look(stream.sliced(49'000, 999)), Verdict::NeedsMore);
    EXPECT_EQ(splice.look(stream.sliced(49'999, 1)), Verdict::Overlaps);
    EXPECT_TRUE(splice.onward().isEmpty());
}

TEST(SpliceTest, anOverlapOfAFewBytesIsNone)
{
    const QByteArray stream = randomBytes(100'000, 6);
    Splice splice(tailOf(stream.first(50'000)));
    EXPECT_EQ(splice.look(stream.sliced(49'900, 20'000)), Verdict::NeedsMore);
    splice.giveUp();
    EXPECT_EQ(splice.verdict(), Verdict::NoOverlap);
    EXPECT_EQ(splice.onward(), stream.sliced(49'900, 20'000));
}

TEST(SpliceTest, anotherEncodersBytesAreGivenBackWhole)
{
    const QByteArray other = randomBytes(Splice::searchLimit + 10, 9);
    Splice splice(tailOf(randomBytes(100'000, 8)));
    EXPECT_EQ(splice.look(other), Verdict::NoOverlap);
    EXPECT_EQ(splice.onward(), other);
}

TEST(SpliceTest, givingUpAfterAnOverlapChangesNothing)
{
    const QByteArray stream = randomBytes(100'000, 6);
    Splice splice(tailOf(stream.first(50'000)));
    ASSERT_EQ(splice.look(stream.sliced(40'000)), Verdict::Overlaps);
    splice.giveUp();
    EXPECT_EQ(splice.onward(), stream.sliced(50'000));
}

TEST(SpliceTest, anEmptyTailOverlapsNothing)
{
    EXPECT_EQ(Splice(QByteArray()).verdict(), Verdict::NoOverlap);
}

TEST(SpliceTest, aSilenceShorterThanTheTailIsToldByWhatCameBefore)
{
    const QByteArray stream =
        randomBytes(60'000, 1) + silence(20) + randomBytes(60'000, 2) + silence(40) + randomBytes(60'000, 3);
    // In the middle of the second silence; the burst reaches back to before the first.
    const qsizetype end = 120'000 + 417 * 20 + 417 * 10 + 200;
    Splice splice(tailOf(stream.first(end)));
    ASSERT_EQ(splice.look(stream.sliced(30'000)), Verdict::Overlaps);
    EXPECT_EQ(splice.onward(), stream.sliced(end));
}

TEST(SpliceTest, afterALongSilenceOnlySilenceIsRepeatedAndNothingIsLost)
{
    const QByteArray stream = randomBytes(60'000, 1) + silence(200) + randomBytes(60'000, 2);
    const qsizetype end = 60'000 + 417 * 150;
    Splice splice(tailOf(stream.first(end)));
    ASSERT_EQ(splice.look(stream.sliced(60'000 + 417 * 20 + 100)), Verdict::Overlaps);
    const QByteArray onward = splice.onward();
    EXPECT_TRUE(onward.endsWith(stream.sliced(end)));
    // Whole frames of silence, so that the decoder keeps its step.
    const QByteArray repeated = onward.chopped(stream.size() - end);
    EXPECT_EQ(repeated.size() % 417, 0);
    EXPECT_TRUE(silence(200).startsWith(repeated));
}

TEST(SpliceTest, theFillingOfASilentFrameIsNoOverlap)
{
    // The tail ends inside a frame's filling, and the burst is other sound that holds as many zeros somewhere.
    const QByteArray tail = randomBytes(60'000, 1) + silentFrame().first(400);
    Splice splice(tailOf(tail));
    EXPECT_EQ(splice.look(randomBytes(20'000, 4) + QByteArray(600, '\0') + randomBytes(20'000, 5)), Verdict::NeedsMore);
}

TEST(SpliceTest, aTailOfOneByteOverAndOverIsNoOverlap)
{
    Splice splice(QByteArray(SpliceTail::capacity, '\0'));
    EXPECT_EQ(splice.look(QByteArray(100'000, '\0')), Verdict::NoOverlap);
}

TEST(SpliceTest, anOggBurstBeginsWithHeadersOfLongAgo)
{
    const auto page = [](unsigned seed) { return QByteArray("OggS") + randomBytes(4000, seed); };
    const QByteArray headers = page(1) + page(2);
    QByteArray pages;
    for (unsigned seed = 3; seed < 40; ++seed)
        pages += page(seed);
    const QByteArray received = headers + pages.first(4004 * 20 + 300);
    // The burst begins at a page within the tail.
    Splice splice(tailOf(received));
    ASSERT_EQ(splice.look(headers + pages.sliced(4004 * 16)), Verdict::Overlaps);
    EXPECT_EQ(splice.onward(), pages.sliced(4004 * 20 + 300));
}

TEST(SpliceTest, aHostileBodyCannotKeepItBusy)
{
    const QByteArray tail = randomBytes(1000, 1) + QByteArray(SpliceTail::capacity - 1000, '\0');
    Splice splice(tail);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(splice.look(QByteArray(Splice::searchLimit, '\0')), Verdict::NoOverlap);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

}
}
