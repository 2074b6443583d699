// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/session/LivePlayerFixture.h"

namespace velarin::live::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr qint64 interval = 16'000;

QByteArray block(const QByteArray& title)
{
    QByteArray text = "StreamTitle='" + title + "';";
    text.append(QByteArray((16 - text.size() % 16) % 16, '\0'));
    return static_cast<char>(text.size() / 16) + text;
}

}

// A burst of eight seconds of sound with titles in it.
class LiveTitleTest : public LivePlayerTest
{
protected:
    // Plays the sound with a block after every interval.
    void sendWithTitles(const QByteArrayList& titles)
    {
        start();
        server().head("audio/mpeg", interval);
        QByteArray body;
        for (int part = 0; part < titles.size(); ++part)
            body += sound_.mid(part * interval, interval) +
                    (titles[part].isNull() ? QByteArray(1, '\0') : block(titles[part]));
        server().bytes(body + sound_.mid(titles.size() * interval, interval));
        settle();
        events.clear();
    }
    [[nodiscard]] QStringList titlesAfter(std::chrono::milliseconds duration)
    {
        advance(duration);
        QStringList titles;
        for (const QString& event : takeEvents()) {
            if (event.startsWith(QStringLiteral("title")))
                titles += event;
        }
        return titles;
    }
    const QByteArray sound_ = frames(0, framesIn(20.0));
};

TEST_F(LiveTitleTest, aTitleIsToldWhenItsSoundIsHeard)
{
    sendWithTitles({ "one" });
    EXPECT_THAT(titlesAfter(900ms), IsEmpty());
    EXPECT_THAT(titlesAfter(200ms), ElementsAre(QStringLiteral("title one")));
}

TEST_F(LiveTitleTest, titlesFollowEachOtherAtTheirPlaces)
{
    sendWithTitles({ "one", QByteArray(), "two", "three" });
    EXPECT_THAT(titlesAfter(1200ms), ElementsAre(QStringLiteral("title one")));
    EXPECT_THAT(titlesAfter(1600ms), IsEmpty());
    EXPECT_THAT(titlesAfter(400ms), ElementsAre(QStringLiteral("title two")));
    EXPECT_THAT(titlesAfter(1s), ElementsAre(QStringLiteral("title three")));
}

TEST_F(LiveTitleTest, anEmptyTitleIsToldAsEmpty)
{
    sendWithTitles({ "one", "" });
    EXPECT_THAT(titlesAfter(2500ms), ElementsAre(QStringLiteral("title one"), QStringLiteral("title ")));
}

TEST_F(LiveTitleTest, theSameTitleIsToldOnce)
{
    sendWithTitles({ "one", "one", "one" });
    EXPECT_THAT(titlesAfter(4s), ElementsAre(QStringLiteral("title one")));
}

TEST_F(LiveTitleTest, aPauseHoldsTheTitleBack)
{
    sendWithTitles({ "one" });
    advance(500ms);
    player->pause();
    EXPECT_THAT(titlesAfter(10s), IsEmpty());
    player->play();
    EXPECT_THAT(titlesAfter(700ms), ElementsAre(QStringLiteral("title one")));
}

TEST_F(LiveTitleTest, aTitleInsideTheContainerIsToldAtItsPlaceToo)
{
    startSounding();
    stream(2s);
    pipeline().tellTitle(pipeline().newestBranch(), 4.0, QStringLiteral("inside"));
    EXPECT_THAT(titlesAfter(1500ms), IsEmpty());
    EXPECT_THAT(titlesAfter(600ms), ElementsAre(QStringLiteral("title inside")));
}

TEST_F(LiveTitleTest, theTitleOfAMendComesWithTheSoundBehindTheSplice)
{
    sendWithTitles({ "one", QByteArray(), QByteArray(), QByteArray(), QByteArray(), QByteArray(), QByteArray(),
        QByteArray(), QByteArray(), QByteArray(), QByteArray() });
    EXPECT_THAT(titlesAfter(2s), ElementsAre(QStringLiteral("title one")));
    server().close();
    settle();
    ASSERT_EQ(asked(), 2U);
    server().head("audio/mpeg", interval);
    // The burst repeats the last two seconds, and the programme went on by two.
    const QByteArray overlap = sound_.mid(10 * interval, 2 * interval);
    server().bytes(overlap.left(interval) + block("two") + overlap.mid(interval) + QByteArray(1, '\0') +
                   sound_.mid(12 * interval, interval));
    EXPECT_THAT(titlesAfter(9500ms), IsEmpty());
    EXPECT_THAT(titlesAfter(1s), ElementsAre(QStringLiteral("title two")));
    EXPECT_THAT(breaksIn(played(), 0), IsEmpty());
}

}
