// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/server/TestAuthority.h"

#include <cstdlib>

namespace velarin::test {
namespace {

const QString loopback = QStringLiteral("IP:127.0.0.1");

// A new key for a curve, without a password, with what follows.
const QStringList newKey{ QStringLiteral("req"), QStringLiteral("-newkey"), QStringLiteral("ec"),
    QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
    QStringLiteral("-subj"), QStringLiteral("/CN=Velarin tests") };

// By the shell, and not by QProcess: ThreadSanitizer loses sight of the locks of a thread that has used its fork.
void openssl(const QTemporaryDir& folder, const QStringList& arguments)
{
    QStringList command{ QStringLiteral("cd '%1' && openssl").arg(folder.path()) };
    for (const QString& argument : arguments)
        command.append(u'\'' + argument + u'\'');
    command.append(QStringLiteral("2>openssl.log || { cat openssl.log >&2; exit 1; }"));
    if (std::system(command.join(u' ').toUtf8().constData()) != 0)
        std::abort();
}

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(u' ');
}

}

TestAuthority::TestAuthority()
{
    openssl(m_folder, newKey + words("-x509 -days 2 -keyout ca.key -out ca.pem"));
}

QByteArray TestAuthority::path(const QString& name) const
{
    return m_folder.filePath(name).toUtf8();
}

Certificate TestAuthority::sign(const QString& name, const QString& subjectName, int days) const
{
    openssl(m_folder, newKey + QStringList{ QStringLiteral("-keyout"), name + QStringLiteral(".key"),
                                   QStringLiteral("-out"), name + QStringLiteral(".csr"), QStringLiteral("-addext"),
                                   QStringLiteral("subjectAltName=") + subjectName });
    openssl(m_folder, words("x509 -req -CA ca.pem -CAkey ca.key -CAcreateserial -copy_extensions copy") +
                          QStringList{ QStringLiteral("-days"), QString::number(days), QStringLiteral("-in"),
                              name + QStringLiteral(".csr"), QStringLiteral("-out"), name + QStringLiteral(".pem") });
    return { path(name + QStringLiteral(".pem")), path(name + QStringLiteral(".key")) };
}

Certificate TestAuthority::good() const
{
    return sign(QStringLiteral("good"), loopback, 2);
}

Certificate TestAuthority::expired() const
{
    return sign(QStringLiteral("expired"), loopback, -1);
}

Certificate TestAuthority::forAnotherHost() const
{
    return sign(QStringLiteral("other"), QStringLiteral("DNS:radio.example"), 2);
}

Certificate TestAuthority::selfSigned() const
{
    openssl(
        m_folder, newKey + words("-x509 -days 2 -keyout self.key -out self.pem -addext subjectAltName=IP:127.0.0.1"));
    return { path(QStringLiteral("self.pem")), path(QStringLiteral("self.key")) };
}

}
