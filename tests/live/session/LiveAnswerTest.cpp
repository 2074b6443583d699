// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

using testing::ElementsAre;

namespace {

const QString waiting = QStringLiteral("waiting");
const QString wrongType = QStringLiteral("failed: gst-stream 5");
const QString noAudio = QStringLiteral("failed: gst-stream 4");

}

// What an item is told to be that never sounded.
class LiveAnswerTest : public LivePlayerTest
{
protected:
    void SetUp() override
    {
        start();
        events.clear();
    }
    void answerPlaylist(const QByteArray& type, const QByteArray& text)
    {
        server().head(type);
        server().bytes(text);
        server().close();
        settle();
    }
};

TEST_F(LiveAnswerTest, aStatusIsToldBeforeTheFailureThatFollowsFromIt)
{
    server().answer(404);
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("http 404"), QStringLiteral("failed: http 404")));
    EXPECT_EQ(player->currentItemStatus(), ItemStatus::Failed);
}

TEST_F(LiveAnswerTest, nothingIsMendedBeforeTheFirstSound)
{
    server().reset();
    advance(30s);
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("failed: reset 56")));
    EXPECT_EQ(asked(), 1U);
    EXPECT_EQ(m_engine->m_connections.open(), 0U);
}

TEST_F(LiveAnswerTest, aWebPageIsTheWrongTypeWhateverItSaysThatItIs)
{
    for (const QByteArray& type : { QByteArray("text/html"), QByteArray("audio/mpeg") }) {
        start();
        events.clear();
        server().head(type);
        server().bytes("<!DOCTYPE html><html><head><title>Away</title></head><body>" + QByteArray(2000, 'x'));
        settle();
        EXPECT_THAT(takeEvents(), ElementsAre(wrongType)) << type.toStdString();
        EXPECT_EQ(m_engine->m_connections.open(), 0U);
    }
}

TEST_F(LiveAnswerTest, anEmptyBodyHoldsNoAudio)
{
    server().head();
    server().close();
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(noAudio));
}

TEST_F(LiveAnswerTest, goodAudioUnderAWrongTypePlays)
{
    server().head("text/html");
    send(0, framesIn(4.0));
    advance(50ms);
    EXPECT_EQ(player->timeControl(), TimeControl::Playing);
}

TEST_F(LiveAnswerTest, whatNoDecoderPlaysFailsWithTheDecodersWord)
{
    server().head("application/octet-stream");
    server().bytes(QByteArray(16 * 1024, '\x01') + QByteArray(70 * 1024, '\x7f'));
    settle();
    if (sound().branches.empty()) {
        EXPECT_THAT(takeEvents(), ElementsAre(testing::AnyOf(noAudio, wrongType)));
        return;
    }
    pipeline().failBranch(pipeline().newestBranch(),
        { { AudioErrorDomain::gstStream, GstError::streamTypeNotFound, QStringLiteral("no type") } });
    settle();
    EXPECT_EQ(player->currentItemStatus(), ItemStatus::Failed);
}

TEST_F(LiveAnswerTest, aPlaylistIsFollowed)
{
    answerPlaylist("audio/x-mpegurl", "#EXTM3U\n#EXTINF:-1,Radio\nhttp://radio.test/stream\n");
    ASSERT_EQ(asked(), 2U);
    EXPECT_EQ(server().request.url, QUrl(QStringLiteral("http://radio.test/stream")));
    send(0, framesIn(4.0));
    advance(50ms);
    EXPECT_EQ(player->timeControl(), TimeControl::Playing);
}

TEST_F(LiveAnswerTest, aPlaylistInAPlaylistIsFollowedAndNoDeeper)
{
    answerPlaylist("audio/x-scpls", "[playlist]\nFile1=http://radio.test/two.m3u\nNumberOfEntries=1\n");
    answerPlaylist("audio/x-mpegurl", "http://radio.test/three.m3u\n");
    ASSERT_EQ(asked(), 3U);
    answerPlaylist("audio/x-mpegurl", "http://radio.test/four.m3u\n");
    EXPECT_EQ(asked(), 3U);
    EXPECT_THAT(takeEvents(), ElementsAre(noAudio));
}

TEST_F(LiveAnswerTest, theNextAddressOfAPlaylistIsAskedWhenOneFails)
{
    answerPlaylist("audio/x-mpegurl", "http://radio.test/a\nhttp://radio.test/b\n");
    server().answer(503);
    settle();
    ASSERT_EQ(asked(), 3U);
    EXPECT_EQ(server().request.url, QUrl(QStringLiteral("http://radio.test/b")));
    server().reset();
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("http 503"), QStringLiteral("failed: http 503")));
}

TEST_F(LiveAnswerTest, aPlaylistThatNamesItselfDoesNotLoopForEver)
{
    const QByteArray itself = "http://radio.test/live\nhttp://radio.test/live2\nhttp://radio.test/live3\n";
    for (int turn = 0; turn < 50 && player->currentItemStatus() != ItemStatus::Failed; ++turn)
        answerPlaylist("audio/x-mpegurl", itself);
    EXPECT_EQ(player->currentItemStatus(), ItemStatus::Failed);
    EXPECT_LE(asked(), 8U);
}

TEST_F(LiveAnswerTest, aPlaylistWithoutAnAddressHoldsNoAudio)
{
    answerPlaylist("audio/x-mpegurl", "#EXTM3U\n\n# nothing\n");
    EXPECT_THAT(takeEvents(), ElementsAre(noAudio));
}

TEST_F(LiveAnswerTest, aListOfSegmentsIsAskedForOnItsOwnTerms)
{
    answerPlaylist("application/vnd.apple.mpegurl",
        "#EXTM3U\n#EXT-X-TARGETDURATION:4\n#EXT-X-MEDIA-SEQUENCE:1\n#EXTINF:4,\nsegment1.ts\n");
    advance(1ms);
    EXPECT_THAT(takeEvents(), testing::IsEmpty());
    EXPECT_EQ(asked(), 2U);
    EXPECT_EQ(server().request.url, QUrl(QStringLiteral("http://radio.test/live")));
}

TEST_F(LiveAnswerTest, anAddressThatSoundedOfLateAndNowAnswers404IsClosed)
{
    send(0, framesIn(4.0));
    advance(1s);
    start();
    events.clear();
    server().answer(404);
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("failed: closed 0")));
}

TEST_F(LiveAnswerTest, anAddressThatSoundedLongAgoAndNowAnswers404IsNotFound)
{
    send(0, framesIn(4.0));
    advance(1s);
    player->replaceCurrentItem(std::nullopt);
    advance(11min);
    start();
    events.clear();
    server().answer(404);
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("http 404"), QStringLiteral("failed: http 404")));
}

TEST_F(LiveAnswerTest, aPauseRemembersThatTheAddressSoundedUntilThen)
{
    for (int second = 0; second < 700; ++second) {
        send(0, framesIn(1.0));
        advance(1s);
    }
    player->pause();
    advance(30s);
    start();
    events.clear();
    server().answer(404);
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("failed: closed 0")));
}

TEST_F(LiveAnswerTest, noDeviceAtStartFailsTheItem)
{
    send(0, framesIn(4.0));
    settle();
    events.clear();
    pipeline().failDevice();
    settle();
    EXPECT_THAT(takeEvents(), ElementsAre(QStringLiteral("failed: gst-resource 6")));
}

TEST_F(LiveAnswerTest, nothingFollowsAFailure)
{
    server().answer(500);
    settle();
    events.clear();
    player->pause();
    player->play();
    advance(1min);
    EXPECT_THAT(takeEvents(), testing::IsEmpty());
    EXPECT_EQ(sound().alive, 0);
}

}
