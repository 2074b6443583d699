// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/IcyReader.h"

#include "Corpora.h"
#include "Pieces.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velarin::live {
namespace {

using test::corpus;
using test::cutAtRandom;
using test::randomBytes;

QByteArray block(QByteArray text)
{
    const qsizetype units = (text.size() + 15) / 16;
    text.append(16 * units - text.size(), '\0');
    return QByteArray(1, static_cast<char>(units)) + text;
}

// Everything that the reader gives for these pieces.
IcyOutput readAll(std::optional<qint64> interval, const std::vector<QByteArray>& pieces)
{
    IcyReader reader(interval);
    IcyOutput all;
    for (const QByteArray& piece : pieces) {
        const IcyOutput output = reader.read(piece);
        all.sound += output.sound;
        all.titles.insert(all.titles.end(), output.titles.begin(), output.titles.end());
    }
    return all;
}

struct Recording
{
    QByteArray body;
    IcyOutput meant;
};

// Twenty intervals of random sound, with titles, empty blocks and a block of nothing.
Recording recording(qint64 interval)
{
    Recording made;
    for (int index = 0; index < 20; ++index) {
        const QByteArray sound = randomBytes(interval, static_cast<unsigned>(index));
        made.body += sound;
        made.meant.sound += sound;
        if (index % 3 == 0) {
            const QString title = QStringLiteral("Brano %1").arg(index);
            made.body += block("StreamTitle='" + title.toUtf8() + "';");
            made.meant.titles.push_back({ made.meant.sound.size(), title });
        } else {
            made.body += index % 3 == 1 ? QByteArray(1, '\0') : QByteArray(1, '\1') + QByteArray(16, '\0');
        }
    }
    return made;
}

TEST(IcyReaderTest, withoutAnIntervalEverythingIsSound)
{
    const QByteArray body = randomBytes(5000, 1);
    EXPECT_EQ(readAll(std::nullopt, { body }), (IcyOutput{ body, {} }));
}

TEST(IcyReaderTest, blocksAreTakenOutAndTitlesKeepTheirPlace)
{
    const Recording made = recording(1000);
    EXPECT_EQ(readAll(1000, { made.body }), made.meant);
}

TEST(IcyReaderTest, anySplitOfTheBodyGivesTheSame)
{
    std::mt19937 random(7);
    for (const qint64 interval : { 1, 16, 255, 1000, 8192 }) {
        const Recording made = recording(interval);
        for (const int longest : { 1, 3, 50, 5000 })
            EXPECT_EQ(readAll(interval, cutAtRandom(made.body, random, longest)), made.meant)
                << interval << ' ' << longest;
    }
}

TEST(IcyReaderTest, aFalseIntervalGivesEveryByteBack)
{
    std::mt19937 random(7);
    for (unsigned seed = 1; seed <= 10; ++seed) {
        QByteArray body = randomBytes(40000, seed);
        // What is no empty block and begins no text; one byte of a stream may look like an empty block and is lost.
        body[8000] = '\x05';
        body[8001] = '\xff';
        for (const int longest : { 1, 700, 40000 })
            EXPECT_EQ(readAll(8000, cutAtRandom(body, random, longest)), (IcyOutput{ body, {} })) << seed;
    }
}

TEST(IcyReaderTest, aFalseIntervalIsFoundOutAtTheFirstByteThatCannotBeText)
{
    IcyReader reader(4);
    EXPECT_EQ(reader.read(QByteArray("abcd\x7fSt")).sound, "abcd");
    EXPECT_EQ(reader.read(QByteArray("\x01")).sound, "\x7fSt\x01");
}

TEST(IcyReaderTest, aStrangeBlockOfAProvenServerIsStillNoSound)
{
    const QByteArray strange = QByteArray(1, '\1') + randomBytes(16, 3);
    const QByteArray body = "abcd" + block("StreamTitle='A';") + "efgh" + strange + "ijkl" + block("StreamTitle='B';");
    const IcyOutput expected{ "abcdefghijkl", { { 4, QStringLiteral("A") }, { 12, QStringLiteral("B") } } };
    EXPECT_EQ(readAll(4, { body }), expected);
}

TEST(IcyReaderTest, anEmptyTitleIsMarkedAsEmpty)
{
    const IcyOutput output = readAll(4, { "abcd" + block("StreamTitle='';") });
    EXPECT_EQ(output.titles, (std::vector<TitleMark>{ { 4, QStringLiteral("") } }));
}

TEST(IcyReaderCorpusTest, aRecordedStreamGivesItsSoundAndItsTitles)
{
    VELARIN_NEEDS_CORPORA();
    const QJsonObject about = QJsonDocument::fromJson(corpus(QStringLiteral("icy.json"))).object();
    const QJsonObject stream = about[u"streams"].toArray().first().toObject();
    const QByteArray body = corpus(stream[u"file"].toString());
    std::mt19937 random(1);
    const IcyOutput output = readAll(stream[u"metaint"].toInteger(), cutAtRandom(body, random, 3000));
    EXPECT_EQ(output.sound.size(), stream[u"audio_bytes"].toInteger());
    EXPECT_EQ(QCryptographicHash::hash(output.sound, QCryptographicHash::Sha1).toHex(),
        stream[u"audio_sha1"].toString().toLatin1());
    ASSERT_FALSE(output.titles.empty());
    EXPECT_EQ(output.titles.front().title, stream[u"title_changes"].toArray().first().toString());
}

TEST(IcyReaderCorpusTest, aStreamWithAnIntervalOf64GivesAllOfItsTitles)
{
    VELARIN_NEEDS_CORPORA();
    const QJsonObject about = QJsonDocument::fromJson(corpus(QStringLiteral("icy.json"))).object();
    const QJsonObject stream = about[u"recorded_streams"].toArray().first().toObject();
    const QByteArray body = corpus(QStringLiteral("icy/") + stream[u"kept_as"].toString());
    const IcyOutput output = readAll(stream[u"metaint"].toInteger(), { body });
    EXPECT_EQ(output.sound.size(), stream[u"audio_bytes"].toInteger());
    QStringList titles;
    for (const TitleMark& mark : output.titles)
        titles.append(mark.title);
    QStringList expected;
    for (const QJsonValue& title : stream[u"titles"].toArray())
        expected.append(title[u"title"].toString());
    EXPECT_EQ(titles, expected);
}

}
}
