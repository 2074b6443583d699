// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/AutostartLoginItem.h"
#include "platform/freedesktop/LoginEntry.h"
#include "platform/freedesktop/PrivateBus.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace velarin::test {

using Status = LoginItem::Status;

TEST(LoginEntryTest, argumentsAreQuotedAsTheSpecificationOfDesktopEntriesHasIt)
{
    struct Row
    {
        QStringList command;
        const char* exec;
    };
    const Row rows[] = {
        { { QStringLiteral("/usr/bin/velarin") }, R"(/usr/bin/velarin)" },
        { { QStringLiteral("/opt/a b/velarin"), QStringLiteral("--x") }, R"("/opt/a b/velarin" --x)" },
        { { QStringLiteral("/opt/100%/velarin") }, R"(/opt/100%%/velarin)" },
        { { QStringLiteral("/opt/$HOME/velarin") }, R"("/opt/\\$HOME/velarin")" },
        { { QStringLiteral("/opt/a\"b`c/velarin") }, R"("/opt/a\\"b\\`c/velarin")" },
        { { QStringLiteral("/opt/a\\b/velarin") }, R"("/opt/a\\\\b/velarin")" },
        { { QStringLiteral("/opt/è/velarin") }, "/opt/\xC3\xA8/velarin" },
        { { QStringLiteral("velarin"), QString() }, R"(velarin "")" },
        { { QStringLiteral("/opt/a\nb/velarin") }, R"("/opt/a\nb/velarin")" },
    };
    for (const Row& row : rows)
        EXPECT_EQ(execValue(row.command).toStdString(), row.exec);
}

TEST(LoginEntryTest, anEntryIsEnabledOnlyIfItStartsThisProgramAndIsNotSwitchedOff)
{
    const QStringList command{ QStringLiteral("/usr/bin/velarin") };
    struct Row
    {
        const char* entry;
        Status status;
    };
    const Row rows[] = {
        { "[Desktop Entry]\nExec=/usr/bin/velarin\n", Status::Enabled },
        { "# c\n[Desktop Entry]\r\nExec = /usr/bin/velarin\r\n", Status::Enabled },
        { "[Desktop Entry]\nExec=/usr/bin/velarin\nHidden=false\n", Status::Enabled },
        { "[Desktop Entry]\nExec=/usr/bin/velarin\nHidden=true\n", Status::NeedsRepair },
        { "[Desktop Entry]\nExec=/usr/bin/velarin\nX-GNOME-Autostart-enabled=false\n", Status::NeedsRepair },
        { "[Desktop Entry]\nExec=/opt/old/lumarin\n", Status::NeedsRepair },
        { "[Desktop Entry]\nExec=velarin\n", Status::NeedsRepair },
        { "[Desktop Entry]\n#Exec=/usr/bin/velarin\n", Status::NeedsRepair },
        { "[Desktop Action x]\nExec=/usr/bin/velarin\n", Status::NeedsRepair },
        { "Exec=/usr/bin/velarin\n", Status::NeedsRepair },
        { "", Status::NeedsRepair },
        { "\xFF\xFE=\n[", Status::NeedsRepair },
    };
    for (const Row& row : rows)
        EXPECT_EQ(judgeLoginEntry(row.entry, command), row.status) << row.entry;
}

class AutostartLoginItemTest : public testing::Test
{
protected:
    static int run(const QString& program, const QStringList& arguments)
    {
        Child child(program, arguments, QProcessEnvironment::systemEnvironment());
        return child.exitCode();
    }

    QTemporaryDir folder;
    QString path{ folder.filePath(QStringLiteral("autostart/com.brenholt.velarin.desktop")) };
    AutostartLoginItem item{ path, { QStringLiteral("/usr/bin/velarin") } };
};

TEST_F(AutostartLoginItemTest, registeringEnablesAndUnregisteringRemoves)
{
    EXPECT_EQ(item.status(), Status::NotRegistered);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), Status::Enabled);
    EXPECT_EQ(item.unregisterItem(), std::nullopt);
    EXPECT_EQ(item.status(), Status::NotRegistered);
    EXPECT_EQ(item.unregisterItem(), std::nullopt) << "what is not there is no error";
}

TEST_F(AutostartLoginItemTest, theEntryOfAnotherProgramIsRepaired)
{
    AutostartLoginItem former(path, { QStringLiteral("/opt/old/velarin") });
    ASSERT_EQ(former.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), Status::NeedsRepair);
    EXPECT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(item.status(), Status::Enabled);
}

TEST_F(AutostartLoginItemTest, aFailureIsToldInWords)
{
    QFile inTheWay(folder.filePath(QStringLiteral("autostart")));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const std::optional<QString> reason = item.registerItem();
    ASSERT_TRUE(reason);
    EXPECT_TRUE(reason->startsWith(QStringLiteral("impossibile creare la cartella ")));
}

TEST_F(AutostartLoginItemTest, aPipeInPlaceOfTheEntryDoesNotHoldUpTheStart)
{
    QDir().mkpath(folder.filePath(QStringLiteral("autostart")));
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_EQ(item.status(), Status::NotRegistered);
}

TEST_F(AutostartLoginItemTest, theEntryIsValid)
{
    ASSERT_EQ(item.registerItem(), std::nullopt);
    EXPECT_EQ(run(QStringLiteral("desktop-file-validate"), { path }), 0);
}

TEST_F(AutostartLoginItemTest, aDesktopStartsTheProgramWhateverItsFolderIsCalled)
{
    // The desktop's library looks a program up with its "%%" left doubled, so a "%" only works among the arguments.
    const QString odd = folder.filePath(QStringLiteral("a b$HOME`x`\"q\\ 'è' &;"));
    ASSERT_TRUE(QDir().mkpath(odd));
    QFile program(odd + QStringLiteral("/velarin"));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\necho \"$1\" > \"$0.ran\"\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    AutostartLoginItem oddItem(path, { program.fileName(), QStringLiteral("il 100% %f") });
    ASSERT_EQ(oddItem.registerItem(), std::nullopt);
    EXPECT_EQ(oddItem.status(), Status::Enabled);
    EXPECT_EQ(run(QStringLiteral("gio"), { QStringLiteral("launch"), path }), 0);
    QFile ran(program.fileName() + QStringLiteral(".ran"));
    ASSERT_TRUE(waitUntil([&] { return ran.size() > 0; }));
    ASSERT_TRUE(ran.open(QIODevice::ReadOnly));
    EXPECT_EQ(ran.readAll().trimmed().toStdString(), "il 100% %f");
}

TEST(AutostartLoginItemPathTest, theEntryLiesInTheUsersAutostartFolder)
{
    const QTemporaryDir config;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(config.path()));
    EXPECT_EQ(
        AutostartLoginItem::userEntryPath(), config.path() + QStringLiteral("/autostart/com.brenholt.velarin.desktop"));
    qunsetenv("XDG_CONFIG_HOME");
}

}
