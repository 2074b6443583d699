// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/ears/Listening.h"
#include "live/ears/Station.h"

#include <gtest/gtest.h>

namespace velarin::test {

class SecureEarsTest : public testing::Test
{
protected:
    // Listens to a station with this certificate for a while.
    void listen(const Certificate& certificate)
    {
        station.emplace(Codec::Mp3, certificate);
        listening.emplace(0, live::TransportSettings{ .certificateAuthorities = authority.file() });
        listening->play(station->url("/ok"));
        listenFor(3.0);
    }
    void expectRefused()
    {
        EXPECT_FALSE(listening->heard().firstSound.has_value());
        EXPECT_EQ(listening->events.filter(QStringLiteral("failed: tls")).size(), 1)
            << listening->events.join(QStringLiteral(", ")).toStdString();
    }

    TestAuthority authority;
    std::optional<Station> station;
    std::optional<Listening> listening;
};

TEST_F(SecureEarsTest, aGoodCertificateIsHeard)
{
    listen(authority.good());
    EXPECT_TRUE(listening->heard().firstSound.has_value());
    EXPECT_TRUE(listening->told(QStringLiteral("playing")));
}

TEST_F(SecureEarsTest, anExpiredCertificateIsRefused)
{
    listen(authority.expired());
    expectRefused();
}

TEST_F(SecureEarsTest, theCertificateOfAnotherHostIsRefused)
{
    listen(authority.forAnotherHost());
    expectRefused();
}

TEST_F(SecureEarsTest, aCertificateThatNobodySignedIsRefused)
{
    listen(authority.selfSigned());
    expectRefused();
}

}
