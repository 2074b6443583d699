// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/PlaylistReader.h"

#include "Corpora.h"

#include <QDir>

namespace velarin::live {
namespace {

const QUrl base = QUrl(QStringLiteral("http://radio.example/lists/all.m3u"));

QStringList read(QByteArrayView bytes)
{
    QStringList addresses;
    for (const QUrl& address : readPlaylist(bytes, base))
        addresses.append(address.toString());
    return addresses;
}

QStringList list(std::initializer_list<const char*> addresses)
{
    QStringList strings;
    for (const char* address : addresses)
        strings.append(QString::fromUtf8(address));
    return strings;
}

TEST(PlaylistReaderTest, readsM3uWithAnyLineEnd)
{
    for (const char* end : { "\n", "\r\n", "\r", "\n\n" }) {
        const QByteArray lines =
            QByteArray("#EXTM3U|#EXTINF:-1,Uno|http://a.example/1|http://a.example/2").replace("|", end);
        EXPECT_EQ(read(lines), list({ "http://a.example/1", "http://a.example/2" }));
    }
}

TEST(PlaylistReaderTest, readsPlsInTheOrderOfItsNumbers)
{
    EXPECT_EQ(
        read("[playlist]\nFile2=http://b.example/\nTitle2=B\nfile1 = http://a.example/\nFile10=http://c.example/\n"
             "NumberOfEntries=99\nVersion=2"),
        list({ "http://a.example/", "http://b.example/", "http://c.example/" }));
}

TEST(PlaylistReaderTest, readsPlsWithoutItsHeader)
{
    EXPECT_EQ(read("File1=https://a.example/x\n"), list({ "https://a.example/x" }));
}

TEST(PlaylistReaderTest, passesOverAByteOrderMarkAndBlanks)
{
    EXPECT_EQ(read("\xef\xbb\xbf  http://a.example/1  \n\t\n"), list({ "http://a.example/1" }));
}

TEST(PlaylistReaderTest, resolvesRelativeAddresses)
{
    EXPECT_EQ(read("one.mp3\n/two.mp3\n//c.example/three\n../four?x=1\n"),
        list({ "http://radio.example/lists/one.mp3", "http://radio.example/two.mp3", "http://c.example/three",
            "http://radio.example/four?x=1" }));
}

TEST(PlaylistReaderTest, passesOverWhatIsNoWebAddress)
{
    EXPECT_EQ(read("rtsp://a.example/\nC:\\musica\\a.mp3\nfile:///etc/passwd\nhttp://\nmms://b.example/\n"
                   "HTTP://C.example/ok\n"),
        list({ "http://c.example/ok" }));
}

TEST(PlaylistReaderTest, takesEachAddressOnce)
{
    EXPECT_EQ(read("http://a.example/\nhttp://a.example/\n"), list({ "http://a.example/" }));
}

TEST(PlaylistReaderTest, anEmptyListHasNoAddresses)
{
    EXPECT_TRUE(read("").isEmpty());
    EXPECT_TRUE(read("#EXTM3U\n").isEmpty());
    EXPECT_TRUE(read("[playlist]\nFile1=\nNumberOfEntries=1\n").isEmpty());
}

TEST(PlaylistReaderTest, readsNoMoreThanItsBounds)
{
    QByteArray many;
    for (int index = 0; index < 500; ++index)
        many += "http://a.example/" + QByteArray::number(index) + '\n';
    EXPECT_EQ(readPlaylist(many, base).size(), playlistEntryLimit);
    const QByteArray late = QByteArray(playlistByteLimit, '#') + "\nhttp://a.example/\n";
    EXPECT_TRUE(read(late).isEmpty());
}

// The number of addresses that the manifest names beside the file.
QMap<QString, int> entriesByFile()
{
    QMap<QString, int> entries;
    const QString manifest = QString::fromUtf8(test::corpus(QStringLiteral("playlists/MANIFEST.tsv")));
    for (const QString& line : manifest.split(u'\n').mid(1)) {
        const QStringList fields = line.split(u'\t');
        if (fields.size() >= 9 && (fields[0].startsWith(u"m3u/") || fields[0].startsWith(u"pls/")))
            entries.insert(fields[0], fields[8].toInt());
    }
    return entries;
}

TEST(PlaylistReaderCorpusTest, collectedListsNeverGiveMoreThanTheyHoldAndMostlyGiveSomething)
{
    VELARIN_NEEDS_CORPORA();
    const QMap<QString, int> entries = entriesByFile();
    ASSERT_GT(entries.size(), 50);
    int lists = 0;
    int filled = 0;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const QByteArray bytes = test::corpus(QStringLiteral("playlists/") + entry.key());
        const bool holdsAddress = bytes.toLower().contains("http");
        const qsizetype found = readPlaylist(bytes, base).size();
        EXPECT_LE(found, std::max(entry.value(), 1)) << entry.key().toStdString();
        lists += holdsAddress ? 1 : 0;
        filled += holdsAddress && found > 0 ? 1 : 0;
    }
    EXPECT_EQ(filled, lists);
}

}
}
