// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/BodySniffer.h"

#include "Pieces.h"
#include "support/ears/Programme.h"

#include <gtest/gtest.h>

#include <ostream>

namespace velarin::live {

void PrintTo(const SniffedBody& body, std::ostream* out)
{
    *out << "kind " << static_cast<int>(body.kind) << " format " << static_cast<int>(body.format) << " start "
         << body.start;
}

namespace {

using test::Codec;
using test::randomBytes;

SniffedBody whole(const QByteArray& bytes, const QByteArray& type = "audio/mpeg")
{
    return sniffBody(bytes, type, BodyEnd::Reached);
}

SniffedBody soFar(const QByteArray& bytes, const QByteArray& type = "audio/mpeg")
{
    return sniffBody(bytes, type, BodyEnd::NotYet);
}

SniffedBody soundOf(SoundFormat format, qsizetype start = 0)
{
    return { BodyKind::Sound, format, start };
}

struct SoundCase
{
    const char* name;
    Codec codec;
    SoundFormat format;
};

class SniffedSoundTest : public testing::TestWithParam<SoundCase>
{
protected:
    const QByteArray m_sound = test::Programme{ .codec = GetParam().codec, .length = 3.0 }.encoded();
};

TEST_P(SniffedSoundTest, isKnownUnderAnyType)
{
    for (const char* type : { "audio/mpeg", "audio/aac", "application/ogg", "text/html", "", "image/png" })
        EXPECT_EQ(whole(m_sound, type), soundOf(GetParam().format)) << type;
}

TEST_P(SniffedSoundTest, isKnownFromItsFirstTwoKilobytes)
{
    EXPECT_EQ(soFar(m_sound.first(2048), "application/octet-stream"), soundOf(GetParam().format));
}

INSTANTIATE_TEST_SUITE_P(Codecs, SniffedSoundTest,
    testing::Values(SoundCase{ "mp3", Codec::Mp3, SoundFormat::Mpeg },
        SoundCase{ "aac", Codec::AacAdts, SoundFormat::AacAdts },
        SoundCase{ "vorbis", Codec::OggVorbis, SoundFormat::Ogg },
        SoundCase{ "opus", Codec::OggOpus, SoundFormat::Ogg }, SoundCase{ "oggFlac", Codec::OggFlac, SoundFormat::Ogg },
        SoundCase{ "flac", Codec::Flac, SoundFormat::Flac }),
    [](const auto& named) { return std::string(named.param.name); });

TEST(BodySnifferTest, aBurstThatBeginsInsideAFrameStartsAtTheNextOne)
{
    for (const Codec codec : { Codec::Mp3, Codec::AacAdts }) {
        const QByteArray sound = test::Programme{ .codec = codec, .length = 3.0 }.encoded();
        for (const qsizetype cut : { 1, 100, 7000 }) {
            const SniffedBody body = soFar(sound.sliced(cut));
            ASSERT_EQ(body.kind, BodyKind::Sound);
            EXPECT_EQ(whole(sound.sliced(cut + body.start)), soundOf(body.format));
            EXPECT_LT(body.start, 1500);
        }
    }
}

TEST(BodySnifferTest, aTagBeforeTheFirstFrameIsPassedOver)
{
    const QByteArray sound = test::Programme{ .codec = Codec::Mp3, .length = 3.0 }.encoded();
    const QByteArray tag = QByteArray("ID3\x04\x00\x00\x00\x00\x07\x68", 10) + randomBytes(1000, 1);
    EXPECT_EQ(soFar(tag + sound), soundOf(SoundFormat::Mpeg, 1010));
    EXPECT_EQ(soFar(tag), (SniffedBody{ BodyKind::NeedsMore }));
}

TEST(BodySnifferTest, aTagLongerThanWhatIsLookedAtIsStillBeforeSound)
{
    const QByteArray tag = QByteArray("ID3\x04\x00\x00\x00\x7f\x7f\x7f", 10) + randomBytes(sniffLimit, 1);
    EXPECT_EQ(soFar(tag), soundOf(SoundFormat::Mpeg));
    EXPECT_EQ(soFar(tag, "audio/aac"), soundOf(SoundFormat::AacAdts));
}

TEST(BodySnifferTest, containersNameThemselves)
{
    EXPECT_EQ(soFar(QByteArray("\0\0\0\x18"
                               "ftypM4A ",
                  12)),
        soundOf(SoundFormat::Mp4));
    const QByteArray packet = "G" + QByteArray(187, '\x01');
    EXPECT_EQ(soFar(packet.repeated(3)), soundOf(SoundFormat::MpegTs));
    EXPECT_EQ(soFar(QByteArray("RIFF\x24\x00\x00\x00WAVEfmt ", 16)), soundOf(SoundFormat::Other));
    EXPECT_EQ(soFar(QByteArray("\x1a\x45\xdf\xa3\x01", 5)), soundOf(SoundFormat::Other));
}

TEST(BodySnifferTest, loasIsKnownByThreeFramesInARow)
{
    const QByteArray frame = QByteArray("\x56\xe0\x20", 3) + QByteArray(32, '\x11');
    EXPECT_EQ(soFar("\x01" + frame.repeated(4), "audio/aacp"), soundOf(SoundFormat::AacLoas, 1));
}

struct MuteCase
{
    const char* name;
    QByteArray body;
};

class NotSoundTest : public testing::TestWithParam<MuteCase>
{
};

TEST_P(NotSoundTest, isFoundOutWhateverTheTypeSays)
{
    for (const char* type : { "audio/mpeg", "audio/aac", "text/html", "" })
        EXPECT_EQ(whole(GetParam().body, type).kind, BodyKind::NotSound) << type;
}

INSTANTIATE_TEST_SUITE_P(Bodies, NotSoundTest,
    testing::Values(MuteCase{ "webPage", "<!DOCTYPE html><html><head><title>Radio</title></head></html>" },
        MuteCase{ "webPageAfterBlankLines", "\r\n\r\n  <html><body>Ciao</body></html>" },
        MuteCase{ "xml", "<?xml version=\"1.0\"?><error>no</error>" }, MuteCase{ "text", "Il server non trasmette.\n" },
        MuteCase{ "json", "{\"error\": \"not found\"}" },
        MuteCase{ "png", QByteArray("\x89PNG\r\n\x1a\n", 8) + randomBytes(500, 1) },
        MuteCase{ "jpeg", QByteArray("\xff\xd8\xff\xe0", 4) + randomBytes(500, 1) },
        MuteCase{ "gif", "GIF89a" + randomBytes(500, 1) },
        MuteCase{ "webp", QByteArray("RIFF\x24\x00\x00\x00WEBP", 12) + randomBytes(500, 1) },
        MuteCase{ "compressedPage", QByteArray("\x1f\x8b\x08", 3) + randomBytes(500, 1) },
        MuteCase{ "empty", QByteArray() }),
    [](const auto& named) { return std::string(named.param.name); });

TEST(BodySnifferTest, aWebPageIsKnownBeforeItEnds)
{
    EXPECT_EQ(soFar("<!DOCTYPE html><html>").kind, BodyKind::NotSound);
}

TEST(BodySnifferTest, noiseUnderATypeOfFramesIsNoSound)
{
    EXPECT_EQ(soFar(randomBytes(sniffLimit - 1, 3)).kind, BodyKind::NeedsMore);
    EXPECT_EQ(soFar(randomBytes(sniffLimit, 3)).kind, BodyKind::NotSound);
    EXPECT_EQ(soFar(randomBytes(sniffLimit, 3), "audio/aacp").kind, BodyKind::NotSound);
}

TEST(BodySnifferTest, whatNobodyKnowsIsLeftToGStreamer)
{
    EXPECT_EQ(soFar(randomBytes(sniffLimit, 3), "audio/x-musepack"), soundOf(SoundFormat::Other));
}

TEST(BodySnifferTest, playlistsAreToldWhenTheyAreAllThere)
{
    const QByteArray m3u = "#EXTM3U\n#EXTINF:-1,Radio\nhttp://radio.example/stream\n";
    EXPECT_EQ(soFar(m3u).kind, BodyKind::NeedsMore);
    EXPECT_EQ(whole(m3u).kind, BodyKind::Playlist);
    EXPECT_EQ(whole("[playlist]\nFile1=http://radio.example/\n", "text/plain").kind, BodyKind::Playlist);
    EXPECT_EQ(whole("\xef\xbb\xbf[Playlist]\r\nNumberOfEntries=0\r\n").kind, BodyKind::Playlist);
    EXPECT_EQ(whole("# lista\r\nhttp://radio.example/stream\r\n", "text/html").kind, BodyKind::Playlist);
    EXPECT_EQ(whole("stream.mp3\n", "audio/x-mpegurl").kind, BodyKind::Playlist);
}

TEST(BodySnifferTest, anHlsPlaylistIsAKindOfItsOwn)
{
    const QByteArray media = "#EXTM3U\n#EXT-X-TARGETDURATION:10\n#EXTINF:10,\na.ts\n";
    EXPECT_EQ(soFar(media).kind, BodyKind::SegmentList);
    EXPECT_EQ(
        whole("#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=64000\nlow.m3u8\n", "text/plain").kind, BodyKind::SegmentList);
}

TEST(BodySnifferTest, moreBytesNeverTakeAVerdictBack)
{
    const QByteArray sound = test::Programme{ .codec = Codec::Mp3, .length = 5.0 }.encoded().sliced(333);
    std::optional<SniffedBody> first;
    for (qsizetype size = 1; size < 5000; size += 97) {
        const SniffedBody body = soFar(sound.first(size));
        if (body.kind != BodyKind::NeedsMore && !first)
            first = body;
        EXPECT_EQ(body, first.value_or(body)) << size;
    }
    EXPECT_TRUE(first);
}

}
}
