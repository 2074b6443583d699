// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/IcyTitle.h"

#include "Corpora.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velarin::live {
namespace {

using test::corpus;

struct TitleCase
{
    const char* name;
    QByteArray block;
    std::optional<QString> title;
};

class IcyTitleTest : public testing::TestWithParam<TitleCase>
{
};

TEST_P(IcyTitleTest, isReadFromItsBlock)
{
    EXPECT_EQ(icyTitle(GetParam().block), GetParam().title);
}

INSTANTIATE_TEST_SUITE_P(Blocks, IcyTitleTest,
    testing::Values(TitleCase{ "plain", "StreamTitle='Artista - Brano';", QStringLiteral("Artista - Brano") },
        TitleCase{ "withAnAddressAfterIt", "StreamTitle='Brano';StreamUrl='http://x/';", QStringLiteral("Brano") },
        TitleCase{ "afterAnotherField", "a=b;StreamTitle='Brano';", QStringLiteral("Brano") },
        TitleCase{ "withAnApostrophe", "StreamTitle='Guns N' Roses - Don't Cry';",
            QStringLiteral("Guns N' Roses - Don't Cry") },
        TitleCase{ "withAnApostropheAndASemicolon", "StreamTitle='Rock 'n'; Roll'; sempre';StreamUrl='';",
            QStringLiteral("Rock 'n'; Roll'; sempre") },
        TitleCase{ "notEndedByAnAddressThatHoldsOne", "StreamTitle='Vero';StreamUrl='http://x/?a=1';b';",
            QStringLiteral("Vero") },
        TitleCase{ "emptyIsEmptyNotAbsent", "StreamTitle='';StreamUrl='';", QStringLiteral("") },
        TitleCase{ "blanksAreEmpty", "StreamTitle='   ';", QStringLiteral("") },
        TitleCase{ "absentWithoutTheField", "StreamUrl='http://x/';", std::nullopt },
        TitleCase{ "absentInAnEmptyBlock", QByteArray(16, '\0'), std::nullopt },
        TitleCase{ "notTheWordInsideAnAddress", "StreamUrl='http://x/StreamTitle=';", std::nullopt },
        TitleCase{ "cutOffWithoutItsQuote", "StreamTitle='Tagliato", QStringLiteral("Tagliato") },
        TitleCase{ "filledUpWithNuls", QByteArray("StreamTitle='Brano';\0\0\0\0", 24), QStringLiteral("Brano") },
        TitleCase{ "validUtf8", "StreamTitle='Perch\xc3\xa9 no? \xe2\x82\xac';", QStringLiteral("Perché no? €") },
        TitleCase{
            "windows1252Otherwise", "StreamTitle='Caff\xe8 \x80 \x93s\xec\x94';", QStringLiteral("Caffè € “sì”") },
        TitleCase{ "utf8CutInsideACharacterIsNot", "StreamTitle='a\xe2\x82';", QStringLiteral("aâ‚") },
        TitleCase{ "inAnyCapitals", "STREAMTITLE='Brano';", QStringLiteral("Brano") }),
    [](const auto& named) { return std::string(named.param.name); });

// Where the corpus leaves it to the player, any text will do: bytes in an undeclared Cyrillic encoding come out as
// Windows-1252 here, which is what is expected of every station that says nothing.
bool isOurChoice(const QJsonObject& block)
{
    return block[u"note"].toString().contains(QStringLiteral("any text"));
}

TEST(IcyTitleCorpusTest, everyCollectedBlockMeansTheTitleThatPlayersAgreeOn)
{
    VELARIN_NEEDS_CORPORA();
    const QJsonArray blocks = QJsonDocument::fromJson(corpus(QStringLiteral("icy.json"))).object()[u"blocks"].toArray();
    ASSERT_GT(blocks.size(), 80);
    for (const QJsonValue& value : blocks) {
        const QJsonObject block = value.toObject();
        if (isOurChoice(block))
            continue;
        const QJsonValue expected = block[u"expected_title"];
        const auto title = expected.isNull() ? std::nullopt : std::optional(expected.toString());
        EXPECT_EQ(icyTitle(QByteArray::fromBase64(block[u"raw_b64"].toString().toLatin1())), title)
            << block[u"text"].toString().left(200).toStdString();
    }
}

}
}
