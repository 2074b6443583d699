// SPDX-License-Identifier: GPL-3.0-or-later
// Stations of segments at which something goes wrong.
#include "live/hls/HlsStationFixture.h"

#include <QRegularExpression>

namespace velarin::live::test {

namespace {

using Reply = FakeHlsStation::Reply;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

const QString list = QStringLiteral("/a/list");
const QString master = QStringLiteral("/master");
const QString stalled = QStringLiteral("stalled");

class HlsFaultTest : public HlsStationTest
{
protected:
    [[nodiscard]] static std::optional<int> segmentOf(const QString& path)
    {
        bool isNumber = false;
        const int number = path.section(u'/', -1).toInt(&isNumber);
        return isNumber ? std::optional(number) : std::nullopt;
    }
    // Each fourth segment is answered so, from the 20th second on.
    void eachFourth(const std::function<Reply(int)>& answer)
    {
        station.script = [this, answer](const QString& path, const StreamRequest&) -> std::optional<Reply> {
            const std::optional<int> number = segmentOf(path);
            return number && *number % 4 == 0 && station.now() > 20.0 ? std::optional(answer(*number)) : std::nullopt;
        };
    }
    void useVariants() { station.variants = { { QStringLiteral("high"), 192000 }, { QStringLiteral("low"), 64000 } }; }
};

}

TEST_F(HlsFaultTest, eachFourthSegmentMissingCostsItsSoundAndNoMore)
{
    eachFourth([](int) { return Reply{ .status = 404 }; });
    listen(list, 120s);
    const double lost = 25.0 / 4.0 * FakeHlsStation::segmentSeconds;
    EXPECT_GE(heard(), 120.0 - lost - FakeHlsStation::segmentSeconds - 1.0);
    const std::vector<int> segments = segmentsPlayed();
    for (std::size_t index = 1; index < segments.size(); ++index)
        EXPECT_LE(segments[index] - segments[index - 1], 2);
    EXPECT_THAT(events, Not(Contains(QStringLiteral("ended"))));
}

TEST_F(HlsFaultTest, aWebPageInPlaceOfASegmentIsSkipped)
{
    eachFourth([](int) { return Reply{ .body = "<!DOCTYPE html><html><body>No</body></html>" }; });
    listen(list, 60s);
    const std::vector<int> segments = segmentsPlayed();
    EXPECT_GE(segments.size(), 9U);
    for (std::size_t index = 1; index < segments.size(); ++index)
        EXPECT_LE(segments[index] - segments[index - 1], 2);
}

TEST_F(HlsFaultTest, aSegmentThatTheListCallsAGapIsNotAskedFor)
{
    station.linesBefore = [](int number) { return number % 4 == 0 ? QByteArray("#EXT-X-GAP\n") : QByteArray(); };
    listen(list, 60s);
    for (const QString& path : station.requests)
        EXPECT_TRUE(!segmentOf(path) || *segmentOf(path) % 4 != 0);
    EXPECT_GE(heard(), 40.0);
}

TEST_F(HlsFaultTest, aSegmentThatIsNotThereYetIsAskedForOnceMore)
{
    eachFourth([this](int number) {
        const bool isFirst = station.asked(QStringLiteral("/a/%1").arg(number)) == 1;
        return isFirst ? Reply{ .status = 404 } : Reply{ .body = FakeHlsStation::segment(number) };
    });
    listen(list, 60s);
    EXPECT_TRUE(isPlayedWithoutABreak());
}

TEST_F(HlsFaultTest, aSegmentThatBreaksOffGoesOnAtTheVeryByte)
{
    eachFourth([this](int number) {
        Reply reply{ .body = FakeHlsStation::segment(number) };
        if (station.asked(QStringLiteral("/a/%1").arg(number)) < 3)
            reply.breaksAfter = 20001;
        return reply;
    });
    listen(list, 90s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_EQ(stretches(), 1U);
}

TEST_F(HlsFaultTest, aSegmentThatNeverComesIsGivenUpInTimeForTheReserve)
{
    eachFourth([](int) { return Reply{ .isSilent = true }; });
    listen(list, 120s);
    EXPECT_THAT(events, Not(Contains(QStringLiteral("ended"))));
    // A quarter of the sound is missing, and what is lost of the distance to the edge once.
    EXPECT_GE(heard(), 120.0 - 25.0 - 10.0);
}

TEST_F(HlsFaultTest, aSegmentThatTricklesIsGivenUp)
{
    eachFourth([](int number) { return Reply{ .body = FakeHlsStation::segment(number), .pace = 200.0 }; });
    listen(list, 120s);
    EXPECT_GE(heard(), 120.0 - 25.0 - 10.0);
}

TEST_F(HlsFaultTest, aLineThatIsJustFastEnoughLosesNothing)
{
    // 16 kB a second are the pace of the sound.
    station.script = [](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        const std::optional<int> number = segmentOf(path);
        return number ? std::optional(Reply{ .body = FakeHlsStation::segment(*number), .pace = 19000.0 })
                      : std::nullopt;
    };
    listen(list, 90s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsFaultTest, aFirstListThatIsNotThereIsTheItemsFailure)
{
    useVariants();
    station.script = [](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        return path.endsWith(QStringLiteral("list")) ? std::optional(Reply{ .status = 404 }) : std::nullopt;
    };
    listen(master, 5s);
    EXPECT_THAT(events, Contains(QStringLiteral("failed: http 404")));
    EXPECT_EQ(station.asked(QStringLiteral("/high/list")) + station.asked(QStringLiteral("/low/list")), 2);
}

TEST_F(HlsFaultTest, segmentsThatAreNeverThereAreTheItemsFailure)
{
    station.script = [](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        return segmentOf(path) ? std::optional(Reply{ .status = 403 }) : std::nullopt;
    };
    listen(list, 10s);
    EXPECT_THAT(events, Contains(QStringLiteral("failed: http 403")));
    EXPECT_LE(station.requests.size(), 7U);
}

TEST_F(HlsFaultTest, aListThatFailsForAWhileIsNotHeard)
{
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        const bool fails = path == list && station.now() > 20.0 && station.now() < 27.0;
        return fails ? std::optional(Reply{ .status = 503 }) : std::nullopt;
    };
    listen(list, 60s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsFaultTest, aListThatFailsForGoodEndsTheItemWithItsCause)
{
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        return path == list && station.now() > 20.0 ? std::optional(Reply{ .status = 503 }) : std::nullopt;
    };
    listen(list, 60s);
    EXPECT_EQ(events.count(stalled), 1);
    EXPECT_EQ(events.back(), QStringLiteral("broke: http 503"));
    EXPECT_LE(station.asked(list), 8 + 30);
}

TEST_F(HlsFaultTest, aVariantThatIsGoneIsLeftForTheNextLowerWithoutALoss)
{
    useVariants();
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        const bool isGone = path.startsWith(QStringLiteral("/high/")) && station.now() > 20.0;
        return isGone ? std::optional(Reply{ .status = 404 }) : std::nullopt;
    };
    listen(master, 90s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_GE(heard(), 89.0);
    EXPECT_GE(station.asked(QStringLiteral("/low/list")), 10);
}

TEST_F(HlsFaultTest, aVariantWhoseSegmentsAreGoneIsLeftWithoutALoss)
{
    useVariants();
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        const bool isGone = path.startsWith(QStringLiteral("/high/")) && segmentOf(path) && station.now() > 20.0;
        return isGone ? std::optional(Reply{ .status = 404 }) : std::nullopt;
    };
    listen(master, 90s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_GE(heard(), 89.0);
}

TEST_F(HlsFaultTest, aVariantThatWasLeftIsNotTakenAgain)
{
    useVariants();
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        const bool isGone = path.startsWith(QStringLiteral("/high/")) && station.now() > 20.0 && station.now() < 30.0;
        return isGone ? std::optional(Reply{ .status = 404 }) : std::nullopt;
    };
    listen(master, 40s);
    const int before = station.asked(QStringLiteral("/high/list"));
    advance(2min);
    EXPECT_EQ(station.asked(QStringLiteral("/high/list")), before);
    EXPECT_TRUE(isPlayedWithoutABreak());
}

TEST_F(HlsFaultTest, aMasterThatExpiresIsAskedForAgainAtTheFirstAddress)
{
    // Lists are good for 30 seconds, under an address of their own.
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        const int token = static_cast<int>(station.now() / 30.0);
        if (path == master)
            return Reply{ .body = "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=128000\nt" + QByteArray::number(token) +
                                  "/list\n" };
        const bool isList = path.endsWith(QStringLiteral("list"));
        const bool isOld = isList && path != QStringLiteral("/t%1/list").arg(token);
        return isOld ? std::optional(Reply{ .status = 403 }) : std::nullopt;
    };
    listen(master, 3min);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_GE(heard(), 179.0);
    EXPECT_THAT(events, Not(Contains(stalled)));
}

TEST_F(HlsFaultTest, aListThatNeverAnswersIsAskedForAgain)
{
    station.script = [this](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        const bool hangs = path == list && station.asked(list) % 3 == 0;
        return hangs ? std::optional(Reply{ .isSilent = true }) : std::nullopt;
    };
    listen(list, 2min);
    EXPECT_TRUE(isPlayedWithoutABreak());
}

TEST_F(HlsFaultTest, soundThatCannotBeDecodedTwiceLeavesTheVariant)
{
    useVariants();
    listen(master, 20s);
    const AudioErrorChain broken{ { AudioErrorDomain::gstStream, GstError::streamTypeNotFound, {} } };
    pipeline().failBranch(pipeline().newestBranch(), broken);
    advance(8s);
    EXPECT_EQ(station.asked(QStringLiteral("/low/list")), 0);
    pipeline().failBranch(pipeline().newestBranch(), broken);
    advance(20s);
    EXPECT_GE(station.asked(QStringLiteral("/low/list")), 1);
    EXPECT_EQ(events.back(), QStringLiteral("playing"));
}

TEST_F(HlsFaultTest, aByteRangeIsAskedForAndCutOutWhereTheServerKnowsNone)
{
    constexpr int size = FakeHlsStation::framesEach * frameSize;
    QByteArray all;
    for (int number = 0; number < 6; ++number)
        all += FakeHlsStation::segment(number);
    station.script = [&all](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        if (path != list)
            return Reply{ .body = all };
        QByteArray text = "#EXTM3U\n#EXT-X-TARGETDURATION:4\n";
        for (int number = 0; number < 6; ++number)
            text += "#EXTINF:3.9,\n#EXT-X-BYTERANGE:" + QByteArray::number(size) +
                    (number == 0 ? QByteArray("@0") : QByteArray()) + "\n/all\n";
        return Reply{ .body = text + "#EXT-X-ENDLIST\n" };
    };
    listen(list, 30s);
    EXPECT_THAT(segmentsPlayed(), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_TRUE(isPlayedWithoutABreak());
    const QPair<QByteArray, QByteArray> second{ "Range",
        "bytes=" + QByteArray::number(size) + "-" + QByteArray::number(2 * size - 1) };
    EXPECT_TRUE(m_engine->m_connections.all[3]->request.headers.contains(second));
}

}
