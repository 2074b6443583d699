// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coordination/FakeEngine.h"
#include "coordination/PlaybackCoordinator.h"
#include "diagnostics/Diagnostics.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/FakeFiles.h"
#include "support/FakeMediaControls.h"

#include <gtest/gtest.h>

namespace velarin::test {

// A coordinator with its three engines.
class CoordinationFixture : public testing::Test
{
protected:
    using Source = PlaybackCoordinator::Source;
    static constexpr std::array engineSources{ Source::radio, Source::podcast, Source::music };

    CoordinationFixture()
    {
        for (const Source source : engineSources)
            coordinator.attach(source, engine(source));
        coordinator.setResumeLast([this] { ++resumed; });
    }

    FakeEngine& engine(Source source)
    {
        switch (source) {
        case Source::podcast:
            return podcasts;
        case Source::music:
            return music;
        case Source::none:
        case Source::radio:
            break;
        }
        return radio;
    }

    // Forgets what the engines were asked so far.
    void forget()
    {
        for (const Source source : engineSources)
            engine(source).calls.clear();
    }

    FakeMediaControls controls;
    FakeFiles files;
    FakeDefaults defaults;
    FakeClock clock;
    Diagnostics diagnostics{ QStringLiteral("/diagnostics.json"), {}, files, defaults, clock };
    FakeEngine radio;
    FakeEngine podcasts;
    FakeEngine music;
    PlaybackCoordinator coordinator{ controls, diagnostics, defaults };
    // How often the last station was asked for.
    int resumed{ 0 };
};

}
