// SPDX-License-Identifier: GPL-3.0-or-later
#include "diagnostics/DiagnosticEventText.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velarin::test {

namespace {

struct CategoryRow
{
    DiagnosticCategory category;
    const char16_t* text;
    const char16_t* label;
};

// In the order of the enumeration.
constexpr CategoryRow categoryRows[] = {
    { DiagnosticCategory::app, u"app", u"APP" },
    { DiagnosticCategory::playback, u"playback", u"AUDIO" },
    { DiagnosticCategory::error, u"error", u"ERRORE" },
    { DiagnosticCategory::network, u"network", u"RETE" },
    { DiagnosticCategory::car, u"car", u"AUTO" },
    { DiagnosticCategory::interruption, u"interruption", u"INTERRUZIONE" },
    { DiagnosticCategory::remote, u"remote", u"TASTI" },
    { DiagnosticCategory::alarm, u"alarm", u"SVEGLIA" },
    { DiagnosticCategory::heartbeat, u"heartbeat", u"BATTITO" },
};

const QByteArray goodEvent =
    R"({"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","date":789012345.25,"category":"network","message":"Rete persa"})";

DiagnosticEvent decodedGoodEvent()
{
    return { QUuid::fromString(u"{6f9619ff-8b86-d011-b42d-00c04fc964ff}"),
        QDateTime::fromMSecsSinceEpoch((978'307'200LL + 789'012'345LL) * 1000 + 250, Qt::UTC),
        DiagnosticCategory::network, QStringLiteral("Rete persa") };
}

QByteArray withReplaced(const QByteArray& what, const QByteArray& by)
{
    QByteArray event = goodEvent;
    EXPECT_TRUE(event.contains(what));
    return '[' + goodEvent + ',' + event.replace(what, by) + ']';
}

}

TEST(DiagnosticCategoryTest, everyCategoryHasItsStoredTextAndItsLabel)
{
    ASSERT_EQ(allDiagnosticCategories.size(), std::size(categoryRows));
    for (std::size_t at = 0; at < std::size(categoryRows); ++at) {
        const CategoryRow& row = categoryRows[at];
        EXPECT_EQ(allDiagnosticCategories[at], row.category);
        EXPECT_EQ(static_cast<std::size_t>(row.category), at);
        EXPECT_EQ(toText(row.category), QString::fromUtf16(row.text));
        EXPECT_EQ(label(row.category), QString::fromUtf16(row.label));
        EXPECT_EQ(diagnosticCategoryFromText(QString::fromUtf16(row.text)), row.category);
    }
}

TEST(DiagnosticCategoryTest, anUnknownTextIsNoCategory)
{
    EXPECT_EQ(diagnosticCategoryFromText(QStringLiteral("Playback")), std::nullopt);
    EXPECT_EQ(diagnosticCategoryFromText(QString()), std::nullopt);
}

TEST(DiagnosticEventJsonTest, anEventIsWrittenWithFourKeysAndAnUpperCaseId)
{
    const QJsonArray array = QJsonDocument::fromJson(encodeDiagnostics({ decodedGoodEvent() })).array();

    ASSERT_EQ(array.size(), 1);
    EXPECT_EQ(array[0].toObject(), QJsonDocument::fromJson(goodEvent).object());
}

TEST(DiagnosticEventJsonTest, noEventsAreAnEmptyArray)
{
    EXPECT_EQ(encodeDiagnostics({}), QByteArrayLiteral("[]"));
    EXPECT_EQ(decodeDiagnostics("[]"), QList<DiagnosticEvent>());
}

TEST(DiagnosticEventJsonTest, whatWasWrittenReadsTheSame)
{
    const QList<DiagnosticEvent> events{ decodedGoodEvent(),
        { QUuid(), QDateTime::fromMSecsSinceEpoch(1, Qt::UTC), DiagnosticCategory::car, QString() } };

    EXPECT_EQ(decodeDiagnostics(encodeDiagnostics(events)), events);
}

TEST(DiagnosticEventJsonTest, aWholeNumberIsADate)
{
    const auto events = decodeDiagnostics(withReplaced("789012345.25", "789012345"));

    ASSERT_TRUE(events);
    EXPECT_EQ(events->last().date, decodedGoodEvent().date.addMSecs(-250));
}

TEST(DiagnosticEventJsonTest, aLowerCaseIdIsRead)
{
    const auto events = decodeDiagnostics(withReplaced("6F9619FF-8B86-D011", "6f9619ff-8b86-d011"));

    ASSERT_TRUE(events);
    EXPECT_EQ(events->last(), decodedGoodEvent());
}

TEST(DiagnosticEventJsonTest, keysThatNobodyKnowsAreIgnored)
{
    EXPECT_TRUE(decodeDiagnostics(withReplaced("\"id\"", "\"level\":3,\"id\"")));
}

TEST(DiagnosticEventJsonTest, oneUnknownCategoryFailsTheWholeFile)
{
    EXPECT_EQ(decodeDiagnostics(withReplaced("network", "radio")), std::nullopt);
}

TEST(DiagnosticEventJsonTest, oneWrongOrMissingFieldFailsTheWholeFile)
{
    struct
    {
        QByteArray what;
        QByteArray by;
    } const rows[] = {
        { "\"id\"", "\"key\"" },
        { "\"date\"", "\"when\"" },
        { "\"category\"", "\"kind\"" },
        { "\"message\"", "\"text\"" },
        { "789012345.25", "\"789012345.25\"" },
        { "789012345.25", "null" },
        { "789012345.25", "1e300" },
        { "\"network\"", "3" },
        { "\"Rete persa\"", "[]" },
        { "6F9619FF-8B86-D011-B42D-00C04FC964FF", "6F9619FF" },
        { "6F9619FF-8B86-D011-B42D-00C04FC964FF", "{6F9619FF-8B86-D011-B42D-00C04FC964FF}" },
    };
    for (const auto& row : rows)
        EXPECT_EQ(decodeDiagnostics(withReplaced(row.what, row.by)), std::nullopt) << row.by.constData();
}

TEST(DiagnosticEventJsonTest, whatIsNoArrayOfObjectsFails)
{
    for (const QByteArray& json : { QByteArray(), QByteArray("{}"), QByteArray("[1]"), QByteArray("[") + goodEvent,
             QByteArray("[null]"), QByteArray("\xff\xfe"), QByteArray(2000, '[') })
        EXPECT_EQ(decodeDiagnostics(json), std::nullopt) << json.left(20).constData();
}

}
