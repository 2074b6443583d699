// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/SoundLedger.h"

#include <gtest/gtest.h>

namespace velarin::live {

TEST(SoundLedgerTest, inHandIsWhatWasReceivedAndNotHeard)
{
    SoundLedger ledger;
    ledger.received(Seconds(4.0));
    ledger.received(Seconds(1.0));
    EXPECT_EQ(ledger.received(), Seconds(5.0));
    EXPECT_EQ(ledger.inHand(Seconds(2.0), Seconds(1.0)), Seconds(3.0));
}

TEST(SoundLedgerTest, whatCertainlyWaitsIsTheLeast)
{
    SoundLedger ledger;
    ledger.received(Seconds(1.0));
    EXPECT_EQ(ledger.inHand(Seconds(3.0), Seconds(0.5)), Seconds(0.5));
}

TEST(SoundLedgerTest, soundThatWasLostIsNotInHandOnceItIsKnown)
{
    SoundLedger ledger;
    ledger.received(Seconds(10.0));
    ledger.settle(Seconds(7.0), Seconds(0.0));
    EXPECT_EQ(ledger.inHand(Seconds(7.0), Seconds(0.0)), Seconds(0.0));
    EXPECT_EQ(ledger.place(Seconds(7.0)), Seconds(10.0));
    ledger.received(Seconds(2.0));
    EXPECT_EQ(ledger.inHand(Seconds(8.0), Seconds(0.0)), Seconds(1.0));
}

}
