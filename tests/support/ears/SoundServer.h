// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace velarin::test {

// A sound server of the test's own: PulseAudio with silent devices ("ear0" to "ear3"), its socket and state in a
// folder that goes with it. PULSE_SERVER is set for this process and its children while it exists. It ends with the
// test program, however that ends.
class SoundServer
{
public:
    static constexpr int deviceCount = 4;

    // The one of this process, started at the first call.
    static SoundServer& shared();

    SoundServer();
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    [[nodiscard]] static QString deviceName(int index);
    // As PULSE_SERVER takes it.
    [[nodiscard]] QString address() const;

    // Runs when it returns true.
    [[nodiscard]] bool start();
    // Without warning, as a crash would.
    void kill();

    // Loads a further silent device, and unloads it.
    [[nodiscard]] bool addDevice(const QString& name);
    [[nodiscard]] bool removeDevice(const QString& name);
    [[nodiscard]] bool makeDefault(const QString& name);

private:
    bool control(const QStringList& command, QByteArray* answer = nullptr) const;

    QTemporaryDir m_folder;
    QProcess m_process;
};

}
