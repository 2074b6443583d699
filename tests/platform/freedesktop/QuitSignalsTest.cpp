// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/freedesktop/PrivateBus.h"

#include <gtest/gtest.h>

#include <csignal>

namespace velarin::test {

namespace {

const QString ready = QStringLiteral("ready");
const QString quitting = QStringLiteral("quitting");

std::unique_ptr<Child> startProbe(const QStringList& arguments)
{
    auto probe =
        std::make_unique<Child>(QStringLiteral(VELARIN_PROBE), arguments, QProcessEnvironment::systemEnvironment());
    EXPECT_EQ(probe->line(ready), ready);
    return probe;
}

}

TEST(QuitSignalsTest, eachOfTheThreeSignalsQuitsInOrder)
{
    for (const int number : { SIGTERM, SIGINT, SIGHUP }) {
        const auto probe = startProbe({});
        probe->signal(number);
        EXPECT_EQ(probe->exitCode(), 0) << number;
        EXPECT_TRUE(probe->output().contains(quitting)) << number;
    }
}

TEST(QuitSignalsTest, aSecondSignalOfAnyKindEndsAQuitThatHangs)
{
    const auto probe = startProbe({ QStringLiteral("hang") });
    probe->signal(SIGTERM);
    ASSERT_EQ(probe->line(quitting), quitting);
    EXPECT_TRUE(probe->isRunning());
    probe->signal(SIGINT);
    EXPECT_EQ(probe->exitCode(), 128 + SIGINT);
}

TEST(QuitSignalsTest, underNohupTheEndOfTheTerminalIsIgnored)
{
    const auto former = std::signal(SIGHUP, SIG_IGN);
    const auto probe = startProbe({});
    std::signal(SIGHUP, former);
    probe->signal(SIGHUP);
    probe->signal(SIGTERM);
    EXPECT_EQ(probe->exitCode(), 0);
}

}
