// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/HlsSegmentReader.h"

#include "live/hls/TransportPackets.h"
#include "live/session/TestSound.h"

#include <gmock/gmock.h>

namespace velarin::live::test {

namespace {

std::vector<HlsItem> readWhole(
    HlsSegmentReader& reader, const QByteArray& bytes, const QByteArray& map = {}, qsizetype piece = 1000)
{
    reader.begin(Seconds(4.0), map);
    std::vector<HlsItem> items;
    const auto add = [&items](
                         const std::vector<HlsItem>& more) { items.insert(items.end(), more.begin(), more.end()); };
    for (qsizetype at = 0; at < bytes.size(); at += piece)
        add(reader.read(bytes.mid(at, piece)));
    add(reader.finish());
    return items;
}

QByteArray soundIn(const std::vector<HlsItem>& items)
{
    QByteArray bytes;
    for (const HlsItem& item : items)
        if (const auto* sound = std::get_if<HlsSound>(&item))
            bytes += sound->bytes;
    return bytes;
}

QByteArray box(const QByteArray& type, qsizetype size)
{
    return QByteArray("\0\0\4\0", 4) + type + QByteArray(size - 8, 'm');
}

}

TEST(HlsSegmentReaderTest, packedSoundIsGivenWithoutItsTags)
{
    const QByteArray tag = id3Tag("PRIV", QByteArray(53, '\2'));
    HlsSegmentReader reader;
    for (const qsizetype piece : { 1, 9, 100, 100000 }) {
        const auto items = readWhole(reader, tag + id3Tag("TIT2", "Uno") + frames(0, 20), {}, piece);
        EXPECT_EQ(soundIn(items), frames(0, 20)) << piece;
        EXPECT_EQ(items.front(), HlsItem(HlsTitle{ QStringLiteral("Uno") }));
        EXPECT_EQ(std::get<HlsSound>(items.back()).format, SoundFormat::Mpeg);
        EXPECT_FALSE(std::get<HlsSound>(items.back()).lasting.has_value());
    }
}

TEST(HlsSegmentReaderTest, aTagWithAPictureIsPassedOverUnread)
{
    HlsSegmentReader reader;
    EXPECT_EQ(soundIn(readWhole(reader, id3Tag("APIC", QByteArray(200'000, 'p')) + frames(0, 20))), frames(0, 20));
}

TEST(HlsSegmentReaderTest, aShortSegmentIsJudgedAtItsEnd)
{
    HlsSegmentReader reader;
    EXPECT_EQ(soundIn(readWhole(reader, frames(0, 2))), frames(0, 2));
}

TEST(HlsSegmentReaderTest, aTransportStreamIsUnwrappedOverSeveralSegments)
{
    TransportPackets packets;
    HlsSegmentReader reader;
    const QByteArray tables = packets.tables({ { 0x101, 0x03 } });
    const auto first = readWhole(reader, tables + packets.elementary(0x101, frames(0, 10)));
    const auto second = readWhole(reader, tables + packets.elementary(0x101, frames(10, 20)));
    EXPECT_EQ(soundIn(first) + soundIn(second), frames(0, 20));
}

TEST(HlsSegmentReaderTest, fragmentsStandBehindTheirMapOnceAStretch)
{
    const QByteArray map = box("ftyp", 64);
    const QByteArray fragment = box("moof", 900);
    HlsSegmentReader reader;
    EXPECT_EQ(soundIn(readWhole(reader, fragment, map)), map + fragment);
    EXPECT_EQ(soundIn(readWhole(reader, fragment, map)), fragment);
    reader.breakOff();
    EXPECT_EQ(soundIn(readWhole(reader, fragment, map)), map + fragment);
}

TEST(HlsSegmentReaderTest, fragmentsSoundAsLongAsTheListSays)
{
    HlsSegmentReader reader;
    Seconds sum{ 0.0 };
    for (const HlsItem& item : readWhole(reader, box("moof", 900), box("ftyp", 64)))
        sum += std::get<HlsSound>(item).lasting.value();
    EXPECT_EQ(sum, Seconds(4.0));
}

TEST(HlsSegmentReaderTest, aWebPageIsRefused)
{
    HlsSegmentReader reader;
    EXPECT_TRUE(readWhole(reader, "<!DOCTYPE html><html><body>404</body></html>").empty());
    EXPECT_TRUE(reader.isRefused());
    EXPECT_EQ(soundIn(readWhole(reader, frames(0, 20))), frames(0, 20));
}

TEST(HlsSegmentReaderTest, aSegmentOfMp4ThatDoesNotEndIsRefused)
{
    HlsSegmentReader reader;
    (void)readWhole(reader, box("moof", HlsSegmentReader::longestWhole + 100), box("ftyp", 64), 1024 * 1024);
    EXPECT_TRUE(reader.isRefused());
}

}
