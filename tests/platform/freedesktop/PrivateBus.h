// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>

namespace velarin::test {

// A child that dies with the test program, whatever ends that.
class Child
{
public:
    Child(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment);
    ~Child();

    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    // Its exit code; -1 for a child that was killed by a signal, -2 for one that did not end in time.
    [[nodiscard]] int exitCode(std::chrono::milliseconds deadline = std::chrono::seconds(10));
    [[nodiscard]] QString output();
    // Waits until a line beginning so was printed, and gives the line; empty if it never is.
    [[nodiscard]] QString line(const QString& beginning, std::chrono::milliseconds deadline = std::chrono::seconds(10));
    void signal(int number);

private:
    QProcess m_process;
    QString m_output;
};

// A bus of the test's own. Ends with the object.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();

    [[nodiscard]] const QString& address() const { return m_address; }
    // A connection of its own at each call.
    [[nodiscard]] QDBusConnection connect();
    // Ends the bus while connections are open.
    void stop() { m_daemon.reset(); }
    // With this bus as the session's, and no other way to one.
    [[nodiscard]] QProcessEnvironment environment() const;
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    // The bus starts the services whose files lie here when it is made to read them again; none at first.
    [[nodiscard]] QString serviceFolder() const { return m_folder.filePath(QStringLiteral("services")); }

private:
    QTemporaryDir m_folder;
    QString m_address;
    std::unique_ptr<Child> m_daemon;
    QStringList m_connections;
};

// Sends the call and runs the loop until its answer is there: the object called may live in this thread.
[[nodiscard]] QDBusMessage answerTo(QDBusConnection bus, const QDBusMessage& call);
// A property as org.freedesktop.DBus.Properties gives it; invalid if it gives an error.
[[nodiscard]] QVariant propertyOf(
    QDBusConnection bus, const QString& service, const QString& path, const QString& interface, const QString& name);
// Whether the name gets an owner in time.
[[nodiscard]] bool waitForName(QDBusConnection bus, const QString& name);

}
