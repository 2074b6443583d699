// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/ears/Programme.h"
#include "support/server/Scenarios.h"
#include "support/server/TestAuthority.h"

#include <QTimer>

#include <memory>

namespace velarin::test {

// A station on air at a server of its own, at which things go wrong as the path says (see Scenarios).
class Station
{
public:
    explicit Station(Codec codec = Codec::Mp3, std::optional<Certificate> certificate = std::nullopt);

    [[nodiscard]] QByteArray url(const QByteArray& target) const { return m_server.url(target); }
    [[nodiscard]] ScriptedServer& server() { return m_server; }

    // The programme of this codec at its own pace, encoded once in a process.
    [[nodiscard]] static std::shared_ptr<const StationProgramme> programme(Codec codec);
    [[nodiscard]] static QByteArray contentType(Codec codec);

private:
    Scenarios m_scenarios;
    ScriptedServer m_server;
    QTimer m_tick;
};

}
