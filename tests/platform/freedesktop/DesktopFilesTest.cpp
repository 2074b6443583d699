// SPDX-License-Identifier: GPL-3.0-or-later
// The files by which a desktop knows the program.
#include "platform/freedesktop/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>

namespace velarin::test {

namespace {

const QString id = QStringLiteral("com.brenholt.velarin");

QString dataFile(const QString& ending)
{
    return QStringLiteral(VELARIN_DATA "/") + id + ending;
}

QString textOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

// What the checking program complains about; empty if about nothing.
std::string complaints(const QString& program, const QStringList& arguments)
{
    Child child(program, arguments, QProcessEnvironment::systemEnvironment());
    return child.exitCode() == 0 ? std::string() : child.output().toStdString();
}

}

TEST(DesktopFilesTest, theDesktopEntryIsValid)
{
    EXPECT_EQ(complaints(QStringLiteral("desktop-file-validate"), { dataFile(QStringLiteral(".desktop")) }), "");
}

TEST(DesktopFilesTest, theSoftwareCentresPageIsValid)
{
    EXPECT_EQ(complaints(QStringLiteral("appstreamcli"), { QStringLiteral("validate"), QStringLiteral("--no-net"),
                                                             dataFile(QStringLiteral(".metainfo.xml")) }),
        "");
}

TEST(DesktopFilesTest, aLauncherStartsTheProgramByItsNameOnTheBus)
{
    PrivateBus bus;
    QString service = textOf(dataFile(QStringLiteral(".service.in")));
    const QString installed = QStringLiteral("@CMAKE_INSTALL_FULL_BINDIR@/velarin");
    ASSERT_TRUE(service.contains(installed));
    service.replace(installed, QStringLiteral(VELARIN_PROBE " instance ") + bus.folder() + QStringLiteral("/lock"));
    ASSERT_TRUE(QDir().mkpath(bus.serviceFolder()));
    QFile file(bus.serviceFolder() + u'/' + id + QStringLiteral(".service"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(service.toUtf8());
    file.close();

    QDBusConnection desktop = bus.connect();
    const auto busCall = [](const char* method) {
        return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
            QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"), QLatin1String(method));
    };
    ASSERT_EQ(answerTo(desktop, busCall("ReloadConfig")).type(), QDBusMessage::ReplyMessage);
    auto activate = QDBusMessage::createMethodCall(id, QStringLiteral("/com/brenholt/velarin"),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    activate << QVariantMap();
    EXPECT_EQ(answerTo(desktop, activate).type(), QDBusMessage::ReplyMessage);
    const uint process = desktop.interface()->servicePid(id).value();
    ASSERT_GT(process, 0U);
    EXPECT_EQ(::kill(pid_t(process), SIGTERM), 0);
}

}
