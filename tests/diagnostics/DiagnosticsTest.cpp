// SPDX-License-Identifier: GPL-3.0-or-later
#include "diagnostics/Diagnostics.h"

#include "diagnostics/DiagnosticEventText.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace velarin::test {

namespace {

using namespace std::chrono_literals;

const QString path = QStringLiteral("/data/Velarin/diagnostics.json");
const QString startLine = QStringLiteral("Avvio · versione 1.0.1 (1) · macOS Debian GNU/Linux 12 (bookworm)");
const QString crashLine = QStringLiteral(
    "La sessione precedente è finita mentre qualcosa suonava: l'app è stata chiusa di forza o si è bloccata.");

QString numbered(int number)
{
    return QStringLiteral("evento %1").arg(number);
}

QList<DiagnosticEvent> numberedEvents(int count)
{
    QList<DiagnosticEvent> events;
    for (int number = 1; number <= count; ++number) {
        events.append({ QUuid::createUuid(), QDateTime::fromSecsSinceEpoch(1'700'000'000 + number, Qt::UTC),
            DiagnosticCategory::playback, numbered(number) });
    }
    return events;
}

}

class DiagnosticsTest : public testing::Test
{
protected:
    // What the next run of the program would see.
    std::unique_ptr<Diagnostics> start() { return std::make_unique<Diagnostics>(path, info, files, defaults, clock); }

    static QStringList messages(const Diagnostics& diagnostics)
    {
        QStringList result;
        for (const DiagnosticEvent& event : diagnostics.events())
            result.append(event.message);
        return result;
    }

    QList<DiagnosticEvent> stored() const
    {
        return decodeDiagnostics(files.contents.value(path)).value_or(QList<DiagnosticEvent>());
    }

    static void append(Diagnostics& diagnostics, const QString& message)
    {
        diagnostics.append(DiagnosticCategory::playback, message);
    }

    ApplicationInfo info{ QStringLiteral("1.0.1"), QStringLiteral("1"),
        QStringLiteral("Debian GNU/Linux 12 (bookworm)") };
    FakeFiles files;
    FakeDefaults defaults;
    FakeClock clock;
};

TEST_F(DiagnosticsTest, anEventHasItsMomentItsCategoryAndAnIdOfItsOwn)
{
    const auto diagnostics = start();

    diagnostics->append(DiagnosticCategory::network, QStringLiteral("Rete persa"));
    clock.advance(2s);
    diagnostics->append(DiagnosticCategory::network, QStringLiteral("Rete persa"));

    const QList<DiagnosticEvent> events = diagnostics->events();
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(events[0].category, DiagnosticCategory::network);
    EXPECT_EQ(events[0].message, QStringLiteral("Rete persa"));
    EXPECT_EQ(events[0].date.msecsTo(events[1].date), 2000);
    EXPECT_NE(events[0].id, events[1].id);
}

TEST_F(DiagnosticsTest, theFourHundredAndFirstEventDropsTheOldest)
{
    files.contents[path] = encodeDiagnostics(numberedEvents(400));
    const auto diagnostics = start();

    append(*diagnostics, QStringLiteral("nuovo"));

    ASSERT_EQ(diagnostics->events().size(), 400);
    EXPECT_EQ(diagnostics->events().first().message, numbered(2));
    EXPECT_EQ(diagnostics->events().last().message, QStringLiteral("nuovo"));
}

TEST_F(DiagnosticsTest, aLongerFileLoadsWholeAndIsTrimmedByTheNextEvent)
{
    files.contents[path] = encodeDiagnostics(numberedEvents(450));
    const auto diagnostics = start();
    EXPECT_EQ(diagnostics->events().size(), 450);

    append(*diagnostics, QStringLiteral("nuovo"));

    ASSERT_EQ(diagnostics->events().size(), 400);
    EXPECT_EQ(diagnostics->events().first().message, numbered(52));
}

TEST_F(DiagnosticsTest, anErrorIsDroppedAsReadilyAsAHeartbeat)
{
    QList<DiagnosticEvent> events = numberedEvents(400);
    events[0].category = DiagnosticCategory::error;
    events[1].category = DiagnosticCategory::heartbeat;
    files.contents[path] = encodeDiagnostics(events);
    const auto diagnostics = start();

    append(*diagnostics, QStringLiteral("nuovo"));

    EXPECT_EQ(diagnostics->events().first(), events[1]);
}

TEST_F(DiagnosticsTest, fiveEventsWithinHalfASecondCauseOneWriteASecondAfterTheFifth)
{
    const auto diagnostics = start();
    for (int number = 1; number <= 5; ++number) {
        append(*diagnostics, numbered(number));
        if (number < 5)
            clock.advance(100ms);
    }

    clock.advance(999ms);
    EXPECT_TRUE(files.written.isEmpty());
    clock.advance(1ms);
    EXPECT_EQ(files.written, QStringList{ path });
    EXPECT_EQ(stored(), diagnostics->events());
    EXPECT_EQ(stored().size(), 5);
    clock.advance(1h);
    EXPECT_EQ(files.written.size(), 1);
}

TEST_F(DiagnosticsTest, eventsLessThanASecondApartKeepPostponingTheWrite)
{
    const auto diagnostics = start();
    for (int number = 1; number <= 20; ++number) {
        append(*diagnostics, numbered(number));
        clock.advance(900ms);
    }

    EXPECT_TRUE(files.written.isEmpty());
}

TEST_F(DiagnosticsTest, anOrderlyEndDoesNotWaitForTheEndOfABurst)
{
    const auto diagnostics = start();
    append(*diagnostics, numbered(1));
    diagnostics->saveNow();
    ASSERT_EQ(files.written.size(), 1);
    EXPECT_EQ(stored(), diagnostics->events());
    clock.advance(2s);
    EXPECT_EQ(files.written.size(), 1);
}

TEST_F(DiagnosticsTest, clearingLeavesAnEmptyArrayInTheFileAfterASecond)
{
    files.contents[path] = encodeDiagnostics(numberedEvents(3));
    const auto diagnostics = start();

    diagnostics->clear();

    EXPECT_TRUE(diagnostics->events().isEmpty());
    clock.advance(1s);
    EXPECT_EQ(files.contents.value(path), QByteArrayLiteral("[]"));
}

TEST_F(DiagnosticsTest, clearingTouchesNeitherTheFlagNorTheHeartbeat)
{
    const auto diagnostics = start();
    diagnostics->setPlaying(true, [] { return QStringLiteral("suona"); });

    diagnostics->clear();

    EXPECT_EQ(defaults.boolean(wasPlayingKey), true);
    clock.advance(300s);
    EXPECT_EQ(messages(*diagnostics), QStringList{ QStringLiteral("suona") });
}

TEST_F(DiagnosticsTest, aKilledProcessIsToldOnceAfterTheStartEntry)
{
    start()->setPlaying(true, [] { return QString(); });

    const auto second = start();
    second->noteLaunch();
    const QStringList told{ startLine, crashLine };
    EXPECT_EQ(messages(*second), told);
    EXPECT_EQ(second->events()[0].category, DiagnosticCategory::app);
    EXPECT_EQ(second->events()[1].category, DiagnosticCategory::error);
    EXPECT_EQ(defaults.boolean(wasPlayingKey), false);
    clock.advance(1s);

    const auto third = start();
    third->noteLaunch();
    EXPECT_EQ(messages(*third), told + QStringList{ startLine });
}

TEST_F(DiagnosticsTest, theFlagFollowsTheActiveSourceAtOnce)
{
    const auto diagnostics = start();

    diagnostics->setPlaying(true, [] { return QString(); });
    EXPECT_EQ(defaults.boolean(wasPlayingKey), true);
    diagnostics->setPlaying(false, [] { return QString(); });
    EXPECT_EQ(defaults.boolean(wasPlayingKey), false);
}

TEST_F(DiagnosticsTest, whatTheProgramDoesNotKnowOfItselfIsAQuestionMark)
{
    info = ApplicationInfo{};
    info.systemVersion = QStringLiteral("Debian");
    const auto diagnostics = start();

    diagnostics->noteLaunch();

    EXPECT_EQ(messages(*diagnostics), QStringList{ QStringLiteral("Avvio · versione ? (?) · macOS Debian") });
    EXPECT_TRUE(diagnostics->report().startsWith(QStringLiteral("Velarin ? (?)\nMac · macOS Debian\n\n")));
}

TEST_F(DiagnosticsTest, theStartEntryStandsAfterTheEntriesOfTheFormerRun)
{
    files.contents[path] = encodeDiagnostics(numberedEvents(2));
    const auto diagnostics = start();

    diagnostics->noteLaunch();

    EXPECT_EQ(messages(*diagnostics), (QStringList{ numbered(1), numbered(2), startLine }));
}

TEST_F(DiagnosticsTest, theHeartbeatComesEveryThreeHundredSecondsAndAsksAnewEachTime)
{
    const auto diagnostics = start();
    int asked = 0;
    diagnostics->setPlaying(true, [&asked] { return numbered(++asked); });

    clock.advance(299s);
    EXPECT_TRUE(diagnostics->events().isEmpty());
    clock.advance(1s);
    clock.advance(300s);

    EXPECT_EQ(messages(*diagnostics), (QStringList{ numbered(1), numbered(2) }));
    EXPECT_EQ(diagnostics->events().last().category, DiagnosticCategory::heartbeat);
}

TEST_F(DiagnosticsTest, playingTwiceInQuickSuccessionLeavesOneHeartbeat)
{
    const auto diagnostics = start();
    diagnostics->setPlaying(true, [] { return QStringLiteral("prima"); });
    clock.advance(1s);
    diagnostics->setPlaying(true, [] { return QStringLiteral("seconda"); });

    clock.advance(299s);
    EXPECT_TRUE(diagnostics->events().isEmpty());
    clock.advance(1s);
    EXPECT_EQ(messages(*diagnostics), QStringList{ QStringLiteral("seconda") });
}

TEST_F(DiagnosticsTest, theEndOfPlayingEndsTheHeartbeatWithoutALine)
{
    const auto diagnostics = start();
    diagnostics->setPlaying(true, [] { return QStringLiteral("suona"); });

    diagnostics->setPlaying(false, [] { return QStringLiteral("tace"); });
    clock.advance(1h);

    EXPECT_TRUE(diagnostics->events().isEmpty());
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST_F(DiagnosticsTest, aListenerOfTheHeartbeatCanCancelIt)
{
    const auto diagnostics = start();
    diagnostics->setPlaying(true, [] { return QStringLiteral("suona"); });
    QObject::connect(diagnostics.get(), &Diagnostics::eventsChanged, diagnostics.get(),
        [&diagnostics] { diagnostics->cancelHeartbeat(); });

    clock.advance(1h);

    EXPECT_EQ(diagnostics->events().size(), 1);
}

TEST_F(DiagnosticsTest, nothingIsAskedAfterTheLogIsGone)
{
    auto diagnostics = start();
    bool asked = false;
    diagnostics->setPlaying(true, [&asked] {
        asked = true;
        return QString();
    });
    append(*diagnostics, numbered(1));

    diagnostics.reset();
    clock.advance(1h);

    EXPECT_FALSE(asked);
    EXPECT_TRUE(files.written.isEmpty());
}

TEST_F(DiagnosticsTest, anEmptyReportEndsWithItsEmptyThirdLine)
{
    EXPECT_EQ(start()->report(), QStringLiteral("Velarin 1.0.1 (1)\nMac · macOS Debian GNU/Linux 12 (bookworm)\n"));
}

TEST_F(DiagnosticsTest, theReportHasALineAnEventInLocalTime)
{
    const auto diagnostics = start();
    const QDateTime local(QDate(2026, 3, 7), QTime(9, 5, 3));
    clock.jumpTo(local.toUTC());
    diagnostics->append(DiagnosticCategory::error, QStringLiteral("Errore %1"));
    diagnostics->append(DiagnosticCategory::remote, QStringLiteral("Play"));

    EXPECT_TRUE(diagnostics->report().endsWith(
        QStringLiteral("\n\n07/03 09:05:03  [ERRORE] Errore %1\n07/03 09:05:03  [TASTI] Play")))
        << qPrintable(diagnostics->report());
}

TEST_F(DiagnosticsTest, aFileThatDoesNotDecodeStartsEmptyAndIsKeptBesideBeforeItIsReplaced)
{
    files.contents[path] = "[{\"category\":\"unknown\"}]";
    const auto diagnostics = start();
    EXPECT_TRUE(diagnostics->events().isEmpty());
    EXPECT_FALSE(files.contents.contains(path + QStringLiteral(".unreadable")));

    append(*diagnostics, numbered(1));
    clock.advance(1s);

    EXPECT_EQ(files.contents.value(path + QStringLiteral(".unreadable")), "[{\"category\":\"unknown\"}]");
    EXPECT_EQ(stored().size(), 1);
}

TEST_F(DiagnosticsTest, aFileOverEightMebibytesIsNotReadAndKeptBeside)
{
    const QByteArray huge = QByteArray("[]") + QByteArray(8 * 1024 * 1024, ' ');
    files.contents[path] = huge;
    const auto diagnostics = start();

    append(*diagnostics, numbered(1));
    clock.advance(1s);

    EXPECT_EQ(files.contents.value(path + QStringLiteral(".unreadable")).size(), huge.size());
}

TEST_F(DiagnosticsTest, theFirstStartKeepsNothingBesideAndWritesNothingByItself)
{
    const auto diagnostics = start();
    clock.advance(1h);
    EXPECT_TRUE(files.contents.isEmpty());

    append(*diagnostics, numbered(1));
    clock.advance(1s);

    EXPECT_EQ(files.contents.keys(), QStringList{ path });
}

}
