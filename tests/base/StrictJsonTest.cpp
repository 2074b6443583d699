// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/StrictJson.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

#include <limits>

namespace velarin {

namespace {

const QString key = QStringLiteral("a");

StrictJson record(const char* json)
{
    return StrictJson(QJsonDocument::fromJson(json).object());
}

TEST(StrictJsonTest, fieldsOfTheRightTypeAreRead)
{
    StrictJson json = record(R"({"a":"testo","b":1.5,"c":7,"d":true,"unknown":[]})");
    EXPECT_EQ(json.requiredText(key), QStringLiteral("testo"));
    EXPECT_EQ(json.requiredNumber(QStringLiteral("b")), 1.5);
    EXPECT_EQ(json.integer(QStringLiteral("c")), 7);
    EXPECT_EQ(json.boolean(QStringLiteral("d")), true);
    EXPECT_TRUE(json.isValid());
}

TEST(StrictJsonTest, anOptionalFieldThatIsMissingOrNullIsAbsent)
{
    for (const char* text : { "{}", R"({"a":null})" }) {
        StrictJson json = record(text);
        EXPECT_EQ(json.text(key), std::nullopt);
        EXPECT_EQ(json.integer(key), std::nullopt);
        EXPECT_EQ(json.boolean(key), std::nullopt);
        EXPECT_TRUE(json.isValid());
    }
}

TEST(StrictJsonTest, aRequiredFieldThatIsMissingOrNullSpoilsTheRecord)
{
    for (const char* text : { "{}", R"({"a":null})", R"({"a":{}})" }) {
        StrictJson withText = record(text);
        (void)withText.requiredText(key);
        EXPECT_FALSE(withText.isValid()) << text;
        StrictJson withNumber = record(text);
        (void)withNumber.requiredNumber(key);
        EXPECT_FALSE(withNumber.isValid()) << text;
    }
}

TEST(StrictJsonTest, anOptionalFieldOfTheWrongTypeSpoilsTheRecord)
{
    StrictJson text = record(R"({"a":1})");
    (void)text.text(key);
    EXPECT_FALSE(text.isValid());
    StrictJson boolean = record(R"({"a":1})");
    (void)boolean.boolean(key);
    EXPECT_FALSE(boolean.isValid());
    StrictJson integer = record(R"({"a":"1"})");
    (void)integer.integer(key);
    EXPECT_FALSE(integer.isValid());
}

TEST(StrictJsonTest, onlyAWholeNumberOfSixtyFourBitsIsAnInteger)
{
    StrictJson whole = record(R"({"a":9223372036854775807,"b":2.0})");
    EXPECT_EQ(whole.integer(key), std::numeric_limits<qint64>::max());
    EXPECT_EQ(whole.integer(QStringLiteral("b")), 2);
    EXPECT_TRUE(whole.isValid());
    for (const char* text : { R"({"a":2.5})", R"({"a":1e19})", R"({"a":true})" }) {
        StrictJson json = record(text);
        (void)json.integer(key);
        EXPECT_FALSE(json.isValid()) << text;
    }
}

TEST(StrictJsonTest, whatIsNoObjectIsNoRecord)
{
    EXPECT_FALSE(StrictJson(QJsonValue(1)).isValid());
    EXPECT_FALSE(StrictJson(QJsonArray()).isValid());
    EXPECT_TRUE(StrictJson(QJsonObject()).isValid());
}

TEST(StrictJsonTest, aRecordCanBeSpoiledForWhatItSays)
{
    StrictJson json = record("{}");
    json.spoil();
    EXPECT_FALSE(json.isValid());
}

std::optional<QString> decodeText(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

TEST(StrictJsonTest, anArrayIsReadAsAWholeOrNotAtAll)
{
    EXPECT_EQ(decodeJsonArray<QString>(R"(["x","y"])", decodeText),
        QList<QString>({ QStringLiteral("x"), QStringLiteral("y") }));
    EXPECT_EQ(decodeJsonArray<QString>("[]", decodeText), QList<QString>());
    EXPECT_EQ(decodeJsonArray<QString>(R"(["x",1])", decodeText), std::nullopt);
    EXPECT_EQ(decodeJsonArray<QString>(R"({"a":"x"})", decodeText), std::nullopt);
    EXPECT_EQ(decodeJsonArray<QString>(R"(["x")", decodeText), std::nullopt);
}

}

}
