// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/server/ScriptedServer.h"

#include <QTemporaryDir>

namespace velarin::test {

// A certificate authority of the tests' own, made with the openssl command in a folder that goes away with it.
class TestAuthority
{
public:
    TestAuthority();

    // The file that a client has to trust.
    [[nodiscard]] QByteArray file() const { return path(QStringLiteral("ca.pem")); }
    // For 127.0.0.1, and good.
    [[nodiscard]] Certificate good() const;
    [[nodiscard]] Certificate expired() const;
    [[nodiscard]] Certificate forAnotherHost() const;
    // Signed by nobody but itself.
    [[nodiscard]] Certificate selfSigned() const;

private:
    [[nodiscard]] QByteArray path(const QString& name) const;
    [[nodiscard]] Certificate sign(const QString& name, const QString& subjectName, int days) const;

    QTemporaryDir m_folder;
};

}
