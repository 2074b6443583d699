// SPDX-License-Identifier: GPL-3.0-or-later
// The whole window on the offline program: what a hand, a keyboard and a screen reader find in it.
#include "offline/OfflineProgram.h"
#include "support/WaitUntil.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace velarin;
using namespace velarin::test;
using namespace testing;

namespace {

class WindowTest : public Test
{
protected:
    WindowTest()
    {
        QAccessible::setActive(true);
        program.start();
        EXPECT_TRUE(program.screens.window());
        EXPECT_TRUE(waitUntil([this] { return program.repository.isLoaded() && tile(2); }));
        window().requestActivate();
        EXPECT_TRUE(waitUntil([this] { return window().isActive(); }));
    }

    QQuickWindow& window() { return *program.screens.window(); }

    // Every element of the tree, in its order.
    QList<QAccessibleInterface*> elements()
    {
        QList<QAccessibleInterface*> found{ QAccessible::queryAccessibleInterface(&window()) };
        for (qsizetype at = 0; at < found.size(); ++at) {
            for (int child = 0; child < found[at]->childCount(); ++child)
                found.append(found[at]->child(child));
        }
        return found;
    }

    QAccessibleInterface* element(QAccessible::Role role, QStringView beginning)
    {
        for (QAccessibleInterface* candidate : elements()) {
            if (candidate->role() == role && !candidate->state().invisible &&
                candidate->text(QAccessible::Name).startsWith(beginning))
                return candidate;
        }
        return nullptr;
    }

    QString nameOf(int row) { return program.repository.sortedCache().value(row).name; }
    QAccessibleInterface* tile(int row) { return element(QAccessible::Button, nameOf(row)); }

    static void activate(QAccessibleInterface* target)
    {
        ASSERT_TRUE(target);
        target->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {})
    {
        QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
        QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
        // The way of a shortcut first, as the desktop's own events go.
        QKeyEvent offer(QEvent::ShortcutOverride, key, modifiers, text);
        QCoreApplication::sendEvent(&window(), &offer);
        QCoreApplication::sendEvent(&window(), &down);
        QCoreApplication::sendEvent(&window(), &up);
    }

    QString playing() { return program.radio.station() ? program.radio.station()->name : QString(); }

    OfflineProgram program{ StationsBehaviour::Sound, ColorScheme::Dark };
};

bool mustHaveAName(QAccessible::Role role)
{
    return role == QAccessible::Button || role == QAccessible::Slider || role == QAccessible::MenuItem ||
           role == QAccessible::ListItem || role == QAccessible::List || role == QAccessible::EditableText;
}

}

TEST_F(WindowTest, everyControlHasANameAndEveryButtonCanBePressed)
{
    int controls = 0;
    for (QAccessibleInterface* found : elements()) {
        if (!mustHaveAName(found->role()))
            continue;
        ++controls;
        EXPECT_FALSE(found->text(QAccessible::Name).isEmpty()) << found->role() << found->object();
        if (found->role() == QAccessible::Button) {
            ASSERT_TRUE(found->actionInterface());
            EXPECT_THAT(found->actionInterface()->actionNames(), Contains(QAccessibleActionInterface::pressAction()))
                << qUtf8Printable(found->text(QAccessible::Name));
        }
    }
    EXPECT_GT(controls, 20);
}

TEST_F(WindowTest, theFixedHelpTextsAreTheNamesOfTheBar)
{
    for (const QStringView name : { u"Apri il player grande", u"Precedente", u"Riproduci / Pausa", u"Successiva",
             u"Volume", u"AirPlay", u"Menu" })
        EXPECT_TRUE(element(QAccessible::Button, name)) << name.toUtf8().constData();
    EXPECT_TRUE(element(QAccessible::Slider, u"Volume"));
    EXPECT_TRUE(element(QAccessible::ListItem, u"Radio italiane"));
}

TEST_F(WindowTest, aTileIsPressedByAScreenReaderAndSounds)
{
    activate(tile(1));
    EXPECT_EQ(playing(), nameOf(1));
    EXPECT_EQ(program.radio.queue().size(), program.repository.sortedCache().size());
    EXPECT_TRUE(waitUntil([this] { return program.radio.isPlaying(); }));
    EXPECT_TRUE(waitUntil([this] { return tile(1)->text(QAccessible::Name).endsWith(u"in onda"); }));
}

TEST_F(WindowTest, theArrowsMoveThroughTheGridAndEnterPlays)
{
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    EXPECT_EQ(playing(), nameOf(2));
}

TEST_F(WindowTest, endGoesToTheLastStation)
{
    press(Qt::Key_End);
    press(Qt::Key_Return);
    EXPECT_EQ(playing(), program.repository.sortedCache().constLast().name);
}

TEST_F(WindowTest, lettersJumpToAName)
{
    press(Qt::Key_R, Qt::NoModifier, QStringLiteral("r"));
    press(Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    press(Qt::Key_D, Qt::NoModifier, QStringLiteral("d"));
    press(Qt::Key_Return);
    EXPECT_TRUE(playing().startsWith(u"Rad", Qt::CaseInsensitive)) << qUtf8Printable(playing());
}

TEST_F(WindowTest, theMenuKeyOpensTheMenuOfTheStation)
{
    press(Qt::Key_Home);
    press(Qt::Key_Menu);
    EXPECT_TRUE(waitUntil([this] { return element(QAccessible::MenuItem, u"Aggiungi ai preferiti"); }));
    activate(element(QAccessible::MenuItem, u"Aggiungi ai preferiti"));
    EXPECT_EQ(program.repository.favoriteStations().value(0).name, nameOf(0));
}

TEST_F(WindowTest, theHeartOfATileTogglesItsFavourite)
{
    // The hearts of the tiles say whose they are behind the comma.
    QAccessibleInterface* heart = element(QAccessible::Button, u"Aggiungi ai preferiti, ");
    const QString station = heart ? heart->text(QAccessible::Name).section(QStringLiteral(", "), 1) : QString();
    EXPECT_FALSE(station.isEmpty());
    activate(heart);
    EXPECT_EQ(program.repository.favoriteStations().value(0).name, station);
    EXPECT_FALSE(program.radio.station().has_value());
}

TEST_F(WindowTest, f6GoesRoundTheAreas)
{
    QSet<QQuickItem*> areas;
    for (int step = 0; step < 4; ++step) {
        press(Qt::Key_F6);
        areas.insert(window().activeFocusItem());
    }
    EXPECT_EQ(areas.size(), 4);
}

TEST_F(WindowTest, closingHidesTheWindowAndThePlayingGoesOn)
{
    activate(tile(0));
    const QSignalSpy quit(&program.screens, &Screens::quitRequested);
    window().close();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(quit.count(), 0);
    EXPECT_EQ(playing(), nameOf(0));
    program.screens.raise();
    EXPECT_TRUE(window().isVisible());
}

TEST_F(WindowTest, controlQAsksForTheEnd)
{
    const QSignalSpy quit(&program.screens, &Screens::quitRequested);
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quit.count(), 1);
}

TEST_F(WindowTest, theVolumeButtonMutesAndTheKeysMoveTheVolume)
{
    activate(element(QAccessible::Button, u"Volume"));
    EXPECT_EQ(program.level.user(), 0.0F);
    press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_NEAR(program.level.user(), 0.06F, 0.001F);
}

TEST_F(WindowTest, whatAScreenReaderSetsOnTheSliderIsTheVolume)
{
    element(QAccessible::Slider, u"Volume")->valueInterface()->setCurrentValue(0.3);
    EXPECT_NEAR(program.level.user(), 0.3F, 0.001F);
}

TEST_F(WindowTest, noWindowIsSmallerThanTheLeast)
{
    EXPECT_EQ(window().minimumSize(), QSize(900, 560));
}
