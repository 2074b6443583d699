// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/hls/Id3Tag.h"

#include "live/hls/TransportPackets.h"

#include <gtest/gtest.h>

namespace velarin::live::test {

namespace {

QByteArray bytes(std::string_view text)
{
    return { text.data(), static_cast<qsizetype>(text.size()) };
}

}

TEST(Id3TagTest, theTitleIsReadInEachEncoding)
{
    const QString title = QStringLiteral("Perché");
    EXPECT_EQ(id3Title(id3Tag("TIT2", "Perch\xe9", 0)), title);
    EXPECT_EQ(id3Title(id3Tag("TIT2", QByteArray("\xff\xfeP\0e\0r\0c\0h\0\xe9\0", 14), 1)), title);
    EXPECT_EQ(id3Title(id3Tag("TIT2", QByteArray("\0P\0e\0r\0c\0h\0\xe9", 12), 2)), title);
    EXPECT_EQ(id3Title(id3Tag("TIT2", "Perch\xc3\xa9", 3)), title);
}

TEST(Id3TagTest, aTitleEndsAtItsZero)
{
    EXPECT_EQ(id3Title(id3Tag("TIT2", QByteArray("Uno\0Due", 7))), QStringLiteral("Uno"));
    EXPECT_EQ(id3Title(id3Tag("TIT2", QByteArray("\0U\0\0\0D", 6), 2)), QStringLiteral("U"));
}

TEST(Id3TagTest, anEmptyTitleIsTold)
{
    EXPECT_EQ(id3Title(id3Tag("TIT2", "")), QString());
    EXPECT_TRUE(id3Title(id3Tag("TIT2", "")).has_value());
}

TEST(Id3TagTest, otherFramesArePassedOver)
{
    EXPECT_FALSE(id3Title(id3Tag("TPE1", "Mina")).has_value());
    const QByteArray album = id3Tag("TALB", "X").mid(id3HeaderSize);
    QByteArray tag = id3Tag("TIT2", "Uno");
    tag.insert(id3HeaderSize, album);
    tag[9] = static_cast<char>(tag.size() - id3HeaderSize);
    EXPECT_EQ(id3Title(tag), QStringLiteral("Uno"));
}

TEST(Id3TagTest, versionTwoAndThreeAreRead)
{
    EXPECT_EQ(id3Title(bytes(std::string_view("ID3\2\0\0\0\0\0\x0aTT2\0\0\4\0Uno", 20))), QStringLiteral("Uno"));
    EXPECT_EQ(id3Title(bytes(std::string_view("ID3\3\0\0\0\0\0\x0eTIT2\0\0\0\4\0\0\0Uno", 24))), QStringLiteral("Uno"));
}

TEST(Id3TagTest, unsynchronisedTagsAreRead)
{
    const std::string_view tag("ID3\3\0\x80\0\0\0\x12TIT2\0\0\0\7\0\0\1\xff\0\xfeU\0n\0", 28);
    EXPECT_EQ(id3Title(bytes(tag)), QStringLiteral("Un"));
}

TEST(Id3TagTest, aTagThatIsCutShortHasNoTitle)
{
    const QByteArray tag = id3Tag("TIT2", "Uno");
    for (qsizetype size = 0; size < tag.size(); ++size)
        EXPECT_FALSE(id3Title(tag.first(size)).has_value());
}

TEST(Id3TagTest, theSizeCountsHeaderAndFooter)
{
    QByteArray tag = id3Tag("TIT2", "Uno");
    EXPECT_EQ(id3TagSize(tag), tag.size());
    tag[5] = '\x10';
    EXPECT_EQ(id3TagSize(tag), tag.size() + id3HeaderSize);
    EXPECT_FALSE(id3TagSize("ID3").has_value());
    EXPECT_FALSE(id3TagSize("no tag at all").has_value());
}

}
