// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJsonObject>

#include <optional>
#include <span>
#include <vector>

namespace velarin::test {

// What was heard, in figures. Seconds throughout; times count from the start of the recording.
struct EarReport
{
    // A place where the programme does not go on where it was.
    struct Jump
    {
        double at{ 0.0 };
        // Positive: so much is missing. Negative: so much came again.
        double seconds{ 0.0 };
    };

    double recorded{ 0.0 };
    std::optional<double> firstSound;
    std::optional<double> lastSound;
    double heard{ 0.0 };
    // Between two sounds; the silence at the end is not one.
    double longestGap{ 0.0 };
    // The same with the silence at the end.
    double longestSilence{ 0.0 };
    double lost{ 0.0 };
    double repeated{ 0.0 };
    std::vector<Jump> jumps;
    // The seconds of the programme, in the order in which they were heard.
    std::vector<int> secondsHeard;
    // The largest step from one sample to the next.
    double steepest{ 0.0 };

    [[nodiscard]] QJsonObject toJson() const;
};

// Judges mono samples that hold a programme of ToneCode's, or any sound at all: then the figures that need the code
// stay empty. Silence under 10 milliseconds is not seen; jumps are exact to about 20.
[[nodiscard]] EarReport judge(std::span<const float> samples, int framesPerSecond);

}
