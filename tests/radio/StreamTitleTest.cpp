// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/StreamTitle.h"

#include "RadioWorld.h"

namespace velarin::test {

namespace {

using StreamTitle::NoSong;
using StreamTitle::Nothing;
using StreamTitle::Parsed;
using StreamTitle::Song;

struct Row
{
    QString text;
    Parsed parsed;
};

Parsed song(const QString& artist, const QString& title)
{
    return Song{ artist, title };
}

Parsed titleAlone(const QString& title)
{
    return Song{ std::nullopt, title };
}

class StreamTitleTest : public testing::TestWithParam<Row>
{
};

}

TEST_P(StreamTitleTest, isTakenApart)
{
    EXPECT_EQ(StreamTitle::parse(GetParam().text, u"Radio Uno"_s), GetParam().parsed);
}

INSTANTIATE_TEST_SUITE_P(Dashes, StreamTitleTest,
    testing::Values(Row{ u"Artist - Song"_s, song(u"Artist"_s, u"Song"_s) },
        Row{ u"A - B - C"_s, song(u"A"_s, u"B - C"_s) }, Row{ u"- Song"_s, titleAlone(u"- Song"_s) },
        Row{ u" - Song"_s, titleAlone(u"- Song"_s) }, Row{ u"Song -"_s, titleAlone(u"Song -"_s) },
        Row{ u"Song - "_s, titleAlone(u"Song -"_s) }, Row{ u"Song"_s, titleAlone(u"Song"_s) },
        Row{ u"AC-DC"_s, titleAlone(u"AC-DC"_s) }, Row{ u"A -B"_s, titleAlone(u"A -B"_s) },
        Row{ u"A  -  B"_s, song(u"A"_s, u"B"_s) }, Row{ u"\t Artist - Song \r\n"_s, song(u"Artist"_s, u"Song"_s) },
        Row{ u" - "_s, titleAlone(u"-"_s) }));

INSTANTIATE_TEST_SUITE_P(Tildes, StreamTitleTest,
    testing::Values(Row{ u"Artist~Song~2024~300"_s, song(u"Artist"_s, u"Song"_s) },
        Row{ u"~Song"_s, titleAlone(u"Song"_s) }, Row{ u"Artist~"_s, song(u"Artist"_s, u"Artist"_s) },
        Row{ u"Artist~~Song"_s, song(u"Artist"_s, u"Song"_s) },
        Row{ u" Artist ~ Song "_s, song(u"Artist"_s, u"Song"_s) }, Row{ u"~"_s, Nothing{} },
        Row{ u"~ ~~"_s, Nothing{} }, Row{ u"~~Song~x"_s, titleAlone(u"Song"_s) },
        Row{ u"A - B~C"_s, song(u"A - B"_s, u"C"_s) }));

INSTANTIATE_TEST_SUITE_P(NoSongs, StreamTitleTest,
    testing::Values(Row{ QString(), NoSong{} }, Row{ u"  \n"_s, NoSong{} }, Row{ u"Radio Uno"_s, NoSong{} },
        Row{ u"RADIO uno"_s, NoSong{} }, Row{ u" radio uno "_s, NoSong{} }));

TEST(StreamTitle, zerosCountAsBlanks)
{
    const QString padded = u"Artist"_s + QChar(u'\0') + u"- Song"_s + QString(3, QChar(u'\0'));
    EXPECT_EQ(StreamTitle::parse(padded, u"Radio"_s), song(u"Artist"_s, u"Song"_s));
    EXPECT_EQ(StreamTitle::parse(QString(5, QChar(u'\0')), u"Radio"_s), Parsed(NoSong{}));
}

TEST(StreamTitle, aTextOf159CharactersPassesAnd160IsNoSong)
{
    EXPECT_EQ(StreamTitle::parse(QString(159, u'x'), u"Radio"_s), titleAlone(QString(159, u'x')));
    EXPECT_EQ(StreamTitle::parse(QString(160, u'x'), u"Radio"_s), Parsed(NoSong{}));
}

TEST(StreamTitle, lengthIsCountedAfterTrimming)
{
    EXPECT_EQ(StreamTitle::parse(u"  "_s + QString(159, u'x') + u"  "_s, u"Radio"_s), titleAlone(QString(159, u'x')));
}

TEST(StreamTitle, lengthIsCountedInPerceivedCharacters)
{
    // Two code points each, and then two UTF-16 units each.
    const QString accented = u"e\u0301"_s.repeated(159);
    EXPECT_EQ(StreamTitle::parse(accented, u"Radio"_s), titleAlone(accented));
    const QString notes = u"\U0001F3B5"_s;
    EXPECT_EQ(StreamTitle::parse(notes.repeated(159), u"Radio"_s), titleAlone(notes.repeated(159)));
    EXPECT_EQ(StreamTitle::parse(notes.repeated(160), u"Radio"_s), Parsed(NoSong{}));
}

TEST(StreamTitle, theNameIsJunkOnlyAsAWhole)
{
    EXPECT_EQ(StreamTitle::parse(u"Radio Uno News"_s, u"Radio Uno"_s), titleAlone(u"Radio Uno News"_s));
}

TEST(StreamTitle, accentsMakeAnotherName)
{
    EXPECT_EQ(StreamTitle::parse(u"Citta"_s, u"Città"_s), titleAlone(u"Citta"_s));
    EXPECT_EQ(StreamTitle::parse(u"CITTÀ"_s, u"Città"_s), Parsed(NoSong{}));
}

TEST(StreamTitle, brokenSurrogatesAndBidiMarksDoNoHarm)
{
    const QString broken = QString(QChar(0xD800)) + u" - "_s + QChar(0xDC00);
    EXPECT_EQ(StreamTitle::parse(broken, u"Radio"_s), song(QString(QChar(0xD800)), QString(QChar(0xDC00))));
}

}
