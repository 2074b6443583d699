// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>

namespace velarin::test {

// A programme in which every twentieth of a second can be told from every other by ear: three tones at a time, each
// one of sixteen, spell the number of the step. Wide enough apart and long enough for the lossy codecs.
namespace ToneCode {

constexpr double stepSeconds = 0.05;
constexpr int digits = 3;
constexpr int tonesPerDigit = 16;
// After so many steps (204.8 seconds) the programme repeats.
constexpr int stepCount = 4096;
// What is listened to at a time.
constexpr double windowSeconds = 0.04;

[[nodiscard]] double frequency(int digit, int tone);
[[nodiscard]] int digitOf(int step, int digit);

// The step that these samples (mono, one window) sound, if they sound one.
[[nodiscard]] std::optional<int> recognise(std::span<const float> window, double framesPerSecond);

}

}
