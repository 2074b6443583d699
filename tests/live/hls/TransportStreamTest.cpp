// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/TransportStream.h"

#include "live/hls/TransportPackets.h"
#include "live/session/TestSound.h"

#include <QStringList>

#include <gmock/gmock.h>

namespace velarin::live::test {

namespace {

constexpr int soundPid = 0x101;
constexpr int titlePid = 0x102;
constexpr int mpegAudio = 0x03;
constexpr int adts = 0x0f;
constexpr int metadata = 0x15;
constexpr int video = 0x1b;

struct Taken
{
    QByteArray sound;
    QStringList titles;
    std::optional<SoundFormat> format;
};

void take(Taken& taken, const std::vector<TsItem>& items)
{
    for (const TsItem& item : items) {
        if (const auto* sound = std::get_if<TsSound>(&item)) {
            taken.sound += sound->bytes;
            taken.format = sound->format;
        } else {
            taken.titles += std::get<TsTitle>(item).title;
        }
    }
}

Taken read(const QByteArray& stream, qsizetype piece)
{
    TransportStream reader;
    Taken taken;
    for (qsizetype at = 0; at < stream.size(); at += piece)
        take(taken, reader.read(stream.mid(at, piece)));
    take(taken, reader.finish());
    return taken;
}

}

TEST(TransportStreamTest, givesTheSoundAsItWasWhereverItIsCut)
{
    TransportPackets packets;
    QByteArray stream = packets.tables({ { soundPid, mpegAudio } });
    for (int number = 0; number < 20; number += 5)
        stream += packets.elementary(soundPid, frames(number, number + 5));
    for (const qsizetype piece : { 1, 100, 188, 1000, 100000 }) {
        const Taken taken = read(stream, piece);
        EXPECT_EQ(taken.sound, frames(0, 20)) << piece;
        EXPECT_EQ(taken.format, SoundFormat::Mpeg);
    }
}

TEST(TransportStreamTest, passesOverPicturesAndTakesTheFirstSound)
{
    TransportPackets packets;
    QByteArray stream = packets.tables({ { 0x90, video }, { soundPid, adts }, { 0x110, adts } });
    stream += packets.elementary(0x90, QByteArray(3000, 'v')) + packets.elementary(soundPid, QByteArray(3000, 's')) +
              packets.elementary(0x110, QByteArray(3000, 'x'));
    const Taken taken = read(stream, 188);
    EXPECT_EQ(taken.sound, QByteArray(3000, 's'));
    EXPECT_EQ(taken.format, SoundFormat::AacAdts);
}

TEST(TransportStreamTest, tellsTitlesBetweenTheSoundAroundThem)
{
    TransportPackets packets;
    const QByteArray stream = packets.tables({ { soundPid, mpegAudio }, { titlePid, metadata } }) +
                              packets.elementary(soundPid, frames(0, 3)) +
                              packets.elementary(titlePid, id3Tag("TIT2", "Mina - Città vuota")) +
                              packets.elementary(soundPid, frames(3, 6));
    TransportStream reader;
    const std::vector<TsItem> items = reader.read(stream);
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(std::get<TsTitle>(items[1]).title, QStringLiteral("Mina - Città vuota"));
    EXPECT_EQ(std::get<TsSound>(items[2]).bytes, frames(3, 6));
}

TEST(TransportStreamTest, aTagOfSeveralPacketsIsReadAtItsEnd)
{
    TransportPackets packets;
    const QByteArray title(700, 't');
    const QByteArray stream = packets.tables({ { soundPid, mpegAudio }, { titlePid, metadata } }) +
                              packets.elementary(titlePid, id3Tag("TIT2", title));
    EXPECT_EQ(read(stream, 188).titles, QStringList{ QString::fromLatin1(title) });
}

TEST(TransportStreamTest, noiseBetweenPacketsIsPassedOver)
{
    TransportPackets packets;
    QByteArray stream = packets.tables({ { soundPid, mpegAudio } }) + packets.elementary(soundPid, frames(0, 3));
    stream += QByteArray(77, '\1') + packets.elementary(soundPid, frames(3, 6));
    EXPECT_EQ(read(stream, 500).sound, frames(0, 6));
}

TEST(TransportStreamTest, aStreamJoinedInTheMiddleBeginsWithAWholePacket)
{
    TransportPackets packets;
    const QByteArray tables = packets.tables({ { soundPid, mpegAudio } });
    const QByteArray first = packets.elementary(soundPid, frames(0, 3));
    const QByteArray stream = tables + first.mid(188) + packets.elementary(soundPid, frames(3, 6));
    EXPECT_EQ(read(stream, 188).sound, frames(3, 6));
}

TEST(TransportStreamTest, aStreamWithoutKnownSoundSaysSo)
{
    TransportPackets packets;
    TransportStream reader;
    EXPECT_TRUE(reader.read(packets.tables({ { 0x90, video } })).empty());
    EXPECT_TRUE(reader.isStrange());
}

}
