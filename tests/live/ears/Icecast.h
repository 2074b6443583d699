// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/server/StationProgramme.h"

#include <QByteArray>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <thread>

namespace velarin::test {

// A real Icecast on a free port of 127.0.0.1, with a configuration of its own.
class Icecast
{
public:
    static constexpr auto password = "source";

    Icecast();
    ~Icecast();
    Icecast(const Icecast&) = delete;
    Icecast& operator=(const Icecast&) = delete;

    // Runs and listens when it returns true.
    [[nodiscard]] bool start();
    // Without warning.
    void kill();

    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] QByteArray url(const QByteArray& mount) const;

private:
    void writeConfiguration() const;

    QTemporaryDir m_folder;
    int m_port{ 0 };
    QProcess m_process;
};

// What feeds a mount: sends a programme in its own time until it is destroyed.
class IcecastSource
{
public:
    // Joins when made; `lead` seconds of the programme go out in one stroke, so that there is a burst at once.
    IcecastSource(int port, const QByteArray& mount, const QByteArray& contentType,
        std::shared_ptr<const StationProgramme> programme, double lead = 5.0);
    IcecastSource(const IcecastSource&) = delete;
    IcecastSource& operator=(const IcecastSource&) = delete;

private:
    static void feed(std::stop_token stop, int port, const QByteArray& head,
        const std::shared_ptr<const StationProgramme>& programme, double lead);

    std::jthread m_thread;
};

}
