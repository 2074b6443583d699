// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/SoundMemory.h"

#include <gtest/gtest.h>

namespace velarin::live {

using namespace std::chrono_literals;

namespace {

QUrl station(int number)
{
    return QUrl(QStringLiteral("http://radio.test/%1").arg(number));
}

}

TEST(SoundMemoryTest, anAddressThatNeverSoundedIsUnknown)
{
    EXPECT_FALSE(SoundMemory().hasSounded(station(1), 0s));
}

TEST(SoundMemoryTest, soundIsRememberedForTenMinutes)
{
    SoundMemory memory;
    memory.sounded(station(1), 0s);
    EXPECT_TRUE(memory.hasSounded(station(1), 10min));
    EXPECT_FALSE(memory.hasSounded(station(1), 10min + 1s));
    EXPECT_FALSE(memory.hasSounded(station(2), 0s));
}

TEST(SoundMemoryTest, laterSoundProlongsIt)
{
    SoundMemory memory;
    memory.sounded(station(1), 0s);
    memory.sounded(station(1), 8min);
    EXPECT_TRUE(memory.hasSounded(station(1), 18min));
}

TEST(SoundMemoryTest, theOldestIsForgottenWhenThereAreTooMany)
{
    SoundMemory memory;
    const int count = static_cast<int>(SoundMemory::capacity) + 1;
    for (int number = 0; number < count; ++number)
        memory.sounded(station(number), std::chrono::seconds(number));
    EXPECT_FALSE(memory.hasSounded(station(0), 1min));
    EXPECT_TRUE(memory.hasSounded(station(1), 1min));
    EXPECT_TRUE(memory.hasSounded(station(count - 1), 1min));
}

}
