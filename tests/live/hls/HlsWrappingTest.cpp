// SPDX-License-Identifier: GPL-3.0-or-later
// What is wrapped around the sound: encryption, tags, transport streams.
#include "live/hls/HlsStationFixture.h"
#include "live/hls/TransportPackets.h"

#include <openssl/evp.h>

namespace velarin::live::test {

namespace {

using Reply = FakeHlsStation::Reply;
using testing::Contains;
using testing::Not;

const QString list = QStringLiteral("/a/list");
const QString keyPath = QStringLiteral("/key");
const QByteArray key = QByteArrayLiteral("0123456789abcdef");

QByteArray encrypted(const QByteArray& plain, const QByteArray& vector)
{
    const auto bytes = [](const QByteArray& array) { return reinterpret_cast<const unsigned char*>(array.data()); };
    QByteArray secret(plain.size() + 16, Qt::Uninitialized);
    auto* out = reinterpret_cast<unsigned char*>(secret.data());
    int size = 0;
    int last = 0;
    EVP_CIPHER_CTX* context = EVP_CIPHER_CTX_new();
    EVP_EncryptInit_ex(context, EVP_aes_128_cbc(), nullptr, bytes(key), bytes(vector));
    EVP_EncryptUpdate(context, out, &size, bytes(plain), static_cast<int>(plain.size()));
    EVP_EncryptFinal_ex(context, out + size, &last);
    EVP_CIPHER_CTX_free(context);
    secret.truncate(size + last);
    return secret;
}

QByteArray numberVector(int number)
{
    QByteArray vector(16, '\0');
    vector[15] = static_cast<char>(number);
    return vector;
}

class HlsWrappingTest : public HlsStationTest
{
protected:
    // Segments are encrypted with the vector that this gives.
    void encrypt(const QByteArray& keyLine, const std::function<QByteArray(int)>& vector)
    {
        station.linesBefore = [keyLine](int) { return keyLine; };
        station.script = [vector](const QString& path, const StreamRequest&) -> std::optional<Reply> {
            if (path == keyPath)
                return Reply{ .body = key };
            bool isNumber = false;
            const int number = path.section(u'/', -1).toInt(&isNumber);
            if (!isNumber)
                return std::nullopt;
            return Reply{ .body = encrypted(FakeHlsStation::segment(number), vector(number)) };
        };
    }
};

}

TEST_F(HlsWrappingTest, encryptedSegmentsAreHeardByTheNumberAsVector)
{
    encrypt("#EXT-X-KEY:METHOD=AES-128,URI=\"/key\"\n", numberVector);
    listen(list, 60s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_EQ(station.asked(keyPath), 1);
}

TEST_F(HlsWrappingTest, encryptedSegmentsAreHeardByTheVectorOfTheList)
{
    const QByteArray vector = QByteArray::fromHex("00112233445566778899aabbccddeeff");
    encrypt("#EXT-X-KEY:METHOD=AES-128,URI=\"/key\",IV=0x" + vector.toHex() + "\n", [vector](int) { return vector; });
    listen(list, 60s);
    EXPECT_TRUE(isPlayedWithoutABreak());
}

TEST_F(HlsWrappingTest, aKeyThatIsNotThereIsTheItemsFailure)
{
    station.linesBefore = [](int) { return QByteArray("#EXT-X-KEY:METHOD=AES-128,URI=\"/nokey\"\n"); };
    listen(list, 10s);
    EXPECT_THAT(events, Contains(QStringLiteral("failed: http 404")));
}

TEST_F(HlsWrappingTest, aWayOfEncryptingThatNobodyCanUndoIsToldAsUnplayable)
{
    station.linesBefore = [](int) { return QByteArray("#EXT-X-KEY:METHOD=SAMPLE-AES,URI=\"/key\"\n"); };
    listen(list, 10s);
    EXPECT_EQ(events.filter(QStringLiteral("failed: gst-stream")).size(), 1);
}

TEST_F(HlsWrappingTest, titlesOfPackedSoundAreToldWhenTheyAreHeard)
{
    station.script = [](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        bool isNumber = false;
        const int number = path.section(u'/', -1).toInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
        const QByteArray title = "Canzone " + QByteArray::number(number);
        return Reply{ .body = id3Tag("TIT2", title) + FakeHlsStation::segment(number) };
    };
    const int first = static_cast<int>(FakeHlsStation::past / FakeHlsStation::segmentSeconds) - 4;
    listen(list, 2s);
    EXPECT_THAT(events, Contains(QStringLiteral("title Canzone %1").arg(first)));
    // All of the window came at once; its titles wait for their sound.
    EXPECT_THAT(events, Not(Contains(QStringLiteral("title Canzone %1").arg(first + 1))));
    advance(4s);
    EXPECT_THAT(events, Contains(QStringLiteral("title Canzone %1").arg(first + 1)));
    EXPECT_TRUE(isPlayedWithoutABreak());
}

TEST_F(HlsWrappingTest, aTransportStreamIsHeardWithItsTitles)
{
    static constexpr int soundPid = 0x101;
    static constexpr int titlePid = 0x102;
    station.script = [](const QString& path, const StreamRequest&) -> std::optional<Reply> {
        bool isNumber = false;
        const int number = path.section(u'/', -1).toInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
        TransportPackets packets;
        QByteArray body = packets.tables({ { soundPid, 0x03 }, { titlePid, 0x15 } });
        body += packets.elementary(titlePid, id3Tag("TIT2", "Titolo " + QByteArray::number(number)));
        const int from = number * FakeHlsStation::framesEach;
        for (int frame = from; frame < from + FakeHlsStation::framesEach; frame += 10)
            body += packets.elementary(soundPid, frames(frame, frame + 10));
        return Reply{ .body = body };
    };
    listen(list, 60s);
    EXPECT_TRUE(isPlayedWithoutABreak());
    EXPECT_EQ(stretches(), 1U);
    EXPECT_GE(events.filter(QStringLiteral("title Titolo")).size(), 14);
}

}
